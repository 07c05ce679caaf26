#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Brimlo {

/// A 128-bit identifier (RFC 9562).
struct Uuid {
    std::array<std::uint8_t, 16> bytes{};

    auto operator<=>(const Uuid&) const = default;

    /// A fresh random one, from the system's entropy.
    [[nodiscard]] static Uuid random();

    /// The identifier written as 8-4-4-4-12 hex digits of any letter case, or nullopt.
    [[nodiscard]] static std::optional<Uuid> parse(std::string_view text);

    /// 36 characters, the hex digits in upper case.
    [[nodiscard]] std::string text() const;
};

}  // namespace Brimlo
