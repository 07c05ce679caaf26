#include "BrimloApp/AppModel/ReportLines.h"

#include <algorithm>
#include <utility>

namespace Brimlo {

ReportLines::ReportLines(std::vector<std::string> lines)
    : lines_{std::move(lines)} {
    std::ranges::sort(lines_);
    for (const std::string& line : lines_) {
        paths_.push_back(line.substr(0, line.find(": ")));
    }
    std::ranges::sort(paths_);
}

bool ReportLines::anyBeginsWith(const std::string_view path) const {
    // The lines that begin with a text follow one another, and it would stand right before them.
    const auto first = std::ranges::lower_bound(lines_, path);
    return first != lines_.end() && first->starts_with(path);
}

bool ReportLines::anyIsAbout(const std::string_view path) const {
    return std::ranges::binary_search(paths_, path);
}

}  // namespace Brimlo
