#pragma once

#include <optional>
#include <string>

namespace Brimlo {

/// One element of a decoded list: its value or its error. Exactly one is present.
///
/// Keeps the length and positions of a list with bad elements.
template <typename T>
struct Lossy {
    std::optional<T> value;
    std::optional<std::string> error;

    bool operator==(const Lossy&) const = default;
};

}  // namespace Brimlo
