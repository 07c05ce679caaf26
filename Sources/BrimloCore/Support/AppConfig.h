#pragma once

#include "BrimloCore/Models/Error.h"

#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <string>

namespace Brimlo {

/// The settings that persist, one JSON object in "config.json".
struct AppConfig {
    bool autoCleanEnabled = false;           ///< Auto-clean may run unattended.
    std::int64_t freeSpaceThresholdGB = 30;  ///< Auto-clean threshold, in decimal gigabytes.
    std::int64_t staleDays = 90;             ///< Idle days after which a project counts as stale.
    std::int64_t trashRetentionDays = 7;     ///< Days before own items are purged from the Trash.
    bool autoCleanIncludesCustomRules = false;  ///< Auto-clean may act on the user's own rules.
    bool cliInstallOffered = false;             ///< The command line tool has been offered once.
    bool rememberScans = true;  ///< A finished scan leaves a record (`ScanHistory`).

    bool operator==(const AppConfig&) const = default;

    /// The lowest and the highest value of a setting.
    struct Limits {
        std::int64_t least;
        std::int64_t most;

        [[nodiscard]] bool allow(std::int64_t value) const {
            return value >= least && value <= most;
        }
    };

    /// The limits of one of the numbers above. No other value is read, set or saved.
    [[nodiscard]] static Limits limits(std::int64_t AppConfig::* number);

    /// The settings in a file, by default the one in the support folder; the defaults when `read`
    /// fails.
    [[nodiscard]] static AppConfig load(const std::optional<std::string>& path = std::nullopt);

    /// The settings in a file; a missing file or key gives the defaults.
    ///
    /// Fails, with a sentence without its period, when there is a file that can't be read, belongs
    /// to somebody else, or can't be understood: not JSON, a value of the wrong type or beyond its
    /// limits. In the last case it is copied to the same name plus ".corrupt".
    [[nodiscard]] static std::expected<AppConfig, Error> read(
        const std::optional<std::string>& path = std::nullopt);

    /// Reads the settings, lets `body` change them and writes them in one step, under the file's
    /// lock. Returns the file's content afterwards.
    ///
    /// Starts with the defaults when the file can't be understood. Fails, with a sentence without
    /// its period, and leaves the file as it is, when it can't be read or written, or when a number
    /// is beyond its limits.
    [[nodiscard]] static std::expected<AppConfig, Error> change(
        const std::function<void(AppConfig&)>& body,
        const std::optional<std::string>& path = std::nullopt);
};

}  // namespace Brimlo
