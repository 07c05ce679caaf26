#pragma once

#include <optional>
#include <string>

namespace Brimlo {

/// One element of a decoded list: its value, or why it has none. Exactly one is present.
///
/// Lets a list keep its length and positions when some of its elements are bad.
template <typename T>
struct Lossy {
    std::optional<T> value;
    std::optional<std::string> error;

    bool operator==(const Lossy&) const = default;
};

}  // namespace Brimlo
