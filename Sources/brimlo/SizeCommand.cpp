#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/SuggestionEngine/RuleTargets.h"
#include "BrimloCore/Support/Fmt.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "brimlo/Console.h"
#include "brimlo/JsonForms.h"
#include "brimlo/Tool.h"

#include <memory>

namespace Brimlo {

namespace {

ExitCode run(const std::vector<std::string>& paths, const Tool& tool) {
    ExitCode exit = ExitCode::done;
    std::vector<SuggestionItem> items;
    for (const std::string& path : paths) {
        const std::string expanded = StoragePaths::expandTilde(path);
        if (Platform::FileIdentity::of(expanded)) {
            items.push_back({.path = expanded});
        } else {
            complain(path + " does not exist or can't be looked at.");
            exit = ExitCode::problems;
        }
    }
    {
        Console::Progress progress;
        progress.show("Measuring…");
        items = SuggestionEngine::size(std::move(items));
    }
    Json::Array document;
    constexpr std::size_t kSizeWidth = 10;
    for (const SuggestionItem& item : items) {
        if (tool.isJson()) {
            document.push_back({
                {"path", JsonForms::path(item.path)},
                {"size", item.size                 }
            });
        } else {
            Console::line(
                Console::right(Fmt::bytes(item.size), kSizeWidth) + "  " +
                Console::shortPath(item.path));
        }
    }
    if (tool.isJson()) {
        print(document);
    }
    return exit;
}

}  // namespace

void addSizeCommand(CLI::App& app, Tool& tool) {
    const auto paths = std::make_shared<std::vector<std::string>>();
    CLI::App* command =
        tool.add(app, "size", "Measure how many bytes of the disk paths take", [paths, &tool] {
            return run(*paths, tool);
        });
    command->group(kLookGroup);
    command->add_option("paths", *paths, "Files and folders")->required()->type_name("PATH");
}

}  // namespace Brimlo
