#include "BrimloCore/Cleaner/AutoCleaner.h"
#include "BrimloCore/LaunchAgent/LaunchAgent.h"
#include "BrimloCore/Support/AppConfig.h"
#include "BrimloCore/Support/MovedFolders.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "brimlo/CleanRun.h"
#include "brimlo/Commands.h"
#include "brimlo/Console.h"
#include "brimlo/JsonForms.h"

#include <memory>

namespace Brimlo {

namespace {

struct Arguments {
    bool execute = false;
    bool force = false;
};

AutoCleanOutcome outcomeOf(const Arguments& arguments, const AppConfig& config) {
    if (arguments.execute) {
        // The purge comes first, and the clean stops.
        Tool::noteInterrupts(Tool::kFinishesFirst);
    }
    Console::Progress progress;
    progress.show(
        arguments.execute ? "Running auto-clean…" : "Checking what auto-clean would remove…");
    Cleaner cleaner{std::make_shared<Journal>(StoragePaths::journal())};
    return AutoCleaner::run(
        config, cleaner, !arguments.execute, arguments.force, &Tool::wasInterrupted);
}

void show(const AutoCleanOutcome& outcome, bool dryRun) {
    for (const MovedFolders::Move& move : MovedFolders::ofEnvironment()) {
        const std::string folder = Console::shortPath(StoragePaths::expandTilde(move.folder));
        Console::line(
            std::string{move.variable} + " moves " + std::string{move.usual} + " to " + folder +
            ".");
    }
    if (!outcome.planned.empty()) {
        const CleanPlan plan{outcome.planned};
        CleanRun::show(plan);
        CleanRun::show(*outcome.report, plan, dryRun);
    }
    Console::line(outcome.sentence(dryRun));
}

Json::Object form(const AutoCleanOutcome& outcome) {
    Json::Object document;
    if (outcome.skippedReason) {
        document.emplace("skippedReason", *outcome.skippedReason);
    }
    document.emplace("planned", JsonForms::items(outcome.planned));
    if (outcome.report) {
        document.emplace("report", JsonForms::report(*outcome.report));
    }
    document.emplace("purge", JsonForms::report(outcome.purge));
    document.emplace("purgedFromTrash", outcome.purge.bytes);
    return document;
}

ExitCode run(const Arguments& arguments, const Tool& tool) {
    const auto config = AppConfig::read();
    if (!config) {
        complain(config.error().description);
        return ExitCode::problems;
    }
    const AutoCleanOutcome outcome = outcomeOf(arguments, *config);
    if (tool.isJson()) {
        print(form(outcome));
    } else {
        show(outcome, !arguments.execute);
        const auto notice = outcome.notice();
        if (notice && arguments.execute && !Console::canAsk()) {
            LaunchAgent::notify(*notice);
        }
    }
    const ExitCode exit = CleanRun::exitCode(outcome.report.value_or(CleanReport{}));
    const bool isWell = !outcome.isBlocked && outcome.purge.failures.empty();
    return exit == ExitCode::done && !isWell ? ExitCode::problems : exit;
}

}  // namespace

void addAutocleanCommand(CLI::App& app, Tool& tool) {
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* command = tool.add(
        app, "autoclean", "Run the unattended clean of the background job", [arguments, &tool] {
            return run(*arguments, tool);
        });
    command->group(kCleanGroup);
    command->add_flag(
        "--execute", arguments->execute, "Do it; without this, only tell what would go");
    command->add_flag(
        "--force", arguments->force, "Also with auto-clean off, and with enough free space");
    command->footer(
        "First, what Brimlo moved to the Trash longer ago than the setting trash-retention-days\n"
        "is deleted for good. Then, if free space is short, what is preselected, rated Safe or\n"
        "Rebuilds and owned by no running app moves to the Trash. Nobody is asked;\n"
        "without a terminal, a notification tells how much went.\n"
        "Variables such as CARGO_HOME are followed and named. The background job knows those of\n"
        "the login (on Linux: systemctl --user show-environment), not those of a shell alone.\n"
        "Examples:\n"
        "  brimlo autoclean --force\n"
        "  brimlo config auto-clean-enabled true");
}

}  // namespace Brimlo
