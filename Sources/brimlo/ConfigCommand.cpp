#include "BrimloCore/Support/AppConfig.h"
#include "brimlo/Commands.h"
#include "brimlo/Console.h"

#include <array>
#include <charconv>
#include <memory>
#include <optional>
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

constexpr std::array<Setting, 6> kSettings{
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
     }
};

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
    }
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
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* command = tool.add(app, "config", "Show or change the settings", [arguments, &tool] {
        return run(arguments->key, arguments->value, tool);
    });
    command->group(kSetUpGroup);
    command->add_option("key", arguments->key, "One setting")->type_name("KEY");
    command->add_option("value", arguments->value, "Its new value")->type_name("VALUE");
    command->footer("Example: brimlo config stale-days 60");
}

}  // namespace Brimlo
