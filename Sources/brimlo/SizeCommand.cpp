#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"
#include "brimlo/Commands.h"
#include "brimlo/Console.h"
#include "brimlo/JsonForms.h"

#include <memory>

namespace Brimlo {

namespace {

/// The figures of all items, those inside another left out.
CleanFigures together(const std::vector<SuggestionItem>& items) {
    std::vector<CleanItem> set;
    for (const SuggestionItem& item : items) {
        set.push_back(
            {.path = item.path,
             .size = item.size,
             .ruleID = {},
             .risk = {},
             .shared = item.shared});
    }
    return CleanPlan{set}.figures();
}

ExitCode run(const std::vector<std::string>& paths, const Tool& tool) {
    ExitCode exit = ExitCode::done;
    std::vector<std::string> found;
    for (const std::string& path : paths) {
        std::string meant = meantPath(path);
        if (Platform::FileIdentity::of(meant)) {
            found.push_back(std::move(meant));
        } else {
            complain(path + " does not exist or can't be looked at.");
            exit = ExitCode::problems;
        }
    }
    std::vector<SuggestionItem> items;
    {
        Console::Progress progress;
        progress.show("Measuring…");
        items = SuggestionEngine::size(found);
    }
    if (tool.isJson()) {
        print(JsonForms::items(items));
        return exit;
    }
    for (const SuggestionItem& item : items) {
        Console::line(Console::size(item.size) + "  " + Console::shortPath(item.path));
    }
    const FreedSpace freed = together(items).freed;
    if (const std::string frees = freed.words(); !frees.empty()) {
        Console::line("Removing all of it " + frees + ": " + freed.reason() + ".");
    }
    return exit;
}

}  // namespace

void addSizeCommand(CLI::App& app, Tool& tool) {
    const auto paths = std::make_shared<std::vector<std::string>>();
    CLI::App* command =
        tool.add(app, "size", "Measure the allocated bytes of paths", [paths, &tool] {
            return run(*paths, tool);
        });
    command->group(kLookGroup);
    addPaths(*command, *paths, "Files and folders")->required();
}

}  // namespace Brimlo
