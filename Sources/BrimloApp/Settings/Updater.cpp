#include "BrimloApp/Settings/Updater.h"

#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/Json.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <QtCore/QTimer>
#include <QtCore/QVersionNumber>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkReply>
#include <QtNetwork/QNetworkRequest>

#include <functional>
#include <utility>

namespace Brimlo {

namespace {

constexpr int kLongestFile = 256 * 1024;

using Answer = std::expected<UpdateFeed, QString>;

/// One look at a feed and, at its address plus ".sig", its signature. The server learns that
/// somebody asked, and nothing else. Reports once; deletes itself then.
class Check : public QObject {
public:
    Check(UpdateSource source, std::function<void(const Answer&)> report, QObject* parent)
        : QObject{parent}
        , source_{std::move(source)}
        , report_{std::move(report)} {
        // Of the whole check: the time limit of a request begins anew with each byte.
        QTimer::singleShot(source_.timeLimit, this, [this] { fail("the server took too long"); });
        fetch(source_.feed);
    }

private:
    void fetch(const QUrl& address) {
        QNetworkRequest request{address};
        request.setAttribute(
            QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::SameOriginRedirectPolicy);
        request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
        request.setRawHeader("User-Agent", "Brimlo");
        request.setRawHeader("Accept-Language", "*");  // Left alone, Qt tells the user's own.
        request.setRawHeader("Accept-Encoding", "identity");  // What is packed has no sure length.
        reply_ = network_.get(request);
        reply_->setReadBufferSize(kLongestFile + 1);
        received_.clear();
        connect(reply_, &QNetworkReply::readyRead, this, &Check::receive);
        connect(reply_, &QNetworkReply::finished, this, &Check::proceed);
    }

    /// Takes what has come out of Qt's buffer. Left there, an answer could stop short of the limit
    /// for good: how far a full buffer is filled depends on the pieces in which the answer comes.
    void receive() {
        received_ += reply_->readAll();
        if (received_.size() > kLongestFile) {
            fail("the answer is too long");
        }
    }

    void proceed() {
        const auto code = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute);
        if (code.isNull()) {
            fail("the server could not be reached");
        } else if (reply_->error() != QNetworkReply::NoError || code != 200) {
            fail("the server did not answer as expected");
        } else if (!document_) {
            document_ = received_;
            fetch(QUrl{source_.feed.toString() + ".sig"});
        } else if (!UpdateFeed::isSigned(*document_, received_, source_.key)) {
            fail("the signature does not match");
        } else if (const auto feed = UpdateFeed::decode(*document_)) {
            finish(*feed);
        } else {
            fail("the answer could not be understood");
        }
    }

    void fail(const char* reason) { finish(std::unexpected{QString{reason}}); }

    void finish(const Answer& answer) {
        reply_->disconnect(this);
        deleteLater();
        std::exchange(report_, [](const Answer&) {})(answer);
    }

    UpdateSource source_;
    std::function<void(const Answer&)> report_;
    QNetworkAccessManager network_;
    QNetworkReply* reply_ = nullptr;      ///< The one under way; belongs to `network_`.
    QByteArray received_;                 ///< Of its answer.
    std::optional<QByteArray> document_;  ///< Once all of it has come.
};

std::string settingsPath() {
    return StoragePaths::support() + "/updates.json";
}

}  // namespace

UpdateSource UpdateSource::ofThisBuild() {
    return {.feed = QUrl{BRIMLO_UPDATE_FEED}, .key = BRIMLO_UPDATE_KEY, .version = BRIMLO_VERSION};
}

Updater::Updater(UpdateSource source, QObject* parent)
    : QObject{parent}
    , source_{std::move(source)} {
    status_ = hasFeed()
                  ? "Brimlo " + source_.version + " has not looked for updates since it was opened."
                  : "Updates come with the system's packages.";
    const auto text = readFile(settingsPath(), kLongestFile).value_or("{}");
    const auto settings = Json::parse(text).value_or(Json::Object{});
    Json::FieldReader reader{settings};
    const auto date = QString::fromStdString(reader.optionalText("lastAnswer").value_or(""));
    lastAnswer_ = QDateTime::fromString(date, Qt::ISODate);
    automatic_ = reader.flagOr("automaticallyChecks", true) || reader.error();
}

Updater* Updater::create(QQmlEngine* engine, QJSEngine* /*scripts*/) {
    auto* const updater = engine->property("updater").value<Updater*>();
    QJSEngine::setObjectOwnership(updater, QJSEngine::CppOwnership);
    return updater;
}

void Updater::setAutomaticallyChecks(bool automatically) {
    automatic_ = automatically;
    save();
}

void Updater::checkForUpdates() {
    if (canCheck()) {
        isChecking_ = true;
        status_ = "Checking for updates…";
        new Check{source_, [this](const Answer& answer) { take(answer); }, this};
    }
}

void Updater::startAutomaticChecks() {
    const auto now = QDateTime::currentDateTimeUtc();
    // An answer that is still to come was written down under a wrong clock.
    const bool isRecent = lastAnswer_ <= now && now <= lastAnswer_.addDays(1);
    if (automatic_ && !isRecent) {
        checkForUpdates();
    }
}

void Updater::take(const Answer& answer) {
    if (answer) {
        // Only an answer counts, so that a check that failed is repeated at the next start.
        lastAnswer_ = QDateTime::currentDateTimeUtc();
        save();
        // Without zeros at the end, since 1.2 and 1.2.0 are the same.
        const bool isNewer = QVersionNumber::fromString(answer->version).normalized() >
                             QVersionNumber::fromString(source_.version).normalized();
        update_ = isNewer ? *answer : UpdateFeed{};
        status_ = isNewer ? "Version " + answer->version + " is available."
                          : "Brimlo " + source_.version + " is up to date.";
    } else {
        status_ = "Could not check for updates: " + answer.error() + ".";
    }
    isChecking_ = false;
}

void Updater::save() const {
    Json::Object object{
        {"automaticallyChecks", automaticallyChecks()}
    };
    object["lastAnswer"] = lastAnswer_.toString(Qt::ISODate).toStdString();
    static_cast<void>(AtomicFile::write(settingsPath(), Json::pretty(object)));
}

}  // namespace Brimlo
