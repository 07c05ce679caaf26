#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Platform/Fmt.h"
#include "BrimloCore/Support/AppConfig.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "brimlo/Commands.h"
#include "brimlo/Console.h"
#include "brimlo/JsonForms.h"

#include <memory>

namespace Brimlo {

namespace {

ExitCode size(const Tool& tool) {
    const std::int64_t bytes = Cleaner::trashSize();
    if (tool.isJson()) {
        print(Json::Object{
            {"bytes", bytes}
        });
    } else {
        Console::line(Fmt::bytes(bytes) + " in the Trash.");
    }
    return ExitCode::done;
}

/// Reports what was deleted, as a complaint if there were problems.
ExitCode tell(const TrashReport& report, const std::string& sentence, const Tool& tool) {
    if (tool.isJson()) {
        print(JsonForms::report(report));
    } else if (report.failures.empty()) {
        Console::line(sentence);
    }
    if (!report.failures.empty()) {
        complain(sentence);
    }
    return report.failures.empty() ? ExitCode::done : ExitCode::problems;
}

ExitCode purge(std::optional<std::int64_t> olderThanDays, bool dryRun, const Tool& tool) {
    const auto config = AppConfig::read();
    if (!olderThanDays && !config) {
        complain(config.error().description);  // The default could delete too early.
        return ExitCode::problems;
    }
    Cleaner cleaner{std::make_shared<Journal>(StoragePaths::journal())};
    const TrashReport report =
        cleaner.purgeOwnTrash(olderThanDays ? *olderThanDays : config->trashRetentionDays, dryRun);
    return tell(report, report.purgedSentence(dryRun), tool);
}

ExitCode empty(bool yes, const Tool& tool) {
    if (!yes && (tool.isJson() || !Console::canAsk())) {
        complain("Not a terminal: pass --yes to empty the Trash.");
        return ExitCode::wrongUsage;
    }
    if (!yes) {
        const TrashReport found = Cleaner::emptyTrash(true);
        if (!Console::confirm(
                "Delete " + Console::count(static_cast<std::size_t>(found.removed), "item") + ", " +
                Fmt::bytes(found.bytes) +
                ", for good, also what other programs put in the Trash?")) {
            Console::line("Nothing was deleted.");
            return ExitCode::done;
        }
    }
    const TrashReport report = Cleaner::emptyTrash();
    return tell(report, report.emptiedSentence(), tool);
}

}  // namespace

void addTrashCommand(CLI::App& app, Tool& tool) {
    CLI::App* trash = app.add_subcommand("trash", "Measure, purge or empty the Trash");
    trash->group(kCleanGroup);
    trash->require_subcommand(1);

    tool.add(*trash, "size", "Measure the Trash", [&tool] { return size(tool); });

    struct PurgeArguments {
        std::optional<std::int64_t> olderThanDays;
        bool dryRun = false;
    };
    const auto arguments = std::make_shared<PurgeArguments>();
    CLI::App* purgeCommand =
        tool.add(*trash, "purge", "Delete Brimlo's own old items for good", [arguments, &tool] {
            return purge(arguments->olderThanDays, arguments->dryRun, tool);
        });
    purgeCommand
        ->add_option(
            "--older-than",
            arguments->olderThanDays,
            "Only what was moved there before so many days (default: the setting "
            "trash-retention-days)")
        ->type_name("DAYS")
        ->check(wholeNumber());
    purgeCommand->add_flag("--dry-run", arguments->dryRun, "Delete nothing");

    const auto yes = std::make_shared<bool>(false);
    CLI::App* emptyCommand =
        tool.add(*trash, "empty", "Delete everything in the Trash for good", [yes, &tool] {
            return empty(*yes, tool);
        });
    emptyCommand->add_flag("--yes", *yes, "Don't ask");
}

}  // namespace Brimlo
