#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/LeftAlone/LeftAlone.h"
#include "BrimloCore/Support/AppConfig.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/Text.h"
#include "brimlo/Commands.h"
#include "brimlo/Console.h"

#include <array>
#include <charconv>
#include <expected>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <system_error>
#include <variant>

namespace Brimlo {

namespace {

struct Setting {
    std::string_view key;
    std::string_view jsonKey;
    std::variant<bool AppConfig::*, std::int64_t AppConfig::*> field;
    std::string_view meaning;
};

constexpr std::array<Setting, 7> kSettings{
    {
     {"auto-clean-enabled",
         "autoCleanEnabled",
         &AppConfig::autoCleanEnabled,
         "auto-clean may run unattended"},
     {"free-space-threshold-gb",
         "freeSpaceThresholdGB",
         &AppConfig::freeSpaceThresholdGB,
         "it cleans at or below so many GB free where your home is"},
     {"stale-days",
         "staleDays",
         &AppConfig::staleDays,
         "idle days after which a project counts as stale"},
     {"trash-retention-days",
         "trashRetentionDays",
         &AppConfig::trashRetentionDays,
         "days before own items are purged from the Trash"},
     {"auto-clean-includes-custom-rules",
         "autoCleanIncludesCustomRules",
         &AppConfig::autoCleanIncludesCustomRules,
         "auto-clean may act on your own rules"},
     {"cli-install-offered",
         "cliInstallOffered",
         &AppConfig::cliInstallOffered,
         "this tool has been offered once"},
     {"remember-scans",
         "rememberScans",
         &AppConfig::rememberScans,
         "a finished scan leaves a record to compare with later"},
     }
};

/// The list of what is never suggested, as the command line calls it.
constexpr std::string_view kLeftAlone = "left-alone";

Json::Value value(const AppConfig& config, const Setting& setting) {
    return std::visit([&](auto field) { return Json::Value(config.*field); }, setting.field);
}

/// Sets a field from a command line argument; false if that is no valid value.
bool assign(bool& field, std::string_view text) {
    field = text == "true";
    return text == "true" || text == "false";
}

bool assign(std::int64_t& field, std::string_view text) {
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, field);
    return error == std::errc{} && stop == end;
}

bool assign(AppConfig& config, const Setting& setting, std::string_view text) {
    const bool isValue =
        std::visit([&](auto field) { return assign(config.*field, text); }, setting.field);
    const auto* number = std::get_if<std::int64_t AppConfig::*>(&setting.field);
    return isValue && (number == nullptr || AppConfig::limits(*number).allow(config.**number));
}

std::string expected(const Setting& setting) {
    const auto* number = std::get_if<std::int64_t AppConfig::*>(&setting.field);
    if (number == nullptr) {
        return "true or false";
    }
    const auto [least, most] = AppConfig::limits(*number);
    return "a whole number from " + std::to_string(least) + " to " + std::to_string(most);
}

void showAll(const AppConfig& config, const Tool& tool) {
    constexpr std::size_t kKeyWidth = 34;
    constexpr std::size_t kValueWidth = 7;
    Json::Object document;
    for (const Setting& setting : kSettings) {
        document.emplace(setting.jsonKey, value(config, setting));
        if (!tool.isJson()) {
            Console::line(
                Console::left(setting.key, kKeyWidth) +
                Console::left(Json::compact(value(config, setting)), kValueWidth) +
                Console::dim(setting.meaning));
        }
    }
    if (tool.isJson()) {
        print(document);
        return;
    }
    const auto list = LeftAlone::load();
    Console::line(
        Console::left(kLeftAlone, kKeyWidth) +
        Console::left(
            list ? std::to_string(list->paths.size() + list->rules.size()) : "?", kValueWidth) +
        Console::dim("paths and rules that are never suggested"));
}

void show(const AppConfig& config, const Setting* only, const Tool& tool) {
    if (only == nullptr) {
        showAll(config, tool);
    } else if (tool.isJson()) {
        print(Json::Object{
            {only->jsonKey, value(config, *only)}
        });
    } else {
        Console::line(Json::compact(value(config, *only)));
    }
}

Json::Object encoded(const LeftAlone& list) {
    return {
        {"paths", Json::Array(list.paths.begin(), list.paths.end())},
        {"rules", Json::Array(list.rules.begin(), list.rules.end())},
    };
}

void show(const LeftAlone& list, const Tool& tool) {
    if (tool.isJson()) {
        print(encoded(list));
        return;
    }
    for (const std::string& path : list.paths) {
        Console::line(Text::printable(path));
    }
    for (const std::string& id : list.rules) {
        Console::line("rule " + Text::printable(id));
    }
    if (list == LeftAlone{}) {
        Console::line("Nothing is left alone.");
    }
}

/// Prints the list, or why there is none.
ExitCode show(const std::expected<LeftAlone, Error>& list, const Tool& tool) {
    if (!list) {
        complain(list.error().description + ".");
        return ExitCode::problems;
    }
    show(*list, tool);
    return ExitCode::done;
}

/// Adds a name to the list or takes it out: a path, Docker's object, or else the id of a rule.
ExitCode setLeftAlone(const std::string& name, bool isLeftAlone, const Tool& tool) {
    const bool isPath = name.contains('/') || name.starts_with('~') || isPseudoPath(name);
    const auto meant = isPath && !isPseudoPath(name) ? Path::typed(name) : name;
    if (!meant) {
        complain(meant.error().description);
        return ExitCode::wrongUsage;
    }
    const auto change = [&](LeftAlone& list) {
        std::set<std::string>& names = isPath ? list.paths : list.rules;
        if (isLeftAlone) {
            names.insert(*meant);
        } else {
            names.erase(*meant);
        }
    };
    return show(LeftAlone::change(change), tool);
}

ExitCode run(const std::string& key, const std::optional<std::string>& text, const Tool& tool) {
    const auto* setting = std::ranges::find(kSettings, key, &Setting::key);
    if (!key.empty() && setting == kSettings.end()) {
        complain("There is no setting \"" + key + "\"; \"brimlo config\" lists them.");
        return ExitCode::wrongUsage;
    }
    if (AppConfig tried; text && !assign(tried, *setting, *text)) {
        complain(
            std::string{setting->key} + " takes " + expected(*setting) + ", not \"" + *text +
            "\".");
        return ExitCode::wrongUsage;
    }
    const auto config =
        text ? AppConfig::change([&](AppConfig& all) { assign(all, *setting, *text); })
             : AppConfig::read();
    if (!config) {
        complain(config.error().description + (text ? "" : "; these are the defaults"));
    }
    if (!config && text) {
        return ExitCode::problems;
    }
    show(config.value_or(AppConfig{}), key.empty() ? nullptr : setting, tool);
    return config ? ExitCode::done : ExitCode::problems;
}

}  // namespace

