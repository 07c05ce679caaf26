#include "BrimloApp/Settings/Settings.h"

#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/Shell/RunInBackground.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/Cleaner/AutoCleaner.h"
#include "BrimloCore/LaunchAgent/LaunchAgent.h"
#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/Platform/Fmt.h"
#include "BrimloCore/ScanRecords/ScanHistory.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <QtCore/QPointer>

#include <cstddef>
#include <ranges>
#include <utility>

namespace Brimlo {

namespace {

using namespace std::chrono_literals;

constexpr auto kAutoCleanTime = 1h;

/// Where a terminal finds the tool; empty if nowhere.
QString placeOf(const CLIInstaller::Places& cli) {
    return shown(CLIInstaller::installedAt(cli).value_or(""));
}

/// What auto-clean would take, a line each.
QStringList linesOf(const std::vector<CleanItem>& items) {
    constexpr std::size_t kMostLines = 200;
    QStringList lines;
    for (const CleanItem& item : items | std::views::take(kMostLines)) {
        lines.append(
            QStringLiteral("%1  %2").arg(words(Fmt::bytes(item.size)), shown(item.name())));
    }
    if (items.size() > kMostLines) {
        lines.append(QStringLiteral("+ %1 more").arg(items.size() - kMostLines));
    }
    return lines;
}

}  // namespace

Settings::Settings(AppModel& app)
    : app_{app}
    , cli_{app.surroundings().cli}
    , cliPlace_{placeOf(cli_)} {
    readAgent();
}

// ---- The file ------------------------------------------------------------------------------

bool Settings::read() {
    const auto read = AppConfig::read();
    assign(*this, config_, read.value_or(AppConfig{}), &Settings::configChanged);
    const QString fault = read ? QString{} : QString::fromStdString(read.error().description + ".");
    if (std::exchange(fault_, fault) != fault && !fault.isEmpty()) {
        app_.banner()->show(fault);
    }
    return read.has_value();
}

bool Settings::change(const std::function<void(AppConfig&)>& body) {
    const auto changed = AppConfig::change(body);
    read();
    if (!changed) {
        app_.banner()->show(QString::fromStdString(changed.error().description + "."));
    }
    return changed.has_value();
}

void Settings::setAutoCleanEnabled(bool enabled) {
    change([enabled](AppConfig& config) { config.autoCleanEnabled = enabled; });
}

void Settings::setFreeSpaceThresholdGB(int gigabytes) {
    change([gigabytes](AppConfig& config) { config.freeSpaceThresholdGB = gigabytes; });
}

void Settings::setStaleDays(int days) {
    change([days](AppConfig& config) { config.staleDays = days; });
}

void Settings::setTrashRetentionDays(int days) {
    change([days](AppConfig& config) { config.trashRetentionDays = days; });
}

void Settings::setAutoCleanIncludesCustomRules(bool include) {
    change([include](AppConfig& config) { config.autoCleanIncludesCustomRules = include; });
}

void Settings::setRememberScans(bool remember) {
    change([&](AppConfig& config) { config.rememberScans = remember; });
}

void Settings::forgetScans() {
    const auto forgotten = ScanHistory::forget();
    app_.banner()->show(
        forgotten ? QStringLiteral("Forgot all earlier scans.")
                  : QStringLiteral("Could not forget the earlier scans: ") +
                        words(forgotten.error().description) + u'.');
}

// ---- Auto-clean and the background job -----------------------------------------------------

void Settings::startAutoCleanTimer() {
    const auto tick = [this] { runAutoClean(false, false); };
    autoTimer_ = app_.surroundings().clock->schedule(kAutoCleanTime, Clock::Repeat::always, tick);
    QMetaObject::invokeMethod(this, tick, Qt::QueuedConnection);
}

void Settings::runAutoClean(bool force, bool dryRun) {
    // With default settings instead of unreadable ones, items might be deleted for good too early.
    if (!read()) {
        if (force) {
            app_.banner()->show(fault_);
        }
        return;
    }
    if (!config_.autoCleanEnabled && !force) {
        return;
    }
    if (app_.cleanup()->isCleaning() || !app_.busy().isEmpty()) {
        return;
    }
    assign(*this, planned_, {}, &Settings::plannedChanged);
    app_.runBusy(
        dryRun ? QStringLiteral("Checking what auto-clean would remove…")
               : QStringLiteral("Running auto-clean…"),
        [part = QPointer{this}, config = config_, cleaner = app_.cleaner(), dryRun, force] {
            const AutoCleanOutcome outcome = AutoCleaner::run(config, *cleaner, dryRun, force);
            if (dryRun) {
                postHome(part, [lines = linesOf(outcome.planned)](Settings& present) {
                    assign(present, present.planned_, lines, &Settings::plannedChanged);
                });
            }
            return AppModel::Outcome{.sentence = outcome.sentence(dryRun), .restored = {}};
        });
}

void Settings::setAgent(bool enabled) {
    read();
    if (!enabled) {
        LaunchAgent::uninstall();
        app_.banner()->show(QStringLiteral("Background job removed."));
    } else if (const auto tool = CLIInstaller::bundledCLI(cli_); !tool) {
        app_.banner()->show(
            QStringLiteral("Background mode needs the packaged app (the command line tool is "
                           "missing from this build)."));
        return;
    } else if (const auto installed = LaunchAgent::install(*tool); !installed) {
        app_.banner()->show(QStringLiteral("Could not install the background job: %1")
                                .arg(QString::fromStdString(installed.error().description)));
    } else if (config_.autoCleanEnabled) {
        app_.banner()->show(
            QStringLiteral("Background auto-clean is on. It checks every 6 hours while you "
                           "are logged in."));
    } else {
        app_.banner()->show(
            QStringLiteral("Background job installed, but auto-clean is off, so it will do "
                           "nothing yet. Turn on auto-clean above."));
    }
    readAgent();
}

void Settings::readAgent() {
    const bool installed = LaunchAgent::isInstalled();
    const bool isOther =
        installed && LaunchAgent::installedExecutable() != CLIInstaller::bundledCLI(cli_);
    assign(
        *this,
        agent_,
        {.isInstalled = installed, .isOfOtherCopy = isOther},
        &Settings::agentChanged);
}

// ---- The command line tool -----------------------------------------------------------------

void Settings::installCLI() {
    const CLIInstaller::Result result = CLIInstaller::install(cli_);
    switch (result.outcome) {
        case CLIInstaller::Outcome::installed:
        case CLIInstaller::Outcome::alreadyInstalled:
            app_.banner()->show(
                QStringLiteral("Command-line tool ready. Run `brimlo` in any terminal."));
            break;
        case CLIInstaller::Outcome::noTool:
            app_.banner()->show(QStringLiteral("This build has no command-line tool to install."));
            break;
        case CLIInstaller::Outcome::cancelled:
            app_.banner()->show(QStringLiteral(
                "Command-line tool not installed. You can install it later from Settings."));
            break;
        case CLIInstaller::Outcome::failed:
            app_.banner()->show(QStringLiteral("Could not install the command-line tool: %1")
                                    .arg(QString::fromStdString(result.text)));
            break;
    }
    assign(*this, cliPlace_, placeOf(cli_), &Settings::cliPlaceChanged);
}

void Settings::offerCLIInstallIfNeeded() {
    read();
    // Not to somebody who has yet to see what the program does: installing needs a password.
    const bool hasCleaned = Platform::FileIdentity::of(StoragePaths::journal()).has_value();
    if (!hasCleaned || config_.cliInstallOffered || !CLIInstaller::bundledCLI(cli_) ||
        CLIInstaller::installedAt(cli_)) {
        return;
    }
    // Saved first, so that the question is asked only once even if the program dies now.
    if (change([](AppConfig& config) { config.cliInstallOffered = true; })) {
        setOffersCLI(true);
    }
}

void Settings::setOffersCLI(bool offers) {
    assign(*this, offersCLI_, offers, &Settings::offersCLIChanged);
}

void Settings::answerCLIOffer(bool install) {
    setOffersCLI(false);
    if (install) {
        installCLI();
    }
}

}  // namespace Brimlo
