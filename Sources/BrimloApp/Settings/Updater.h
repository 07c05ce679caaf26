#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QObject>
#include <QtCore/QProperty>
#include <QtCore/QUrl>
#include <QtQml/QQmlEngine>
#include <QtQml/qqmlregistration.h>

#include <chrono>
#include <expected>
#include <optional>

namespace Brimlo {

/// The content of an update feed, and which feeds are trusted.
struct UpdateFeed {
    QString version;  ///< The newest version: numbers separated by dots.
    QString notes;    ///< Release notes: plain text of several lines, may be empty.
    QString link;     ///< An https address of the download; may be empty.

    bool operator==(const UpdateFeed&) const = default;

    /// Whether a feed may be at this address: https, or http to a loopback IP address; no user
    /// name.
    [[nodiscard]] static bool mayAsk(const QUrl& address);

    /// Whether the signature (Ed25519, RFC 8032) is valid for exactly these bytes. The signature
    /// and the public key are in base64; a malformed one is never valid.
    [[nodiscard]] static bool isSigned(
        const QByteArray& bytes, const QByteArray& signature, const QByteArray& key);

    /// The feed in a JSON document, safe to display: control characters are replaced, long notes
    /// cut. Nullopt without a valid "version", or with an invalid "notes" or "link".
    [[nodiscard]] static std::optional<UpdateFeed> decode(const QByteArray& bytes);
};

/// The source of updates.
struct UpdateSource {
    QUrl feed;        ///< The address of the feed; empty if updates come another way.
    QByteArray key;   ///< The feed's public key: Ed25519 in base64.
    QString version;  ///< The version of the running program.
    std::chrono::milliseconds timeLimit = std::chrono::seconds{15};  ///< For a whole check.

    /// The source that was configured at build time.
    [[nodiscard]] static UpdateSource ofThisBuild();
};

/// Looks for a newer version; it neither downloads nor installs one. Main thread.
class Updater : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool canCheck READ canCheck NOTIFY checkingChanged)
    Q_PROPERTY(bool hasFeed READ hasFeed CONSTANT)
    Q_PROPERTY(bool isChecking READ isChecking NOTIFY checkingChanged)
    Q_PROPERTY(bool automaticallyChecks READ automaticallyChecks WRITE setAutomaticallyChecks NOTIFY
                   automaticallyChecksChanged)
    Q_PROPERTY(QString status READ status NOTIFY statusChanged)
    Q_PROPERTY(QString updateVersion READ updateVersion NOTIFY updateChanged)
    Q_PROPERTY(QString updateNotes READ updateNotes NOTIFY updateChanged)
    Q_PROPERTY(QString updateLink READ updateLink NOTIFY updateChanged)
    Q_PROPERTY(QString currentVersion READ currentVersion CONSTANT)

public:
    explicit Updater(UpdateSource source, QObject* parent = nullptr);

    /// QML's singleton: the object in the engine's property "updater".
    [[nodiscard]] static Updater* create(QQmlEngine* engine, QJSEngine* scripts);

    /// Whether a check can start: there is a feed, and no check is under way.
    bool canCheck() const { return hasFeed() && !isChecking(); }
    /// Whether this build looks for updates itself; otherwise they come with the system's packages.
    bool hasFeed() const { return UpdateFeed::mayAsk(source_.feed) && !source_.key.isEmpty(); }
    bool isChecking() const { return isChecking_; }
    /// The user's choice, true by default; saved at once.
    bool automaticallyChecks() const { return automatic_; }
    void setAutomaticallyChecks(bool automatically);
    /// The state in a sentence for the user.
    QString status() const { return status_; }
    /// The newer version found by the last successful check; all empty if there is none. The notes
    /// are plain text.
    QString updateVersion() const { return update_.value().version; }
    QString updateNotes() const { return update_.value().notes; }
    QString updateLink() const { return update_.value().link; }
    QString currentVersion() const { return source_.version; }

    /// Starts a check if one can start; the result is in the properties.
    Q_INVOKABLE void checkForUpdates();
    /// Starts a check if the user wants it and the last answer is more than a day old. Call it
    /// once.
    void startAutomaticChecks();

Q_SIGNALS:
    void checkingChanged();
    void automaticallyChecksChanged();
    void statusChanged();
    void updateChanged();

private:
    void conclude(const std::expected<UpdateFeed, QString>& answer);
    void save() const;

    UpdateSource source_;
    // These emit their signal on change.
    Q_OBJECT_BINDABLE_PROPERTY(Updater, bool, isChecking_, &Updater::checkingChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Updater, bool, automatic_, &Updater::automaticallyChecksChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Updater, QString, status_, &Updater::statusChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Updater, UpdateFeed, update_, &Updater::updateChanged)
    QDateTime lastAnswer_;  ///< Invalid before the first answer.
};

}  // namespace Brimlo
