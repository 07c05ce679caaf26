#include "BrimloCore/Support/AppConfig.h"

#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/Json.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <string_view>
#include <utility>

namespace Brimlo {

namespace {

constexpr std::size_t kLongestFile = std::size_t{1} << 20U;

/// The code of the error for a settings file that can't be understood.
constexpr int kDamagedCode = 12;

struct Number {
    std::string_view key;
    std::int64_t AppConfig::* field;
    AppConfig::Limits limits;
};

// A petabyte and a hundred years: larger numbers are typing errors, and could overflow.
constexpr std::array kNumbers{
    Number{"freeSpaceThresholdGB", &AppConfig::freeSpaceThresholdGB, {0, 1'000'000}},
    Number{"staleDays",            &AppConfig::staleDays,            {0, 36'500}   },
    Number{"trashRetentionDays",   &AppConfig::trashRetentionDays,   {0, 36'500}   },
};

std::string defaultPath() {
    return StoragePaths::support() + "/config.json";
}

/// The first number beyond its limits, in words; nullopt when all are within.
std::optional<std::string> excess(const AppConfig& config) {
    for (const auto& [key, field, limits] : kNumbers) {
        if (!limits.allow(config.*field)) {
            return std::string{key} + " is " + std::to_string(config.*field) + ", not from " +
                   std::to_string(limits.least) + " to " + std::to_string(limits.most);
        }
    }
    return std::nullopt;
}

std::expected<AppConfig, std::string> decode(std::string_view text) {
    const auto document = Json::parse(text);
    if (!document) {
        return std::unexpected(document.error());
    }
    AppConfig config;
    Json::FieldReader reader{*document};
    for (const Number& number : kNumbers) {
        config.*number.field = reader.optionalNumber(number.key).value_or(config.*number.field);
    }
    config.autoCleanEnabled = reader.flagOr("autoCleanEnabled", config.autoCleanEnabled);
    config.autoCleanIncludesCustomRules =
        reader.flagOr("autoCleanIncludesCustomRules", config.autoCleanIncludesCustomRules);
    config.cliInstallOffered = reader.flagOr("cliInstallOffered", config.cliInstallOffered);
    config.rememberScans = reader.flagOr("rememberScans", config.rememberScans);
    if (const auto fault = reader.error() ? reader.error() : excess(config)) {
        return std::unexpected(*fault);
    }
    return config;
}

std::unexpected<Error> failure(std::string_view what, Error error) {
    error.description = std::string{what} + ": " + error.description;
    return std::unexpected(std::move(error));
}

std::unexpected<Error> damaged(const std::string& path, std::string words) {
    preserveCorrupt(path);
    return failure(
        "The settings could not be read", {kErrorDomain, kDamagedCode, std::move(words)});
}

std::expected<void, Error> write(const AppConfig& config, const std::string& path) {
    if (auto words = excess(config)) {
        return std::unexpected(Error{kErrorDomain, kDamagedCode, *std::move(words)});
    }
    const Json::Object object{
        {"autoCleanEnabled",             config.autoCleanEnabled            },
        {"freeSpaceThresholdGB",         config.freeSpaceThresholdGB        },
        {"staleDays",                    config.staleDays                   },
        {"trashRetentionDays",           config.trashRetentionDays          },
        {"autoCleanIncludesCustomRules", config.autoCleanIncludesCustomRules},
        {"cliInstallOffered",            config.cliInstallOffered           },
        {"rememberScans",                config.rememberScans               },
    };
    return AtomicFile::write(path, Json::pretty(object));
}

}  // namespace

AppConfig::Limits AppConfig::limits(std::int64_t AppConfig::* number) {
    return std::ranges::find(kNumbers, number, &Number::field)->limits;
}

AppConfig AppConfig::load(const std::optional<std::string>& path) {
    return read(path).value_or(AppConfig{});
}

std::expected<AppConfig, Error> AppConfig::read(const std::optional<std::string>& path) {
    const std::string file = path ? *path : defaultPath();
    const auto text = readFile(file, kLongestFile, Owner::trusted);
    if (!text && text.error().code == ENOENT) {
        return AppConfig{};
    }
    if (!text && text.error().code == EFBIG) {
        return damaged(file, text.error().description);
    }
    if (!text) {
        return failure("The settings could not be read", text.error());
    }
    const auto config = decode(*text);
    return config ? std::expected<AppConfig, Error>{*config} : damaged(file, config.error());
}

std::expected<AppConfig, Error> AppConfig::change(
    const std::function<void(AppConfig&)>& body, const std::optional<std::string>& path) {
    const std::string file = path ? *path : defaultPath();
    const FileLock held{file};
    auto config = read(file);
    if (!config && config.error().domain != kErrorDomain) {
        return config;  // Saving would overwrite the settings that can't be read.
    }
    AppConfig changed = config.value_or(AppConfig{});
    body(changed);
    if (auto written = write(changed, file); !written) {
        return failure("The setting could not be saved", std::move(written.error()));
    }
    return changed;
}

}  // namespace Brimlo
