#include "BrimloCore/Cleaner/CopyChoice.h"
#include "BrimloCore/Cleaner/DuplicateExtras.h"
#include "BrimloCore/Cleaner/DuplicateFinder.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/Fmt.h"
#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "brimlo/CleanRun.h"
#include "brimlo/Commands.h"
#include "brimlo/Console.h"
#include "brimlo/JsonForms.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace Brimlo {

namespace {

using Groups = std::vector<DuplicateGroup>;

constexpr std::array<std::pair<std::string_view, KeepReason>, 4> kRules{
    {
     {"newest", KeepReason::newest},
     {"oldest", KeepReason::oldest},
     {"shortest", KeepReason::shortestPath},
     {"tidiest", KeepReason::tidiestFolder},
     }
};

struct Arguments {
    std::vector<std::string> paths;
    std::int64_t minSize = 1'048'576;
    std::string keep;
    std::vector<std::string> keepUnder;
    bool folders = false;
    bool clone = false;
    bool trashExtras = false;
    bool dryRun = false;
    bool yes = false;
};

/// What a search found, and what stays of it.
struct Found {
    Groups groups;
    DuplicateFinder::LeftOut leftOut;
    std::vector<EqualFolders> folders;
    CopyChoice choice;
    std::vector<CopyChoice::Reasons> reasons = choice.reasons(groups);  ///< Of each group.

