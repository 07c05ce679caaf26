#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"
#include "BrimloCore/Support/RuleJson.h"
#include "BrimloCore/Support/Text.h"
#include "BrimloCore/UserRules/RuleFile.h"
#include "BrimloCore/UserRules/UserRules.h"
#include "brimlo/Commands.h"
#include "brimlo/Console.h"
#include "brimlo/JsonForms.h"

#include <cerrno>
#include <cstdio>
#include <memory>

namespace Brimlo {

namespace {

ExitCode preview(const std::string& file, const Tool& tool) {
    const auto elements = UserRules::readRules(file);
    if (!elements) {
        complain(file + ": " + elements.error());
        return ExitCode::problems;
    }
    ExitCode exit = ExitCode::done;
    Json::Array document;
    for (std::size_t position = 0; position < elements->size(); ++position) {
        const Lossy<CleanupRule>& element = (*elements)[position];
        if (!element.value) {
            complain("rule #" + std::to_string(position) + ": " + *element.error);
            exit = ExitCode::problems;
            continue;
        }
        const std::vector<SuggestionItem> items = SuggestionEngine::preview(*element.value);
        if (tool.isJson()) {
            document.push_back({
                {"id",    element.value->id      },
                {"items", JsonForms::items(items)}
            });
            continue;
        }
        Console::line(
            Console::bold(element.value->id) + " matches " + Console::count(items.size(), "item"));
        for (const SuggestionItem& item : items) {
            Console::line(Console::size(item.size) + "  " + Console::shortPath(item.path));
        }
    }
    if (tool.isJson()) {
        print(document);
    }
    return exit;
}

ExitCode validate(const std::string& file, const Tool& tool) {
    const auto verdicts = UserRules::validateFile(file);
    if (!verdicts) {
        complain(file + ": " + verdicts.error());
        return ExitCode::problems;
    }
    ExitCode exit = ExitCode::done;
    Json::Array document;
    for (const auto& [id, verdict] : *verdicts) {
        if (!verdict.isValid()) {
            exit = ExitCode::problems;
        }
        if (tool.isJson()) {
            Json::Object object{
                {"id", id}
            };
            for (auto& [key, value] : JsonForms::validation(verdict)) {
                object.emplace(key, value);
            }
            document.push_back(std::move(object));
            continue;
        }
        Console::line(Console::bold(id) + (verdict.isValid() ? " is valid" : " is not valid"));
        for (const std::string& error : verdict.errors) {
            Console::line("  error    " + Text::printable(error));
        }
        for (const std::string& warning : verdict.warnings) {
            Console::line("  warning  " + Text::printable(warning));
        }
    }
    if (tool.isJson()) {
        print(document);
    }
    return exit;
}

ExitCode importRules(const std::string& file, const Tool& tool) {
    const auto outcome = UserRules::importPack(file, false, UserRules::defaultDirectory());
    if (!outcome) {
        complain("The import of " + file + " failed: " + outcome.error().description);
        return ExitCode::problems;
    }
    if (tool.isJson()) {
        print(Json::Object{
            {"imported", RuleJson::encode(outcome->imported)},
            {"rejected", RuleJson::encode(outcome->rejected)},
        });
    } else {
        for (const std::string& id : outcome->imported) {
            Console::line("imported  " + Text::printable(id));
        }
        for (const std::string& text : outcome->rejected) {
            Console::line("rejected  " + Text::printable(text));
        }
        Console::line("Imported " + Console::count(outcome->imported.size(), "rule") + ".");
    }
    return outcome->rejected.empty() ? ExitCode::done : ExitCode::problems;
}

/// The destination of an export.
struct Export {
    std::optional<std::string> file;  ///< Standard output when absent.
    bool force = false;
};

ExitCode exportRules(const Export& to, const Tool& tool) {
    const auto [rules, issues] = UserRules::load(UserRules::defaultDirectory());
    for (const std::string& issue : issues) {
        complain(issue);
    }
    const ExitCode exit = issues.empty() ? ExitCode::done : ExitCode::problems;
    if (!to.file) {
        const auto text = UserRules::exportJSON(rules);
        if (!text) {
            complain("The export failed: " + text.error().description);
            return ExitCode::problems;
        }
        static_cast<void>(std::fputs(text->c_str(), stdout));
        return exit;
    }
    const auto existing = to.force ? UserRules::Existing::replace : UserRules::Existing::keep;
    if (const auto done = UserRules::exportTo(*to.file, rules, existing); !done) {
        const bool isTaken = done.error() == Error::fromSystem(EEXIST);
        complain(
            "The export to " + *to.file + " failed: " + done.error().description +
            (isTaken ? "; --force replaces it" : ""));
        return ExitCode::problems;
    }
    if (tool.isJson()) {
        print(Json::Object{
            {"path",  JsonForms::path(*to.file)},
            {"rules", rules.size()             },
        });
    } else {
        Console::line("Exported " + Console::count(rules.size(), "rule") + ".");
    }
    return exit;
}

}  // namespace

void addRuleFileCommands(CLI::App& rules, Tool& tool) {
    tool.addTaking(
        "FILE", rules, "preview", "Show what the rules of a file would match now", preview);
    tool.addTaking("FILE", rules, "validate", "Judge the rules of a file", validate);
    tool.addTaking(
        "FILE", rules, "import", "Take the valid rules of a file in as your own", importRules);
    const auto to = std::make_shared<Export>();
    CLI::App* command = tool.add(rules, "export", "Write your own rules as one file", [to, &tool] {
        return exportRules(*to, tool);
    });
    CLI::Option* file = command->add_option("file", to->file, "The file (default: standard output)")
                            ->type_name("FILE");
    command->add_flag("--force", to->force, "Replace a file that is there")->needs(file);
}

}  // namespace Brimlo
