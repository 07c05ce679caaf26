#pragma once

#include <string>

namespace Brimlo {

/// One item of an operation, and why it failed.
struct ItemProblem {
    std::string path;    ///< As the caller spelled it.
    std::string reason;  ///< Without a period at its end.

    bool operator==(const ItemProblem&) const = default;

    /// "path: reason".
    [[nodiscard]] std::string text() const { return path + ": " + reason; }
};

}  // namespace Brimlo