    [[nodiscard]] std::size_t extras(std::size_t group) const { return extraCount(reasons[group]); }
    [[nodiscard]] std::size_t extras() const {
        std::size_t count = 0;
        for (std::size_t i = 0; i < groups.size(); ++i) {
            count += extras(i);
        }
        return count;
    }
};

/// nullopt when a folder to keep is none, which is complained about.
std::optional<CopyChoice> choiceOf(const Arguments& arguments) {
    const auto* const rule =
        std::ranges::find(kRules, arguments.keep, &std::pair<std::string_view, KeepReason>::first);
    CopyChoice choice{rule == kRules.end() ? KeepReason::firstByName : rule->second};
    for (const std::string& folder : arguments.keepUnder) {
        if (const auto kept = choice.keepUnder(folder); !kept) {
            complain(kept.error().description);
            return std::nullopt;
        }
    }
    return choice;
}

Groups find(
    const std::vector<std::string>& roots,
    std::int64_t minSize,
    ScanControl& control,
    DuplicateFinder::LeftOut& leftOut) {
    Console::Progress progress;
    progress.show("Looking for files of the same length…");
    bool isComparing = false;
    const auto tell = [&](const DuplicateFinder::Progress& reached) {
        // Before, no group can be finished, and Ctrl-C ends the program.
        if (!std::exchange(isComparing, true)) {
            Tool::noteInterrupts("the search stops here; what was found so far is listed");
        }
        if (Tool::wasInterrupted()) {
            control.cancel();
        }
        progress.show("Comparing " + reached.words() + "  " + Console::shortPath(reached.path));
    };
    Groups groups = DuplicateFinder::find(roots, minSize, &control, tell, &leftOut);
    Tool::endOnInterrupt();
    return groups;
}

/// Prints a group, and returns the bytes that its extras waste.
std::int64_t show(const DuplicateGroup& group, const CopyChoice::Reasons& reasons) {
    const auto extras = static_cast<std::int64_t>(extraCount(reasons));
    const std::int64_t wasted = Bytes::product(group.size, extras);
    Console::line(
        Console::size(wasted) + "  " +
        Console::bold(
            Console::count(group.copies.size(), "equal file") + " of " + Fmt::bytes(group.size)));
    for (std::size_t i = 0; i < reasons.size(); ++i) {
        const std::string path = Console::shortPath(group.copies[i].path);
        Console::line(
            reasons[i]
                ? "      keep  " + path + Console::dim("  " + std::string{words(*reasons[i])})
                : "            " + path);
    }
    return wasted;
}

void show(const EqualFolders& set) {
    const std::string files = Console::count(static_cast<std::size_t>(set.files), "file");
    Console::line(
        Console::size(set.bytes) + "  " +
        Console::bold(
            set.folders.size() > 1
                ? Console::count(set.folders.size(), "equal folder") + " of " + files
                : "folder of " + files + ", all of it in a larger one"));
    for (const std::string& folder : set.folders) {
        Console::line("            " + Console::shortPath(folder));
    }
    for (const std::string& folder : set.larger) {
        Console::line("        in  " + Console::shortPath(folder) + Console::dim("  and more"));
    }
}

void show(const Found& found, std::int64_t minSize, std::size_t unread) {
    std::ranges::for_each(found.folders, [](const EqualFolders& set) { show(set); });
    std::int64_t wasted = 0;
    for (std::size_t i = 0; i < found.groups.size(); ++i) {
        wasted = Bytes::sum(wasted, show(found.groups[i], found.reasons[i]));
    }
    const bool isIncomplete = Tool::wasInterrupted();
    Console::line(
        found.groups.empty() && isIncomplete ? "No group of equal files was finished."
        : found.groups.empty()
            ? "No two files of " + Fmt::bytes(minSize) + " or more are equal."
            : Console::bold(
                  Console::count(found.extras(), "extra file") + ", " + Fmt::bytes(wasted)) +
                  ".");
    if (isIncomplete) {
        Console::line("The search was interrupted, so there may be more. Nothing was changed.");
    }
    if (const std::string leftOut = found.leftOut.words(); !leftOut.empty()) {
        Console::line(Console::dim(leftOut));
    }
    if (unread > 0) {
        Console::line(Console::dim(Console::count(unread, "folder") + " could not be read."));
    }
}

void showWays() {
    Console::line("\"--clone\" lets equal files share their bytes, \"--trash-extras\" moves the");
    Console::line(
        "extra files to the Trash. \"--keep\" and \"--keep-under\" choose which copy stays.");
}

Json::Array forms(const Found& found) {
    Json::Array document;
    for (std::size_t i = 0; i < found.groups.size(); ++i) {
        document.push_back(JsonForms::duplicates(found.groups[i], found.reasons[i]));
    }
    return document;
}

void printForms(const Found& found, bool withFolders) {
    if (!withFolders) {
        print(forms(found));
        return;
    }
    Json::Array folders;
    for (const EqualFolders& set : found.folders) {
        folders.push_back(JsonForms::equalFolders(set));
    }
    print(Json::Object{
        {"groups",  forms(found)                     },
        {"folders", std::move(folders)               },
        {"leftOut", JsonForms::leftOut(found.leftOut)},
    });
}

CloneReport cloneExtras(const Found& found) {
    Tool::noteInterrupts(Tool::kFinishesFirst);
    ScanControl control;
    Console::Progress progress;
    return DuplicateExtras::clone(
        found.groups, found.choice, &control, [&](const std::string& path) {
            if (Tool::wasInterrupted()) {
                control.cancel();
            }
            progress.show("Cloning " + Console::shortPath(path));
        });
}

ExitCode clone(const Found& found, bool yes, const Tool& tool) {
    if (!tool.isJson()) {
        std::fflush(stdout);
        const std::string count = Console::count(found.extras(), "file");
        if (!yes && !Console::confirm("Replace " + count + " by clones?")) {
            Console::line("Nothing was changed.");
            return ExitCode::done;
        }
    }
    const CloneReport report = cloneExtras(found);
    if (tool.isJson()) {
        Json::Array failures;
        for (const std::string& line : report.failures) {
            failures.push_back(JsonForms::path(line));
        }
        print(Json::Object{
            {"groups",      forms(found)       },
            {"sharedBytes", report.sharedBytes },
            {"failures",    std::move(failures)}
        });
    } else {
        for (const std::string& line : report.failures) {
            Console::line("failed   " + Console::shortPath(line));
        }
        Console::line(report.sentence());
    }
    if (Tool::wasInterrupted()) {
        return ExitCode::interrupted;
    }
    return report.failures.empty() ? ExitCode::done : ExitCode::problems;
}

/// The folders to search. Anything else, and unreadable folders, are complained about and skipped.
std::vector<std::string> roots(const std::vector<std::string>& paths) {
    if (paths.empty()) {
        return {StoragePaths::home()};
    }
    std::vector<std::string> result;
    for (const std::string& path : paths) {
        std::string root = meantPath(path);
        if (Folders::names(root)) {
            result.push_back(std::move(root));
        } else {
            complain(path + " is not a readable folder.");
        }
    }
    return result;
}

ExitCode act(
    const std::vector<std::string>& folders,
    const CopyChoice& choice,
    const Arguments& arguments,
    const Tool& tool) {
    ScanControl control;
    DuplicateFinder::LeftOut leftOut;
    const Groups groups = find(folders, arguments.minSize, control, leftOut);
    const bool tellsFolders = (arguments.folders || !tool.isJson()) && !Tool::wasInterrupted();
    const Found found{
        .groups = groups,
        .leftOut = leftOut,
        .folders = tellsFolders ? EqualFolders::among(groups, folders, arguments.minSize, &control)
                                : std::vector<EqualFolders>{},
        .choice = choice};
    if (!tool.isJson()) {
        show(found, arguments.minSize, control.inaccessible().size());
    }
    if (Tool::wasInterrupted()) {
        if (tool.isJson()) {
            printForms(found, arguments.folders);
        }
        return ExitCode::interrupted;
    }
    if (!tool.isJson() && found.extras() == 0) {
        return ExitCode::done;
    }
    if (arguments.trashExtras) {
        const CleanPlan plan = DuplicateExtras::plan(found.groups, choice);
        return CleanRun::run(plan, {.dryRun = arguments.dryRun, .yes = arguments.yes}, tool);
    }
    if (arguments.clone && !arguments.dryRun) {
        return clone(found, arguments.yes, tool);
    }
    if (tool.isJson()) {
        printForms(found, arguments.folders);
    } else if (arguments.clone) {
        Console::line(
            Console::count(found.extras(), "file") +
            " would be replaced by clones. Nothing was changed.");
    } else {
        showWays();
    }
    return ExitCode::done;
}

ExitCode run(const Arguments& arguments, const Tool& tool) {
    const bool isChanging = (arguments.clone || arguments.trashExtras) && !arguments.dryRun;
    if (isChanging && !arguments.yes && (tool.isJson() || !Console::canAsk())) {
        complain("Not a terminal: pass --yes to change files.");
        return ExitCode::wrongUsage;
    }
    const auto choice = choiceOf(arguments);
    if (!choice) {
        return ExitCode::wrongUsage;
    }
    const std::vector<std::string> folders = roots(arguments.paths);
    if (folders.empty() && !tool.isJson()) {
        return ExitCode::problems;
    }
    const ExitCode exit = act(folders, *choice, arguments, tool);
    const bool isComplete = folders.size() >= arguments.paths.size();
    return exit == ExitCode::done && !isComplete ? ExitCode::problems : exit;
}

std::vector<std::string> ruleWords() {
    std::vector<std::string> words;
    std::ranges::transform(kRules, std::back_inserter(words), [](const auto& rule) {
        return std::string{rule.first};
    });
    return words;
}

void addKeepOptions(CLI::App& command, Arguments& arguments) {
    command
        .add_option(
            "--keep",
            arguments.keep,
            "Which copy stays: newest, oldest, shortest (path) or tidiest (folder); default: the "
            "first by name")
        ->type_name("COPY")
        ->check(CLI::IsMember(ruleWords()));
    command
        .add_option(
            "--keep-under", arguments.keepUnder, "Keep every copy in this folder, whatever else")
        ->allow_extra_args(false)
        ->type_name("PATH");
}

}  // namespace