void addConfigCommand(CLI::App& app, Tool& tool) {
    struct Arguments {
        std::string key;
        std::optional<std::string> value;
        std::string neverSuggest;
        std::string suggestAgain;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* command = tool.add(app, "config", "Show or change the settings", [arguments, &tool] {
        if (const bool isLeftAlone = !arguments->neverSuggest.empty();
            isLeftAlone || !arguments->suggestAgain.empty()) {
            return setLeftAlone(
                isLeftAlone ? arguments->neverSuggest : arguments->suggestAgain, isLeftAlone, tool);
        }
        if (arguments->key == kLeftAlone && !arguments->value) {
            return show(LeftAlone::load(), tool);
        }
        return run(arguments->key, arguments->value, tool);
    });
    command->group(kSetUpGroup);
    CLI::Option* key = command->add_option("key", arguments->key, "One setting")->type_name("KEY");
    command->add_option("value", arguments->value, "Its new value")->type_name("VALUE");
    CLI::Option* never = command->add_option(
        "--never-suggest", arguments->neverSuggest, "Leave this path or rule alone from now on");
    CLI::Option* again = command->add_option(
        "--suggest-again", arguments->suggestAgain, "Suggest this path or rule again");
    never->type_name("NAME")->excludes(again)->excludes(key);
    again->type_name("NAME")->excludes(key);
    command->footer(
        "\"brimlo config left-alone\" lists what is never suggested.\n"
        "Example: brimlo config stale-days 60");
}

}  // namespace Brimlo
