#include "BrimloCore/RulePacks/Coverage.h"
#include "BrimloCore/Support/Text.h"
#include "brimlo/Commands.h"
#include "brimlo/Console.h"
#include "brimlo/JsonForms.h"

#include <cstdio>
#include <memory>

namespace Brimlo {

namespace {

void show(const std::vector<CoverageEntry>& entries) {
    constexpr std::size_t kToolWidth = 28;
    constexpr std::size_t kSupportWidth = 12;
    const std::string* domain = nullptr;
    for (const CoverageEntry& entry : entries) {
        if (domain == nullptr || *domain != entry.domain) {
            Console::line(
                (domain == nullptr ? "" : "\n") + Console::bold(Text::printable(entry.domain)));
        }
        domain = &entry.domain;
        std::string counts = Console::count(entry.ruleCount, "rule");
        if (entry.artifactCount > 0) {
            counts += ", " + Console::count(entry.artifactCount, "project pattern");
        }
        Console::line(
            "  " + Console::left(Text::printable(entry.tool), kToolWidth) +
            Console::left(Coverage::supportWord(entry), kSupportWidth) + counts);
    }
}

ExitCode run(bool asMarkdown, const Tool& tool) {
    if (asMarkdown) {
        // Unchanged, without an additional line end.
        static_cast<void>(std::fputs(Coverage::markdown().c_str(), stdout));
        return ExitCode::done;
    }
    const std::vector<CoverageEntry> entries = Coverage::entries();
    if (!tool.isJson()) {
        show(entries);
        return ExitCode::done;
    }
    Json::Array document;
    for (const CoverageEntry& entry : entries) {
        document.push_back(JsonForms::coverage(entry));
    }
    print(document);
    return ExitCode::done;
}

}  // namespace

void addCoverageCommand(CLI::App& app, Tool& tool) {
    const auto asMarkdown = std::make_shared<bool>(false);
    CLI::App* command = tool.add(
        app, "coverage", "List the tools that the rules know, and how well", [asMarkdown, &tool] {
            return run(*asMarkdown, tool);
        });
    command->group(kLookGroup);
    command->add_flag("--markdown", *asMarkdown, "Print the document docs/coverage.md")
        ->excludes("--json");
}

}  // namespace Brimlo
