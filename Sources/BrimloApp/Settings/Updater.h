#pragma once

#include "BrimloApp/Settings/UpdateFeed.h"

#include <QtCore/QDateTime>
#include <QtCore/QObject>
#include <QtCore/QProperty>
#include <QtQml/QQmlEngine>
#include <QtQml/qqmlregistration.h>

#include <chrono>
#include <expected>

namespace Brimlo {

/// Where updates are announced, and to whom.
struct UpdateSource {
    QUrl feed;        ///< The address of the feed; empty when updates come some other way.
    QByteArray key;   ///< The public key that the feed is signed with, Ed25519 in base64.
    QString version;  ///< That of the running program.
    std::chrono::milliseconds timeLimit = std::chrono::seconds{15};  ///< Of a whole check.

    /// What was set when the program was built.
    [[nodiscard]] static UpdateSource ofThisBuild();
};

/// Tells whether there is a newer version; it neither fetches nor installs one. Main thread.
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

    /// The updater that the engine's property "updater" holds, for QML's singleton of this name.
    [[nodiscard]] static Updater* create(QQmlEngine* engine, QJSEngine* scripts);

    /// Whether a check can start now: there is a feed, and no check is under way.
    bool canCheck() const { return hasFeed() && !isChecking(); }
    /// Whether this build looks for updates itself; if not, they come with the system's packages.
    bool hasFeed() const { return UpdateFeed::mayAsk(source_.feed) && !source_.key.isEmpty(); }
    bool isChecking() const { return isChecking_; }
    /// The user's choice, true at first; it is kept at once.
    bool automaticallyChecks() const { return automatic_; }
    void setAutomaticallyChecks(bool automatically);
    /// How things stand, as a sentence for the user.
    QString status() const { return status_; }
    /// The newer version that the last check with an answer found; each part is empty when there is
    /// none. The notes are plain text, to be shown as such.
    QString updateVersion() const { return update_.value().version; }
    QString updateNotes() const { return update_.value().notes; }
    QString updateLink() const { return update_.value().link; }
    QString currentVersion() const { return source_.version; }

    /// Starts a check, if one can start; its outcome shows in the properties.
    Q_INVOKABLE void checkForUpdates();
    /// Starts a check if the user wants it and the last answer is more than a day old. Call once.
    void startAutomaticChecks();

Q_SIGNALS:
    void checkingChanged();
    void automaticallyChecksChanged();
    void statusChanged();
    void updateChanged();

private:
    void take(const std::expected<UpdateFeed, QString>& answer);
    void save() const;

    UpdateSource source_;
    // These emit their signal when they change.
    Q_OBJECT_BINDABLE_PROPERTY(Updater, bool, isChecking_, &Updater::checkingChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Updater, bool, automatic_, &Updater::automaticallyChecksChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Updater, QString, status_, &Updater::statusChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Updater, UpdateFeed, update_, &Updater::updateChanged)
    QDateTime lastAnswer_;  ///< Invalid when there was none.
};

}  // namespace Brimlo
