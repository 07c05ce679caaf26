#include "BrimloCore/Gate/Safety.h"
#include "brimlo/Commands.h"
#include "brimlo/Console.h"
#include "brimlo/JsonForms.h"

#include <memory>

namespace Brimlo {

namespace {

ExitCode run(const std::vector<std::string>& paths, const Tool& tool) {
    std::vector<Safety::Verdict> verdicts;
    for (const std::string& path : paths) {
        verdicts.push_back(Safety::judge(meantPath(path)));
    }
    ExitCode exit = ExitCode::done;
    Json::Array document;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const auto& [canonical, resolved, identity, refusal] = verdicts[i];
        if (refusal) {
            exit = ExitCode::problems;
        }
        if (tool.isJson()) {
            document.push_back({
                {"path",      JsonForms::path(paths[i])                      },
                {"canonical", JsonForms::path(canonical)                     },
                {"refusal",   refusal ? Json::Value(*refusal) : Json::Value{}},
            });
        } else {
            Console::line(
                (refusal ? "refused  " : "may go   ") + Console::shortPath(canonical) +
                (refusal ? ": " + *refusal : ""));
        }
    }
    if (tool.isJson()) {
        print(document);
    }
    return exit;
}

}  // namespace

void addSafetyCommand(CLI::App& app, Tool& tool) {
    const auto paths = std::make_shared<std::vector<std::string>>();
    CLI::App* command = tool.add(
        app, "safety", "Ask the safety gate whether paths may ever be removed", [paths, &tool] {
            return run(*paths, tool);
        });
    command->group(kLookGroup);
    addPaths(*command, *paths, "Files and folders, existing or not")->required();
    command->footer("Exits with 1 when any of them is refused.");
}

}  // namespace Brimlo
