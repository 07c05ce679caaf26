#pragma once

#include "BrimloCore/Platform/FileIdentity.h"

#include <array>
#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace Brimlo {

/// An extra that was compared with the equal file that stays, so that it can go without loss.
class ComparedCopy {
public:
    /// Compares all bytes. Fails with the reason, a lower-case phrase, when the two differ, are one
    /// file, or can't be read, and when `isStopped`, which may be empty, says so. Blocks.
    [[nodiscard]] static std::expected<ComparedCopy, std::string> of(
        const std::string& extra,
        const std::string& staying,
        const std::function<bool()>& isStopped);

    /// Why the comparison no longer counts: one of the paths leads to another file by now, or to
    /// one that was changed. Cheap.
    [[nodiscard]] std::optional<std::string> refusal() const;

private:
    struct File {
        std::string path;
        Platform::FileVersion version;
    };

    explicit ComparedCopy(std::array<File, 2> files)
        : files_{std::move(files)} {}

    std::array<File, 2> files_;  ///< The extra, and the one that stays.
};

}  // namespace Brimlo
