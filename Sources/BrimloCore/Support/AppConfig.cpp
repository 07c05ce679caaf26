#include "BrimloCore/Support/AppConfig.h"

#include "BrimloCore/Support/AtomicFile.h"
#include "BrimloCore/Support/Json.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <cerrno>
#include <cstddef>
#include <expected>
#include <string_view>

namespace Brimlo {

namespace {

constexpr std::size_t kLongestFile = std::size_t{1} << 20U;

std::string defaultPath() {
    return StoragePaths::support() + "/config.json";
}

std::expected<AppConfig, std::string> decode(std::string_view text) {
    const auto document = Json::parse(text);
    if (!document) {
        return std::unexpected(document.error());
    }
    const AppConfig defaults;
    Json::FieldReader reader{*document};
    const auto number = [&](std::string_view key, std::int64_t fallback) {
        return reader.optionalNumber(key).value_or(fallback);
    };
    const AppConfig config{
        .autoCleanEnabled = reader.flagOr("autoCleanEnabled", defaults.autoCleanEnabled),
        .freeSpaceThresholdGB = number("freeSpaceThresholdGB", defaults.freeSpaceThresholdGB),
        .staleDays = number("staleDays", defaults.staleDays),
        .trashRetentionDays = number("trashRetentionDays", defaults.trashRetentionDays),
        .autoCleanIncludesCustomRules =
            reader.flagOr("autoCleanIncludesCustomRules", defaults.autoCleanIncludesCustomRules),
        .cliInstallOffered = reader.flagOr("cliInstallOffered", defaults.cliInstallOffered),
    };
    if (reader.error()) {
        return std::unexpected(*reader.error());
    }
    return config;
}

}  // namespace

AppConfig AppConfig::load(const std::optional<std::string>& path) {
    return read(path).value_or(AppConfig{});
}

std::expected<AppConfig, Error> AppConfig::read(const std::optional<std::string>& path) {
    const std::string file = path ? *path : defaultPath();
    const auto text = readFile(file, kLongestFile, Owner::trusted);
    if (!text) {
        if (text.error().code == EFBIG) {
            preserveCorrupt(file);
        }
        const bool isThere = text.error().code != EFBIG && text.error().code != ENOENT;
        return isThere ? std::expected<AppConfig, Error>{std::unexpected(text.error())}
                       : AppConfig{};
    }
    const auto config = decode(*text);
    if (!config) {
        preserveCorrupt(file);
    }
    return config.value_or(AppConfig{});
}

void AppConfig::save(const std::optional<std::string>& path) const {
    const Json::Object object{
        {"autoCleanEnabled",             autoCleanEnabled            },
        {"freeSpaceThresholdGB",         freeSpaceThresholdGB        },
        {"staleDays",                    staleDays                   },
        {"trashRetentionDays",           trashRetentionDays          },
        {"autoCleanIncludesCustomRules", autoCleanIncludesCustomRules},
        {"cliInstallOffered",            cliInstallOffered           },
    };
    // Settings that are there and can't be read are not overwritten.
    if (read(path)) {
        static_cast<void>(AtomicFile::write(path ? *path : defaultPath(), Json::pretty(object)));
    }
}

}  // namespace Brimlo
