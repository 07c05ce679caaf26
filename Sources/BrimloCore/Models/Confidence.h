#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace Brimlo {

/// The evidence for a rule, strongest first.
enum class Confidence { verifiedLocal, documented, community, unverified };

inline constexpr std::array kAllConfidences{
    Confidence::verifiedLocal,
    Confidence::documented,
    Confidence::community,
    Confidence::unverified,
};

/// The level's word in JSON, for example "verified-local".
[[nodiscard]] std::string_view rawValue(Confidence confidence);

/// The level's name on the screen.
[[nodiscard]] std::string_view label(Confidence confidence);

/// Whether the evidence is strong enough for preselecting a built-in rule.
[[nodiscard]] bool isSupported(Confidence confidence);

/// The level with exactly this raw value, or nullopt.
[[nodiscard]] std::optional<Confidence> confidenceFromRawValue(std::string_view text);

}  // namespace Brimlo
