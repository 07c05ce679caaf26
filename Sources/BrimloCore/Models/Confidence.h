#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace Brimlo {

/// How well a rule is evidenced, the strongest first.
enum class Confidence { verifiedLocal, documented, community, unverified };

inline constexpr std::array kAllConfidences{
    Confidence::verifiedLocal,
    Confidence::documented,
    Confidence::community,
    Confidence::unverified,
};

/// The word that stands for the level in JSON, for example "verified-local".
[[nodiscard]] std::string_view rawValue(Confidence confidence);

/// The level in words for the screen.
[[nodiscard]] std::string_view label(Confidence confidence);

/// Whether the evidence is strong enough for a built-in rule to be preselected.
[[nodiscard]] bool isSupported(Confidence confidence);

/// The level with exactly this raw value, or nullopt.
[[nodiscard]] std::optional<Confidence> confidenceFromRawValue(std::string_view text);

}  // namespace Brimlo
