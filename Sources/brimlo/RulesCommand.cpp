#include "BrimloCore/DisabledRules/DisabledRules.h"
#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/Platform/SystemPaths.h"
#include "BrimloCore/RulePacks/Catalog.h"
#include "BrimloCore/Support/RuleJson.h"
#include "BrimloCore/Support/Text.h"
#include "BrimloCore/UserRules/UserRules.h"
#include "brimlo/Commands.h"
#include "brimlo/Console.h"

namespace Brimlo {

namespace {

/// A line of the list. "proven" stands for an experiment on this system.
void showRow(std::string_view state, const auto& row) {
    constexpr std::size_t kStateWidth = 5;
    constexpr std::size_t kProofWidth = 6;
    constexpr std::size_t kIDWidth = 36;
    const bool isProven = !ofSystem(row.provenOn, Platform::systemName()).empty();
    Console::line(
        Console::left(state, kStateWidth) + Console::badge(row.risk) + "  " +
        Console::left(isProven ? "proven" : "", kProofWidth) + "  " +
        Console::left(row.id, kIDWidth) + "  " + Text::printable(row.name));
}

/// A rule or project pattern as JSON, with what is known of it on this system.
Json::Object described(const auto& row) {
    Json::Object object = RuleJson::encode(row);
    object.emplace("evidence", Catalog::evidence(row));
    return object;
}

ExitCode list(const Tool& tool) {
    const std::set<std::string> disabled = DisabledRules::load();
    Json::Array rules;
    for (const CleanupRule& rule : Catalog::ofThisSystem(Catalog::rules())) {
        const bool isOff = disabled.contains(rule.id);
        if (tool.isJson()) {
            Json::Object object = described(rule);
            object.emplace("enabled", !isOff);
            rules.push_back(std::move(object));
        } else {
            showRow(isOff ? "off" : "", rule);
        }
    }
    Json::Array artifacts;
    for (const ArtifactPattern& pattern : Catalog::artifactPatterns()) {
        if (tool.isJson()) {
            artifacts.push_back(described(pattern));
        } else {
            showRow("", pattern);
        }
    }
    std::vector<std::string> issues = Catalog::packIssues();
    const std::vector<std::string> userIssues = Catalog::userRuleIssues();
    issues.insert(issues.end(), userIssues.begin(), userIssues.end());
    for (const std::string& issue : issues) {
        complain(issue);
    }
    if (tool.isJson()) {
        print(Json::Object{
            {"rules",     std::move(rules)        },
            {"artifacts", std::move(artifacts)    },
            {"issues",    RuleJson::encode(issues)},
        });
    }
    return issues.empty() ? ExitCode::done : ExitCode::problems;
}

/// The rule or project pattern of this id as JSON, or nullopt.
std::optional<Json::Object> find(const std::string& id) {
    const std::vector<CleanupRule> rules = Catalog::rules();
    const auto rule = std::ranges::find(rules, id, &CleanupRule::id);
    if (rule != rules.end()) {
        return described(*rule);
    }
    const std::vector<ArtifactPattern>& patterns = Catalog::artifactPatterns();
    const auto pattern = std::ranges::find(patterns, id, &ArtifactPattern::id);
    return pattern == patterns.end() ? std::nullopt : std::optional{described(*pattern)};
}

ExitCode unknown(const std::string& id) {
    complain("No rule is called \"" + id + "\".");
    return ExitCode::wrongUsage;
}

ExitCode show(const std::string& id, const Tool& tool) {
    std::optional<Json::Object> rule = find(id);
    if (!rule) {
        return unknown(id);
    }
    if (tool.isJson()) {
        print(*rule);
        return ExitCode::done;
    }
    rule->erase("provenOn");  // The sentence of the evidence tells it.
    constexpr std::size_t kKeyWidth = 18;
    for (const auto& [key, value] : *rule) {
        if (const Json::Array* texts = value.if_array()) {
            std::string_view shown = key;
            for (const Json::Value& text : *texts) {
                Console::line(Console::left(shown, kKeyWidth) + Text::printable(text.as_string()));
                shown = "";
            }
        } else {
            const Json::String* text = value.if_string();
            Console::line(
                Console::left(key, kKeyWidth) +
                (text != nullptr ? Text::printable(*text) : Json::compact(value)));
        }
    }
    return ExitCode::done;
}

/// Also accepts the id of a rule that no longer exists, to switch it on again.
ExitCode setDisabled(const std::string& id, bool disabled, const Tool& tool) {
    if (!find(id) && !DisabledRules::isDisabled(id)) {
        return unknown(id);
    }
    if (const auto set = DisabledRules::set(id, disabled); !set) {
        complain(set.error().description);
        return ExitCode::problems;
    }
    if (tool.isJson()) {
        print(Json::Object{
            {"id",      id       },
            {"enabled", !disabled}
        });
    } else {
        Console::line(id + (disabled ? " is off." : " is on."));
    }
    return ExitCode::done;
}

ExitCode remove(const std::string& id, const Tool& tool) {
    const std::string directory = UserRules::defaultDirectory();
    if (!UserRules::isCustom(id)) {
        complain("\"" + id + "\" is not one of your rules: they begin with \"custom.\".");
        return ExitCode::wrongUsage;
    }
    if (!Platform::FileIdentity::of(directory + "/" + id + ".json")) {
        return unknown(id);
    }
    if (const auto removed = UserRules::remove(id, directory); !removed) {
        complain(
            "The rule \"" + id + "\" could not be deleted: " + removed.error().description + ".");
        return ExitCode::problems;
    }
    if (tool.isJson()) {
        print(Json::Object{
            {"id", id}
        });
    } else {
        Console::line("Deleted " + id + ".");
    }
    return ExitCode::done;
}

}  // namespace

void addRulesCommand(CLI::App& app, Tool& tool) {
    CLI::App* rules =
        app.add_subcommand("rules", "Look at the rules, try and share your own, switch them");
    rules->group(kSetUpGroup);
    rules->require_subcommand(1);
    tool.add(*rules, "list", "List the rules of this system and all project patterns", [&tool] {
        return list(tool);
    });
    tool.addTaking("ID", *rules, "show", "Show one rule or project pattern", show);
    addRuleFileCommands(*rules, tool);
    tool.addTaking(
        "ID", *rules, "enable", "Switch a rule on", [](const std::string& id, const Tool& used) {
            return setDisabled(id, false, used);
        });
    tool.addTaking(
        "ID", *rules, "disable", "Switch a rule off", [](const std::string& id, const Tool& used) {
            return setDisabled(id, true, used);
        });
    tool.addTaking("ID", *rules, "delete", "Delete a rule of your own for good", remove);
}

}  // namespace Brimlo
