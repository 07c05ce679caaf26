#include "BrimloCore/Shell/CoverageChecker.h"
#include "BrimloCore/Support/RuleJson.h"
#include "BrimloCore/Support/Text.h"
#include "brimlo/Commands.h"
#include "brimlo/Console.h"
#include "brimlo/JsonForms.h"

#include <memory>

namespace Brimlo {

namespace {

void show(
    const std::string& path,
    const std::vector<std::string>& covered,
    const std::vector<std::string>& warnings) {
    Console::line(Console::shortPath(path));
    for (const std::string& sentence : covered) {
        Console::line("  covered  " + Text::printable(sentence));
    }
    if (covered.empty()) {
        Console::line("  no backup of it is known");
    }
    for (const std::string& warning : warnings) {
        Console::line("  warning  " + Text::printable(warning));
    }
}

ExitCode run(const std::vector<std::string>& paths, const Tool& tool) {
    Json::Array document;
    for (const std::string& written : paths) {
        const std::string path = meantPath(written);
        const std::vector<std::string> covered = CoverageChecker::covered(path);
        const std::vector<std::string> warnings = CoverageChecker::warnings(path);
        if (!tool.isJson()) {
            show(path, covered, warnings);
            continue;
        }
        document.push_back({
            {"path",     JsonForms::path(written)  },
            {"covered",  RuleJson::encode(covered) },
            {"warnings", RuleJson::encode(warnings)},
        });
    }
    if (tool.isJson()) {
        print(document);
    }
    return ExitCode::done;
}

}  // namespace

void addBackupCommand(CLI::App& app, Tool& tool) {
    const auto paths = std::make_shared<std::vector<std::string>>();
    CLI::App* command =
        tool.add(app, "backup", "Tell whether paths are backed up elsewhere", [paths, &tool] {
            return run(*paths, tool);
        });
    command->group(kLookGroup);
    addPaths(*command, *paths, "Files and folders")->required();
    command->footer(
        "Asks the git repository that a path lies in and, on macOS, Time Machine. Nothing is\n"
        "claimed that is not certain, and nothing is fetched.");
}

}  // namespace Brimlo
