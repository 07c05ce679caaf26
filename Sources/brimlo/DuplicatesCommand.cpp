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
#include <cstdio>
#include <memory>

namespace Brimlo {

namespace {

using Groups = std::vector<DuplicateGroup>;

struct Arguments {
    std::vector<std::string> paths;
    std::int64_t minSize = 1'048'576;
    bool clone = false;
    bool trashExtras = false;
    bool yes = false;
};

Groups find(const std::vector<std::string>& roots, std::int64_t minSize, ScanControl& control) {
    Console::Progress progress;
    progress.show("Looking for files of the same length…");
    return DuplicateFinder::find(roots, minSize, &control, [&](const auto& reached) {
        progress.show("Comparing " + reached.words() + "  " + Console::shortPath(reached.path));
    });
}

std::size_t extraCount(const Groups& groups) {
    std::size_t count = 0;
    for (const DuplicateGroup& group : groups) {
        count += group.paths.size() - 1;
    }
    return count;
}

void show(const Groups& groups, std::int64_t minSize, std::size_t unread) {
    std::int64_t wasted = 0;
    for (const DuplicateGroup& group : groups) {
        Console::line(
            Console::size(group.wastedBytes()) + "  " +
            Console::bold(
                Console::count(group.paths.size(), "equal file") + " of " +
                Fmt::bytes(group.size)));
        for (const std::string& path : group.paths) {
            const bool isKept = &path == &group.paths.front();
            Console::line((isKept ? "      keep  " : "            ") + Console::shortPath(path));
        }
        wasted = Bytes::sum(wasted, group.wastedBytes());
    }
    Console::line(
        groups.empty()
            ? "No two files of " + Fmt::bytes(minSize) + " or more are equal."
            : Console::bold(
                  Console::count(extraCount(groups), "extra file") + ", " + Fmt::bytes(wasted)) +
                  ".");
    if (unread > 0) {
        Console::line(Console::dim(Console::count(unread, "folder") + " could not be read."));
    }
}

void showWays() {
    Console::line(
        "\"--clone\" lets equal files share their bytes, \"--trash-extras\" moves all but");
    Console::line("the first of each group to the Trash.");
}

Json::Array forms(const Groups& groups) {
    Json::Array document;
    for (const DuplicateGroup& group : groups) {
        document.push_back(JsonForms::duplicates(group));
    }
    return document;
}

CloneReport cloneExtras(const Groups& groups) {
    Tool::noteInterrupts(Tool::kFinishesFirst);
    ScanControl control;
    Console::Progress progress;
    return DuplicateExtras::clone(groups, &control, [&](const std::string& path) {
        if (Tool::wasInterrupted()) {
            control.cancel();
        }
        progress.show("Cloning " + Console::shortPath(path));
    });
}

ExitCode clone(const Groups& groups, bool yes, const Tool& tool) {
    if (!tool.isJson()) {
        std::fflush(stdout);
        const std::string count = Console::count(extraCount(groups), "file");
        if (!yes && !Console::confirm("Replace " + count + " by clones?")) {
            Console::line("Nothing was changed.");
            return ExitCode::done;
        }
    }
    const CloneReport report = cloneExtras(groups);
    if (tool.isJson()) {
        Json::Array failures;
        for (const std::string& line : report.failures) {
            failures.push_back(JsonForms::path(line));
        }
        print(Json::Object{
            {"groups",      forms(groups)      },
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
    const std::vector<std::string>& folders, const Arguments& arguments, const Tool& tool) {
    ScanControl control;
    const Groups groups = find(folders, arguments.minSize, control);
    if (!tool.isJson()) {
        show(groups, arguments.minSize, control.inaccessible().size());
        if (groups.empty()) {
            return ExitCode::done;
        }
    }
    if (arguments.clone) {
        return clone(groups, arguments.yes, tool);
    }
    if (arguments.trashExtras) {
        return CleanRun::run(DuplicateExtras::plan(groups), {.yes = arguments.yes}, tool);
    }
    if (tool.isJson()) {
        print(forms(groups));
    } else {
        showWays();
    }
    return ExitCode::done;
}

ExitCode run(const Arguments& arguments, const Tool& tool) {
    const bool isChanging = arguments.clone || arguments.trashExtras;
    if (isChanging && !arguments.yes && (tool.isJson() || !Console::canAsk())) {
        complain("Not a terminal: pass --yes to change files.");
        return ExitCode::wrongUsage;
    }
    const std::vector<std::string> folders = roots(arguments.paths);
    if (folders.empty() && !tool.isJson()) {
        return ExitCode::problems;
    }
    const ExitCode exit = act(folders, arguments, tool);
    const bool isComplete = folders.size() >= arguments.paths.size();
    return exit == ExitCode::done && !isComplete ? ExitCode::problems : exit;
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
    CLI::Option* clone = command->add_flag(
        "--clone", arguments->clone, "Replace all but the first of each group by clones of it");
    command
        ->add_flag(
            "--trash-extras",
            arguments->trashExtras,
            "Move all but the first of each group to the Trash")
        ->excludes(clone);
    command->add_flag("--yes", arguments->yes, "Don't ask");
    command->footer(
        "A clone shares its bytes on the disk with the other file until one of the two is "
        "changed.\n"
        "It needs a file system that can do that, Btrfs or XFS for example, and one volume.\n"
        "Folders called Library or .Trash are left out, and so are photo libraries and apps.");
}

}  // namespace Brimlo
