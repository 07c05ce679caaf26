#pragma once

#include "BrimloCore/Models/Error.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>

namespace Brimlo {

/// The settings that persist, one JSON object in "config.json".
struct AppConfig {
    bool autoCleanEnabled = false;           ///< Auto-clean may run unattended.
    std::int64_t freeSpaceThresholdGB = 30;  ///< It cleans at or below so many decimal gigabytes.
    std::int64_t staleDays = 90;             ///< Idle days after which a project counts as stale.
    std::int64_t trashRetentionDays = 7;     ///< Days before own items are purged from the Trash.
    bool autoCleanIncludesCustomRules = false;  ///< Auto-clean may act on "custom." rules.
    bool cliInstallOffered = false;             ///< The command line tool has been offered once.

    bool operator==(const AppConfig&) const = default;

    /// The settings in a file, by default the one in the support folder.
    ///
    /// A missing file or key gives the defaults. A file that can't be understood gives the
    /// defaults too and is copied to the same name plus ".corrupt".
    [[nodiscard]] static AppConfig load(const std::optional<std::string>& path = std::nullopt);

    /// `load` for one who means to change a setting and keep the others: fails when a file is there
    /// that can't be read, or that somebody else has put there.
    [[nodiscard]] static std::expected<AppConfig, Error> read(
        const std::optional<std::string>& path = std::nullopt);

    /// Writes all settings, in one step, by default to the support folder, but not over a file that
    /// `read` fails for. A failure is not reported.
    void save(const std::optional<std::string>& path = std::nullopt) const;
};

}  // namespace Brimlo
