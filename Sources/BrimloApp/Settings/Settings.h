#pragma once

#include "BrimloApp/Settings/CLIInstaller.h"
#include "BrimloApp/Shell/AppModel.h"
#include "BrimloCore/Support/AppConfig.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <memory>

namespace Brimlo {

/// The settings, and what runs without the user: the hourly auto-clean while the window is open,
/// the background job while it is not, and the link to the command line tool. Main thread.
class Settings : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    Q_PROPERTY(
        bool autoCleanEnabled READ autoCleanEnabled WRITE setAutoCleanEnabled NOTIFY configChanged)
    Q_PROPERTY(int freeSpaceThresholdGB READ freeSpaceThresholdGB WRITE setFreeSpaceThresholdGB
                   NOTIFY configChanged)
    Q_PROPERTY(int staleDays READ staleDays WRITE setStaleDays NOTIFY configChanged)
    Q_PROPERTY(int trashRetentionDays READ trashRetentionDays WRITE setTrashRetentionDays NOTIFY
                   configChanged)
    Q_PROPERTY(bool autoCleanIncludesCustomRules READ autoCleanIncludesCustomRules WRITE
                   setAutoCleanIncludesCustomRules NOTIFY configChanged)
    Q_PROPERTY(bool rememberScans READ rememberScans WRITE setRememberScans NOTIFY configChanged)
    // What auto-clean would take by its last preview, a line each; empty after a run.
    Q_PROPERTY(QStringList planned READ planned NOTIFY plannedChanged)
    Q_PROPERTY(bool hasBundledCLI READ hasBundledCLI CONSTANT)
    Q_PROPERTY(bool agentInstalled READ agentInstalled NOTIFY agentChanged)
    Q_PROPERTY(bool agentIsOfOtherCopy READ agentIsOfOtherCopy NOTIFY agentChanged)
    Q_PROPERTY(bool cliInstalled READ cliInstalled NOTIFY cliPlaceChanged)
    Q_PROPERTY(QString cliPlace READ cliPlace NOTIFY cliPlaceChanged)
    Q_PROPERTY(bool offersCLI READ offersCLI NOTIFY offersCLIChanged)

public:
    explicit Settings(AppModel& app);

    /// The settings as last read: at the start, before each auto-clean and suggestion run, and when
    /// their screen opens.
    [[nodiscard]] const AppConfig& config() const { return config_; }
    /// Reads them again. False if they could not be read; the banner then says so, once.
    bool read();
    /// Changes them in their file and reads the result. False on failure; the banner then says so.
    bool change(const std::function<void(AppConfig&)>& body);
    [[nodiscard]] bool autoCleanEnabled() const { return config_.autoCleanEnabled; }
    void setAutoCleanEnabled(bool enabled);
    [[nodiscard]] int freeSpaceThresholdGB() const {
        return static_cast<int>(config_.freeSpaceThresholdGB);
    }
    void setFreeSpaceThresholdGB(int gigabytes);
    [[nodiscard]] int staleDays() const { return static_cast<int>(config_.staleDays); }
    void setStaleDays(int days);
    [[nodiscard]] int trashRetentionDays() const {
        return static_cast<int>(config_.trashRetentionDays);
    }
    void setTrashRetentionDays(int days);
    [[nodiscard]] bool autoCleanIncludesCustomRules() const {
        return config_.autoCleanIncludesCustomRules;
    }
    void setAutoCleanIncludesCustomRules(bool include);

    [[nodiscard]] bool rememberScans() const { return config_.rememberScans; }
    void setRememberScans(bool remember);
    /// Removes the records of all scans. Blocks.
    Q_INVOKABLE void forgetScans();

    /// Runs auto-clean now and every hour, as the settings say.
    void startAutoCleanTimer();
    /// Runs auto-clean; with `force` even if it is off in the settings. Does nothing while other
    /// work is under way.
    Q_INVOKABLE void runAutoClean(bool force, bool dryRun);
    [[nodiscard]] const QStringList& planned() const { return planned_; }

    /// Installs or removes the background job. Blocks.
    Q_INVOKABLE void setAgent(bool enabled);
    [[nodiscard]] bool agentInstalled() const { return agent_.isInstalled; }
    /// Whether the job starts the tool of another copy of the application.
    [[nodiscard]] bool agentIsOfOtherCopy() const { return agent_.isOfOtherCopy; }

    /// Links the command line tool into the search path. Blocks while the system asks for the
    /// administrator's password.
    Q_INVOKABLE void installCLI();
    [[nodiscard]] bool hasBundledCLI() const { return CLIInstaller::bundledCLI(cli_).has_value(); }
    /// Where a terminal finds the command line tool; empty if nowhere.
    [[nodiscard]] const QString& cliPlace() const { return cliPlace_; }
    [[nodiscard]] bool cliInstalled() const { return !cliPlace_.isEmpty(); }
    /// Offers once, and never again, to install the command line tool, to a user who has cleaned
    /// something: `offersCLI` is true until the question is answered.
    Q_INVOKABLE void offerCLIInstallIfNeeded();
    Q_INVOKABLE void answerCLIOffer(bool install);
    [[nodiscard]] bool offersCLI() const { return offersCLI_; }
    void setOffersCLI(bool offers);

Q_SIGNALS:
    void configChanged();
    void agentChanged();
    void cliPlaceChanged();
    void offersCLIChanged();
    void plannedChanged();

private:
    void readAgent();

    AppModel& app_;
    const CLIInstaller::Places& cli_;
    AppConfig config_;
    QString fault_;  ///< Why the settings could not be read; empty if they could.
    std::unique_ptr<Clock::Pending> autoTimer_;
    QStringList planned_;
    struct Agent {
        bool isInstalled = false;
        bool isOfOtherCopy = false;

        bool operator==(const Agent&) const = default;
    };
    Agent agent_;
    QString cliPlace_;
    bool offersCLI_ = false;
};

}  // namespace Brimlo
