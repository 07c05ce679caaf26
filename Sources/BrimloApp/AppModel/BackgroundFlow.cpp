#include "BrimloApp/AppModel/AppModel.h"
#include "BrimloApp/AppModel/Shown.h"
#include "BrimloCore/LaunchAgent/LaunchAgent.h"

#include <utility>

// What goes on without the user: the hourly auto-clean while the window is open, the background job
// for when it is not, and the link to the command line tool.

namespace Brimlo {
namespace {

using namespace std::chrono_literals;

constexpr auto kAutoCleanTime = 1h;

}  // namespace

void AppModel::startAutoCleanTimer() {
    const auto tick = [this] { runAutoClean(false, false); };
    autoTimer_ = clock_.schedule(kAutoCleanTime, Clock::Repeat::always, tick);
    QMetaObject::invokeMethod(this, tick, Qt::QueuedConnection);
}

void AppModel::runAutoClean(const bool force, const bool dryRun) {
    // With the defaults in the place of settings that can't be read, things could be deleted for
    // good sooner than was set.
    if (!readConfig()) {
        if (force) {
            setBanner(configFault_);
        }
        return;
    }
    if (!config_.autoCleanEnabled && !force) {
        return;
    }
    if (isCleaning_ || !busy_.isEmpty()) {
        return;
    }
    runBusy(
        dryRun ? QStringLiteral("Checking what auto-clean would remove…")
               : QStringLiteral("Running auto-clean…"),
        [config = config_, cleaner = cleaner_, dryRun, force] {
            const AutoCleanOutcome outcome = AutoCleaner::run(config, *cleaner, dryRun, force);
            return Outcome{.sentence = outcome.sentence(dryRun), .restored = {}};
        });
}

void AppModel::setAgent(const bool enabled) {
    readConfig();
    if (!enabled) {
        LaunchAgent::uninstall();
        setBanner(QStringLiteral("Background job removed."));
    } else if (const auto tool = CLIInstaller::bundledCLI(cli_); !tool) {
        setBanner(
            QStringLiteral("Background mode needs the packaged app (the command line tool is "
                           "missing from this build)."));
        return;
    } else if (const auto installed = LaunchAgent::install(*tool); !installed) {
        setBanner(QStringLiteral("Could not install the background job: %1")
                      .arg(QString::fromStdString(installed.error().description)));
    } else if (config_.autoCleanEnabled) {
        setBanner(
            QStringLiteral("Background auto-clean is on. It checks every 6 hours while you "
                           "are logged in."));
    } else {
        setBanner(
            QStringLiteral("Background job installed, but auto-clean is off, so it will do "
                           "nothing yet. Turn on auto-clean above."));
    }
    readAgent();
}

void AppModel::readAgent() {
    const bool installed = LaunchAgent::isInstalled();
    const bool isOther =
        installed && LaunchAgent::installedExecutable() != CLIInstaller::bundledCLI(cli_);
    assign(agentInstalled_, installed, &AppModel::agentInstalledChanged);
    assign(agentIsOfOtherCopy_, isOther, &AppModel::agentIsOfOtherCopyChanged);
}

void AppModel::installCLI() {
    const CLIInstaller::Result result = CLIInstaller::install(cli_);
    switch (result.outcome) {
        case CLIInstaller::Outcome::installed:
        case CLIInstaller::Outcome::alreadyInstalled:
            setBanner(QStringLiteral("Command-line tool ready. Run `brimlo` in any terminal."));
            break;
        case CLIInstaller::Outcome::noTool:
            setBanner(QStringLiteral("This build has no command-line tool to install."));
            break;
        case CLIInstaller::Outcome::cancelled:
            setBanner(QStringLiteral(
                "Command-line tool not installed. You can install it later from Settings."));
            break;
        case CLIInstaller::Outcome::failed:
            setBanner(QStringLiteral("Could not install the command-line tool: %1")
                          .arg(QString::fromStdString(result.text)));
            break;
    }
    assign(
        cliPlace_,
        shown(CLIInstaller::installedAt(cli_).value_or("")),
        &AppModel::cliInstalledChanged);
}

void AppModel::offerCLIInstallIfNeeded() {
    readConfig();
    if (config_.cliInstallOffered || !CLIInstaller::bundledCLI(cli_) ||
        CLIInstaller::installedAt(cli_)) {
        return;
    }
    // Saved before the question is asked, so that it is asked once even if the program ends here.
    if (changeConfig([](AppConfig& config) { config.cliInstallOffered = true; })) {
        assign(offersCLI_, true, &AppModel::offersCLIChanged);
    }
}

void AppModel::answerCLIOffer(const bool install) {
    assign(offersCLI_, false, &AppModel::offersCLIChanged);
    if (install) {
        installCLI();
    }
}

}  // namespace Brimlo
