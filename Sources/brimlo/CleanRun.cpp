#include "brimlo/CleanRun.h"

#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Cleaner/ItemGroups.h"
#include "BrimloCore/Platform/Fmt.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "brimlo/Console.h"
#include "brimlo/JsonForms.h"
#include "brimlo/Tool.h"

#include <cstdio>
#include <memory>

namespace Brimlo::CleanRun {

namespace {

constexpr std::string_view kStops =
    "the clean stops here; \"brimlo undo --last\" takes back what has moved";

std::string total(const CleanPlan& plan) {
    return Console::count(plan.items().size(), "item") + ", " + plan.figures().amount();
}

/// The question to confirm.
std::string question(const CleanPlan& plan) {
    return plan.figures().finalCount == 0 ? "Move " + total(plan) + " to the Trash?"
                                          : "Clean " + total(plan) + "?";
}

void list(const char* word, const std::vector<ItemProblem>& problems) {
    for (const ItemProblem& problem : problems) {
        Console::line(word + Console::problem(problem));
    }
}

void listStaying(const CleanReport& report) {
    list("refused     ", report.refused);
    list("failed      ", report.failures);
}

/// What was told before the clean is not told again, but belongs to its report.
void add(const CleanReport& rehearsal, CleanReport& report) {
    const auto prepend = [](const auto& first, auto& rest) {
        rest.insert(rest.begin(), first.begin(), first.end());
    };
    prepend(rehearsal.refused, report.refused);
    prepend(rehearsal.failures, report.failures);
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
            [&](const CleanItem& item) {
                progress.show(
                    std::to_string(++done) + "/" + std::to_string(plan.items().size()) + "  " +
                    Console::itemName(item.path, item.title));
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
            words + Console::dim(item.ruleID ? "  " + *item.ruleID : "") +
            (isPseudoPath(item.path) ? "  for good" : ""));
    };
    for (const ItemGroup& group : grouped(plan.items())) {
        if (group.isFolder() && !isFull) {
            lineOf(plan.items()[group.items.front()], group.size, Console::folder(group));
            continue;
        }
        for (const std::size_t place : group.items) {
            const CleanItem& item = plan.items()[place];
            lineOf(item, item.size, Console::itemName(item.path, item.title));
        }
    }
    for (const std::string& path : plan.dropped()) {
        Console::line("   (inside another item: " + Console::shortPath(path) + ")");
    }
    if (!plan.items().empty()) {
        Console::line(Console::bold(total(plan)));
    }
    if (const std::string warning = plan.figures().warning(); !warning.empty()) {
        Console::line(warning);
    }
}

void show(const CleanReport& report, const CleanPlan& plan, bool dryRun) {
    for (const CleanItem& item : report.goneForGood) {
        Console::line("for good    " + Console::itemName(item.path, item.title));
    }
    listStaying(report);
    list("unrecorded  ", report.unrecorded);
    if (!report.untouched.empty()) {
        Console::line(
            "Stopped: " + Console::count(report.untouched.size(), "item") + " left untouched.");
    }
    const std::string count = Console::count(static_cast<std::size_t>(report.processed), "item");
    if (dryRun) {
        const char* end = plan.figures().finalCount == 0
                              ? " would go to the Trash. Nothing was moved."
                              : " would be cleaned. Nothing was touched.";
        Console::line(count + end);
        return;
    }
    if (report.processed == 0) {
        Console::line("Nothing was cleaned.");
        return;
    }
    const bool hasFinal = !report.goneForGood.empty();
    Console::line(
        hasFinal ? "Cleaned " + count + ". Docker freed " + Fmt::bytes(report.freedNowBytes) +
                       " for good; " + Fmt::bytes(report.movedToTrashBytes) + " moved to the Trash."
                 : "Moved " + count + " to the Trash, " + Fmt::bytes(report.movedToTrashBytes) +
                       ". The space is free once the Trash is emptied.");
    const FreedSpace freed = plan.without(report.stayed()).figures().freed;
    if (const std::string frees = freed.words(); !frees.empty()) {
        Console::line("In all it " + frees + ": " + freed.reason() + ".");
    }
    if (!report.unrecorded.empty()) {
        Console::line(
            Console::count(report.unrecorded.size(), "item") +
            " could not be recorded. \"brimlo undo\" does not know them; only the desktop's own "
            "Trash can put them back.");
    }
    if (!report.canUndo()) {
        return;
    }
    const char* what = hasFinal                    ? "back what went to the Trash."
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
    const CleanReport rehearsal = execute(plan, true);
    const CleanPlan going = plan.without(rehearsal.stayed());
    if (!tool.isJson()) {
        show(going, choice.isFull);
        if (plan.items().empty()) {
            Console::line("Nothing to clean was found.");
            return ExitCode::done;
        }
        listStaying(rehearsal);
        std::fflush(stdout);
        const bool asks = !choice.dryRun && !choice.yes && !going.items().empty();
        if (asks && !Console::confirm(question(going))) {
            Console::line("Nothing was moved.");
            return ExitCode::done;
        }
    }
    CleanReport report;
    if (choice.dryRun) {
        report.processed = rehearsal.processed;
    } else {
        report = execute(going, false);
    }
    if (!tool.isJson()) {
        show(report, going, choice.dryRun);
    }
    add(rehearsal, report);
    if (tool.isJson()) {
        Json::Object document = JsonForms::report(report);
        document.emplace("plan", JsonForms::plan(plan));
        print(document);
    }
    return exitCode(report);
}

namespace {

void show(const UndoReport& report) {
    for (const std::string& path : report.restored) {
        Console::line("restored  " + Console::shortPath(path));
    }
    for (const ItemProblem& problem : report.failures) {
        Console::line("failed    " + Console::problem(problem));
    }
    for (const ItemProblem& problem : report.unrecorded) {
        Console::line(
            "          " + Console::shortPath(problem.path) +
            " is back, but the journal could not be written: " + problem.reason);
    }
    Console::line("Restored " + Console::count(report.restored.size(), "item") + ".");
}

}  // namespace

ExitCode tell(const UndoReport& report, const Tool& tool) {
    if (tool.isJson()) {
        print(JsonForms::report(report));
    } else {
        show(report);
    }
    if (Tool::wasInterrupted()) {
        return ExitCode::interrupted;
    }
    return report.hasProblems() ? ExitCode::problems : ExitCode::done;
}

}  // namespace Brimlo::CleanRun
