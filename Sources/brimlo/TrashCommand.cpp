#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/Fmt.h"
#include "BrimloCore/Support/AppConfig.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"
#include "brimlo/CleanRun.h"
#include "brimlo/Commands.h"
#include "brimlo/Console.h"
#include "brimlo/JsonForms.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

namespace Brimlo {

namespace {

ExitCode size(const Tool& tool) {
    const SpaceUse use = Cleaner::trashUse();
    const FreedSpace freed = FreedSpace::alone(use);
    if (tool.isJson()) {
        Json::Object document{
            {"bytes", use.size}
        };
        JsonForms::addFreed(document, freed);
        print(document);
        return ExitCode::done;
    }
    Console::line(Fmt::bytes(use.size) + " in the Trash.");
    if (const std::string frees = freed.words(); !frees.empty()) {
        Console::line("Emptying it " + frees + ": " + freed.reason() + ".");
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

/// What lies in the Trash; nullopt, with a complaint, when the journal can't be read.
std::optional<TrashContents> contents(Cleaner& cleaner) {
    auto contents = cleaner.trashContents();
    if (!contents) {
        complain("The journal can't be read: " + contents.error().description + ".");
        return std::nullopt;
    }
    return *std::move(contents);
}

/// "SIZE  DATE  WHOSE  NAME  OLD PATH".
void show(const TrashContents::Item& item) {
    constexpr std::size_t kDateWidth = 16;
    constexpr std::size_t kWhoseWidth = 6;
    Console::line(
        Console::size(item.size) + "  " +
        Console::left(item.date ? Console::localTime(*item.date) : "", kDateWidth) + "  " +
        Console::left(item.entryID ? "Brimlo" : "", kWhoseWidth) + "  " +
        Text::printable(Path::name(item.trashPath)) + "  " +
        Console::dim(
            item.originalPath ? Console::shortPath(*item.originalPath) : "from an unknown place"));
}

ExitCode list(const Tool& tool) {
    Cleaner cleaner{std::make_shared<Journal>(StoragePaths::journal())};
    const auto found = contents(cleaner);
    if (!found) {
        return ExitCode::problems;
    }
    if (tool.isJson()) {
        print(JsonForms::trash(*found));
    } else {
        std::ranges::for_each(found->items, show);
        Console::line(
            found->items.empty() ? "The Trash is empty."
                                 : Console::bold(
                                       Console::count(found->items.size(), "item") + ", " +
                                       Fmt::bytes(found->bytes)));
    }
    for (const ItemProblem& problem : found->failures) {
        complain(problem.text());
    }
    return found->failures.empty() ? ExitCode::done : ExitCode::problems;
}

/// The items that the words mean; nullopt, with a complaint, when a word means none or several.
std::optional<std::vector<TrashContents::Item>> meant(
    Cleaner& cleaner, const std::vector<std::string>& words) {
    const auto all = contents(cleaner);
    if (!all) {
        return std::nullopt;
    }
    auto items = all->find(words);
    if (!items) {
        complain(items.error().description);
        return std::nullopt;
    }
    return *std::move(items);
}

ExitCode restore(const std::vector<std::string>& words, const Tool& tool) {
    Cleaner cleaner{std::make_shared<Journal>(StoragePaths::journal())};
    const auto items = meant(cleaner, words);
    if (!items) {
        return ExitCode::problems;
    }
    Tool::noteInterrupts(Tool::kFinishesFirst);
    return CleanRun::tell(cleaner.restore(*items), tool);
}

struct PurgeArguments {
    std::vector<std::string> words;
    std::optional<std::int64_t> olderThanDays;
    bool dryRun = false;
    bool yes = false;
};

/// Deletes single items for good.
ExitCode purgeItems(const PurgeArguments& arguments, const Tool& tool) {
    if (!arguments.dryRun && !arguments.yes && (tool.isJson() || !Console::canAsk())) {
        complain("Not a terminal: pass --yes to delete items for good, or --dry-run to preview.");
        return ExitCode::wrongUsage;
    }
    Cleaner cleaner{std::make_shared<Journal>(StoragePaths::journal())};
    const auto items = meant(cleaner, arguments.words);
    if (!items) {
        return ExitCode::problems;
    }
    if (arguments.dryRun && tool.isJson()) {
        print(JsonForms::trash(
            {.items = *items,
             .bytes = Bytes::total(*items, &TrashContents::Item::size),
             .failures = {}}));
        return ExitCode::done;
    }
    if (arguments.dryRun || !arguments.yes) {
        std::ranges::for_each(*items, show);
    }
    if (arguments.dryRun) {
        return ExitCode::done;
    }
    if (!arguments.yes && !Console::confirm(
                              "Delete " + Console::count(items->size(), "item") +
                              " for good? No undo brings them back.")) {
        Console::line("Nothing was deleted.");
        return ExitCode::done;
    }
    Tool::noteInterrupts(Tool::kFinishesFirst);
    const TrashReport report = cleaner.purge(*items);
    return tell(report, report.deletedSentence(), tool);
}

ExitCode purge(const PurgeArguments& arguments, const Tool& tool) {
    if (!arguments.words.empty()) {
        return purgeItems(arguments, tool);
    }
    const auto& [words, olderThanDays, dryRun, yes] = arguments;
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
        const std::string frees = found.frees();
        if (!Console::confirm(
                "Delete " + Console::count(static_cast<std::size_t>(found.removed), "item") + ", " +
                Fmt::bytes(found.bytes) + (frees.empty() ? "" : ", which " + frees) +
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
    CLI::App* trash = app.add_subcommand("trash", "List, restore, purge or empty the Trash");
    trash->group(kCleanGroup);
    trash->require_subcommand(1);

    tool.add(*trash, "size", "Measure the Trash", [&tool] { return size(tool); });
    tool.add(
        *trash,
        "list",
        "List what lies in the Trash, on every local volume and whoever put it there",
        [&tool] { return list(tool); });

    const char* const called = "Items, by their name in the Trash or the path where they were";
    const auto restored = std::make_shared<std::vector<std::string>>();
    CLI::App* restoreCommand =
        tool.add(*trash, "restore", "Put items back to where they were", [restored, &tool] {
            return restore(*restored, tool);
        });
    restoreCommand->add_option("items", *restored, called)->required()->type_name("ITEM");
    restoreCommand->footer(
        "Nothing is overwritten: if the original path is taken, the item stays in the Trash.");

    const auto arguments = std::make_shared<PurgeArguments>();
    CLI::App* purgeCommand = tool.add(
        *trash,
        "purge",
        "Delete Brimlo's own old items, or named ones, for good",
        [arguments, &tool] { return purge(*arguments, tool); });
    CLI::Option* items =
        purgeCommand->add_option("items", arguments->words, called)->type_name("ITEM");
    purgeCommand->add_flag("--yes", arguments->yes, "Don't ask before named items go");
    purgeCommand
        ->add_option(
            "--older-than",
            arguments->olderThanDays,
            "Only what was moved there before so many days (default: the setting "
            "trash-retention-days)")
        ->type_name("DAYS")
        ->excludes(items)
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
