#include "BrimloCore/Platform/Linux/MountTable.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <sstream>
#include <system_error>

namespace Brimlo::Platform {

namespace {

/// Space, tab, line end and backslash stand in the table as three octal digits.
std::string unescaped(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char* digits = text.data() + i + 1;
        unsigned byte = 0;
        if (text[i] == '\\' && text.size() - i > 3 &&
            std::from_chars(digits, digits + 3, byte, 8).ptr == digits + 3) {
            result += static_cast<char>(byte);
            i += 3;
        } else {
            result += text[i];
        }
    }
    return result;
}

}  // namespace

MountTable MountTable::read() {
    std::ifstream file{"/proc/self/mountinfo"};
    return parse(std::string{std::istreambuf_iterator<char>{file}, {}});
}

MountTable MountTable::parse(std::string_view text) {
    MountTable table;
    std::istringstream lines{std::string{text}};
    for (std::string line; std::getline(lines, line);) {
        // id, parent id, device, root within the file system, mount point, …
        // Only the space parts fields: other white space may stand in a mount point as it is.
        std::istringstream fields{line};
        std::array<std::string, 5> field;
        for (std::string& next : field) {
            std::getline(fields, next, ' ');
        }
        const std::string& number = field.front();
        std::uint64_t id = 0;
        const auto parsed = std::from_chars(number.data(), number.data() + number.size(), id);
        const bool isNumber = parsed.ec == std::errc{} && *parsed.ptr == '\0';
        if (isNumber && !field.back().empty()) {
            table.mounts_.push_back({id, unescaped(field.back())});
        }
    }
    return table;
}

std::optional<std::string> MountTable::mountPoint(std::uint64_t id) const {
    const auto found = std::ranges::find(mounts_, id, &Mount::id);
    return found == mounts_.end() ? std::nullopt : std::optional{found->point};
}

bool MountTable::hasMountAtOrBelow(std::string_view path) const {
    return std::ranges::any_of(mounts_, [&](const Mount& mount) {
        const std::string_view point = mount.point;
        return point.starts_with(path) &&
               (point.size() == path.size() || point[path.size()] == '/');
    });
}

}  // namespace Brimlo::Platform
