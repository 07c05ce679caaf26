#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

/// The lines "path: reason" of a report, to be asked about many paths.
class ReportLines {
public:
    explicit ReportLines(std::vector<std::string> lines);

    /// Whether a line begins with this path.
    [[nodiscard]] bool anyBeginsWith(std::string_view path) const;

    /// Whether a line has this text up to its first ": ".
    [[nodiscard]] bool anyIsAbout(std::string_view path) const;

private:
    std::vector<std::string> lines_;  ///< Sorted.
    std::vector<std::string> paths_;  ///< What stands before the first ": ", sorted.
};

}  // namespace Brimlo
