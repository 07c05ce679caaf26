#include "BrimloApp/Settings/Updater.h"

#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/Json.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QTimer>
#include <QtCore/QVersionNumber>
#include <QtNetwork/QHostAddress>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkReply>
#include <QtNetwork/QNetworkRequest>

#include <functional>
#include <memory>
#include <utility>

#include <openssl/evp.h>

namespace Brimlo {

namespace {

constexpr qsizetype kLongestText = 10'000;  // Characters of the notes, and of a link.
constexpr int kLongestFile = 256 * 1024;

std::basic_string<unsigned char> raw(const QByteArray& bytes) {
    return {bytes.begin(), bytes.end()};
}

/// Keeps line breaks of any system.
QString cleaned(const std::string& text) {
    QStringList lines = QString::fromStdString(text).left(kLongestText).split('\n');
    for (QString& line : lines) {
        line.replace('\t', ' ').remove('\r');
        line = QString::fromStdString(Text::printable(line.toStdString()));
    }
    return lines.join('\n').trimmed();
}

using Answer = std::expected<UpdateFeed, QString>;

/// One request of a feed and, at its address plus ".sig", of its signature. The server learns
/// nothing about the user. Reports once, then deletes itself.
class Check : public QObject {
public:
    Check(UpdateSource source, std::function<void(const Answer&)> report, QObject* parent)
        : QObject{parent}
        , source_{std::move(source)}
        , report_{std::move(report)} {
        // For the whole check: a request's own time limit restarts with each byte.
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
        request.setRawHeader("Accept-Language", "*");  // Qt would send the user's language.
        request.setRawHeader(
            "Accept-Encoding", "identity");  // A compressed answer has no reliable length.
        reply_ = network_.get(request);
        reply_->setReadBufferSize(kLongestFile + 1);
        received_.clear();
        connect(reply_, &QNetworkReply::readyRead, this, &Check::receive);
        connect(reply_, &QNetworkReply::finished, this, &Check::proceed);
    }

    /// Empties Qt's buffer. Otherwise an answer could stall short of the limit for good: how full
    /// the buffer gets depends on the chunks in which the answer arrives.
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
    QNetworkReply* reply_ = nullptr;      ///< The request under way; owned by `network_`.
    QByteArray received_;                 ///< The answer so far.
    std::optional<QByteArray> document_;  ///< Set once the feed is complete.
};

std::string settingsPath() {
    return StoragePaths::support() + "/updates.json";
}

}  // namespace

bool UpdateFeed::mayAsk(const QUrl& address) {
    const bool isSafe = address.scheme() == "https" ||
                        (address.scheme() == "http" && QHostAddress{address.host()}.isLoopback());
    return isSafe && !address.host().isEmpty() && address.userInfo().isEmpty();
}

bool UpdateFeed::isSigned(
    const QByteArray& bytes, const QByteArray& signature, const QByteArray& key) {
    const auto text = raw(bytes);
    const auto rawKey = raw(QByteArray::fromBase64(key));
    const auto made = raw(QByteArray::fromBase64(signature));
    // OpenSSL itself refuses a key or a signature of another length.
    const std::shared_ptr<EVP_PKEY> publicKey{
        EVP_PKEY_new_raw_public_key(EVP_PKEY_ED25519, nullptr, rawKey.data(), rawKey.size()),
        EVP_PKEY_free};
    const std::shared_ptr<EVP_MD_CTX> context{EVP_MD_CTX_new(), EVP_MD_CTX_free};
    return publicKey && context &&
           EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, publicKey.get()) == 1 &&
           EVP_DigestVerify(context.get(), made.data(), made.size(), text.data(), text.size()) == 1;
}

std::optional<UpdateFeed> UpdateFeed::decode(const QByteArray& bytes) {
    const auto document = Json::parse(bytes.toStdString());
    if (!document) {
        return std::nullopt;
    }
    Json::FieldReader reader{*document};
    const UpdateFeed feed{
        .version = QString::fromStdString(reader.text("version")),
        .notes = cleaned(reader.optionalText("notes").value_or("")),
        .link = QString::fromStdString(reader.optionalText("link").value_or(""))};
    static const QRegularExpression version{R"(\A[0-9]{1,6}(\.[0-9]{1,6}){0,3}\z)"};
    const QUrl link{feed.link, QUrl::StrictMode};
    const bool isLink =
        link.scheme() == "https" && mayAsk(link) && feed.link.size() <= kLongestText;
    const bool isSound = !reader.error() && version.match(feed.version).hasMatch() &&
                         (isLink || feed.link.isEmpty());
    return isSound ? std::optional{feed} : std::nullopt;
}

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
    auto* updater = engine->property("updater").value<Updater*>();
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
        new Check{source_, [this](const Answer& answer) { conclude(answer); }, this};
    }
}

void Updater::startAutomaticChecks() {
    const auto now = QDateTime::currentDateTimeUtc();
    // A date in the future was saved under a wrong clock.
    const bool isRecent = lastAnswer_ <= now && now <= lastAnswer_.addDays(1);
    if (automatic_ && !isRecent) {
        checkForUpdates();
    }
}

void Updater::conclude(const Answer& answer) {
    if (answer) {
        // Only for an answer, so that a failed check is repeated at the next start.
        lastAnswer_ = QDateTime::currentDateTimeUtc();
        save();
        // Normalized, since 1.2 and 1.2.0 are equal.
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
