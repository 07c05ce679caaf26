#include "brimlo/CleanRun.h"

#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Cleaner/ItemGroups.h"
#include "BrimloCore/Platform/Fmt.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"
#include "brimlo/Console.h"
#include "brimlo/JsonForms.h"
#include "brimlo/Tool.h"

#include <algorithm>
#include <cstdio>
#include <memory>

namespace Brimlo::CleanRun {

namespace {

constexpr std::string_view kStops =
    "the clean stops here; \"brimlo undo --last\" takes back what has moved";

std::string total(const CleanPlan& plan) {
    return Console::count(plan.items().size(), "item") + ", " + Fmt::bytes(plan.totalBytes());
}

/// The name of an item, and the title of a Docker object unless that is its id.
std::string name(const CleanItem& item) {
    const std::string name = Console::itemName(item.path);
    const std::string title = Text::printable(item.title.value_or(""));
    return name.ends_with(title) ? name : name + "  " + title;
}

std::size_t dockerCount(const CleanPlan& plan) {
    return static_cast<std::size_t>(
        std::ranges::count_if(plan.items(), isPseudoPath, &CleanItem::path));
}

/// The question to confirm. `show` has already pointed out what does not go to the Trash.
std::string question(const CleanPlan& plan) {
    return dockerCount(plan) == 0 ? "Move " + total(plan) + " to the Trash?"
                                  : "Clean " + total(plan) + "?";
}

CleanReport execute(const CleanPlan& plan, bool dryRun) {
    if (!dryRun) {
        Tool::noteInterrupts(kStops);
    }
    Cleaner cleaner{std::make_shared<Journal>(StoragePaths::journal())};
    Console::Progress progress;
    std::size_t done = 0;
    const CleanOptions options{
        .progress =
            [&](const std::string& path) {
                progress.show(
                    std::to_string(++done) + "/" + std::to_string(plan.items().size()) + "  " +
                    Console::itemName(path));
            },
        .isStopped = &Tool::wasInterrupted,
    };
    return cleaner.execute(plan, DisposalMode::trash, dryRun, options);
}

}  // namespace

void show(const CleanPlan& plan, bool isFull) {
    const auto lineOf = [](const CleanItem& item, std::int64_t size, const std::string& words) {
        Console::line(
            Console::size(size) + "  " + (item.risk ? Console::badge(*item.risk) + "  " : "") +
            words + Console::dim(item.ruleID ? "  " + *item.ruleID : ""));
    };
    for (const ItemGroup& group : grouped(plan.items())) {
        if (group.isFolder() && !isFull) {
            lineOf(plan.items()[group.items.front()], group.size, Console::folder(group));
            continue;
        }
        for (const std::size_t place : group.items) {
            const CleanItem& item = plan.items()[place];
            lineOf(item, item.size, name(item));
        }
    }
    for (const std::string& path : plan.dropped()) {
        Console::line("   (inside another item: " + Console::shortPath(path) + ")");
    }
    if (!plan.items().empty()) {
        Console::line(Console::bold(total(plan)));
    }
    if (const std::size_t count = dockerCount(plan); count > 0) {
        Console::line(
            Console::count(count, "item") +
            " of Docker's would be removed for good, not moved to the Trash.");
    }
}

void show(const CleanReport& report, const CleanPlan& plan, bool dryRun) {
    const auto list = [](const char* word, const std::vector<ItemProblem>& problems) {
        for (const ItemProblem& problem : problems) {
            Console::line(word + Console::problem(problem));
        }
    };
    list("refused     ", report.refused);
    list("failed      ", report.failures);
    list("unrecorded  ", report.unrecorded);
    if (!report.untouched.empty()) {
        Console::line(
            "Stopped: " + Console::count(report.untouched.size(), "item") + " left untouched.");
    }
    const std::string count = Console::count(static_cast<std::size_t>(report.processed), "item");
    if (dryRun) {
        const char* end = dockerCount(plan) == 0 ? " would go to the Trash. Nothing was moved."
                                                 : " would be cleaned. Nothing was touched.";
        Console::line(count + end);
        return;
    }
    if (report.processed == 0) {
        Console::line("Nothing was cleaned.");
        return;
    }
    const bool hasDockers = dockerCount(plan) > 0;
    Console::line(
        hasDockers
            ? "Cleaned " + count + ". Docker freed " + Fmt::bytes(report.freedNowBytes) +
                  " for good; " + Fmt::bytes(report.movedToTrashBytes) + " moved to the Trash."
            : "Moved " + count + " to the Trash, " + Fmt::bytes(report.movedToTrashBytes) +
                  ". The space is free once the Trash is emptied.");
    if (!report.unrecorded.empty()) {
        Console::line(
            Console::count(report.unrecorded.size(), "item") +
            " could not be recorded. \"brimlo undo\" does not know them; only the desktop's own "
            "Trash can put them back.");
    }
    if (report.journalIDs.empty() || (hasDockers && report.movedToTrashBytes == 0)) {
        return;
    }
    const char* what = hasDockers                  ? "back what went to the Trash."
                       : report.unrecorded.empty() ? "everything back."
                                                   : "back the others.";
    Console::line(std::string{"\"brimlo undo --last\" puts "} + what);
}

ExitCode exitCode(const CleanReport& report) {
    if (Tool::wasInterrupted()) {
        return ExitCode::interrupted;
    }
    return report.hasProblems() ? ExitCode::problems : ExitCode::done;
}

ExitCode run(const CleanPlan& plan, const Choice& choice, const Tool& tool) {
    if (!tool.isJson()) {
        show(plan, choice.isFull);
        if (plan.items().empty()) {
            Console::line("Nothing to clean was found.");
            return ExitCode::done;
        }
        std::fflush(stdout);
        if (!choice.dryRun && !choice.yes && !Console::confirm(question(plan))) {
            Console::line("Nothing was moved.");
            return ExitCode::done;
        }
    }
    const CleanReport report = execute(plan, choice.dryRun);
    if (tool.isJson()) {
        Json::Object document = JsonForms::report(report);
        document.emplace("plan", JsonForms::plan(plan));
        print(document);
    } else {
        show(report, plan, choice.dryRun);
    }
    return exitCode(report);
}

}  // namespace Brimlo::CleanRun
