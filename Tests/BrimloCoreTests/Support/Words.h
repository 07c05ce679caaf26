#pragma once

#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace Brimlo::Testing {

/// The words of a text, which stand apart by spaces and line ends: a table of many short rows.
[[nodiscard]] inline std::vector<std::string> words(const std::string& text) {
    std::istringstream stream{text};
    return {std::istream_iterator<std::string>{stream}, {}};
}

}  // namespace Brimlo::Testing