void addDuplicatesCommand(CLI::App& app, Tool& tool) {
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* command =
        tool.add(app, "duplicates", "Find files with the same content", [arguments, &tool] {
            return run(*arguments, tool);
        });
    command->group(kLookGroup);
    addPaths(*command, arguments->paths, "Folders (default: your home folder)");
    command
        ->add_option(
            "--min-size",
            arguments->minSize,
            "Only files of at least so many bytes (default: 1048576)")
        ->type_name("BYTES")
        ->check(wholeNumber());
    addKeepOptions(*command, *arguments);
    command->add_flag(
        "--folders",
        arguments->folders,
        "With --json: an object with the groups, equal folders and what was left out");
    CLI::Option* clone = command->add_flag(
        "--clone", arguments->clone, "Replace the extra copies by clones of the one that stays");
    command
        ->add_flag(
            "--trash-extras",
            arguments->trashExtras,
            "Move the extra copies to the Trash, each once it was compared again")
        ->excludes(clone);
    command->add_flag("--dry-run", arguments->dryRun, "Show what would go, and change nothing");
    command->add_flag("--yes", arguments->yes, "Don't ask");
    command->footer(
        "A clone shares its bytes on the disk with the other file until one of the two is "
        "changed.\n"
        "It needs a file system that can do that, Btrfs or XFS for example, and one volume.\n"
        "Folders called Library or .Trash are left out, and so are photo libraries and apps.\n"
        "--keep-under can be given several times.\n"
        "Example:\n"
        "  brimlo duplicates ~/Photos --keep newest --keep-under ~/Photos/Archive --trash-extras");
}

}  // namespace Brimlo
