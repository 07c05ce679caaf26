#pragma once

#include <array>
#include <string_view>

namespace Brimlo {

/// How risky it is to remove a finding; lower is safer.
enum class Risk { safe = 0, rebuild = 1, review = 2 };

inline constexpr std::array kAllRisks{Risk::safe, Risk::rebuild, Risk::review};

/// The rating's word in JSON: "safe", "rebuild" or "review".
[[nodiscard]] std::string_view rawValue(Risk risk);

/// A short label for badges and tables.
[[nodiscard]] std::string_view label(Risk risk);

/// A sentence that explains the rating to the user.
[[nodiscard]] std::string_view explanation(Risk risk);

}  // namespace Brimlo
