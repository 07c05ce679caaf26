#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace Brimlo {

/// How an item is disposed of. There is one way, and none that deletes for good.
enum class DisposalMode { trash };

inline constexpr std::array kAllDisposalModes{DisposalMode::trash};

/// The word that stands for the mode: "trash".
[[nodiscard]] constexpr std::string_view rawValue(DisposalMode) {
    return "trash";
}

/// The mode's name for the screen.
[[nodiscard]] constexpr std::string_view label(DisposalMode) {
    return "Move to Trash";
}

/// The mode with exactly this raw value, or nullopt.
[[nodiscard]] constexpr std::optional<DisposalMode> disposalModeFromRawValue(
    std::string_view text) {
    return text == rawValue(DisposalMode::trash) ? std::optional{DisposalMode::trash}
                                                 : std::nullopt;
}

}  // namespace Brimlo
