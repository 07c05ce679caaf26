#include "BrimloCore/Platform/Linux/MountTable.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <sstream>
#include <system_error>
#include <utility>

namespace Brimlo::Platform {

namespace {

/// Space, tab, line end and backslash are written as three octal digits in the table.
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

/// The part of `path` after `folder`, when it is `folder` or lies below.
std::optional<std::string_view> rest(std::string_view path, std::string_view folder) {
    const bool isBelow =
        path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
    return isBelow ? std::optional{path.substr(folder.size())} : std::nullopt;
}

std::string withoutLoneSlash(std::string path) {
    return path == "/" ? std::string{} : std::move(path);
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
        // id, parent id, device, root within the file system, mount point, …, "-", type, …
        // Only a space separates fields: other white space can be part of a mount point.
        std::istringstream fields{line};
        std::array<std::string, 5> field;
        for (std::string& next : field) {
            std::getline(fields, next, ' ');
        }
        const std::string& number = field.front();
        std::uint64_t id = 0;
        const auto parsed = std::from_chars(number.data(), number.data() + number.size(), id);
        const bool isNumber = parsed.ec == std::errc{} && *parsed.ptr == '\0';
        std::string word;
        while (std::getline(fields, word, ' ') && word != "-") {
        }
        std::string type;
        std::getline(fields, type, ' ');
        if (isNumber && !field.back().empty()) {
            table.mounts_.push_back(
                {id,
                 field[2],
                 withoutLoneSlash(unescaped(field[3])),
                 withoutLoneSlash(unescaped(field.back())),
                 std::move(type)});
        }
    }
    return table;
}

std::optional<std::string> MountTable::mountPoint(std::uint64_t id) const {
    const auto found = std::ranges::find(mounts_, id, &Mount::id);
    if (found == mounts_.end()) {
        return std::nullopt;
    }
    return found->point.empty() ? "/" : found->point;
}

std::set<std::string> MountTable::localPoints() const {
    constexpr std::array kDistant{
        "9p", "afs", "autofs", "ceph", "cifs", "fuse.", "nfs", "smb", "virtiofs"};
    std::set<std::string> points;
    for (const Mount& mount : mounts_) {
        const auto isOf = [&](const char* type) { return mount.type.starts_with(type); };
        if (std::ranges::none_of(kDistant, isOf)) {
            points.insert(mount.point.empty() ? "/" : mount.point);
        }
    }
    return points;
}

bool MountTable::hasMountAtOrBelow(std::string_view path) const {
    return path == "/" || std::ranges::any_of(mounts_, [&](const Mount& mount) {
               return rest(mount.point, path).has_value();
           });
}

std::vector<std::string> MountTable::otherNames(std::string_view path) const {
    // The last mount at a mount point covers the others.
    const Mount* own = nullptr;
    for (const Mount& mount : mounts_) {
        if (rest(path, mount.point) &&
            (own == nullptr || mount.point.size() >= own->point.size())) {
            own = &mount;
        }
    }
    std::vector<std::string> names;
    if (own == nullptr) {
        return names;
    }
    const std::string inside = own->root + std::string{path.substr(own->point.size())};
    for (const Mount& mount : mounts_) {
        const auto below = rest(inside, mount.root);
        if (below && mount.device == own->device) {
            std::string name = mount.point + std::string{*below};
            if (!name.empty() && name != path) {
                names.push_back(std::move(name));
            }
        }
    }
    return names;
}

std::vector<MountTable::Mount> MountTable::wholeOf(
    std::uint64_t id, const std::function<bool(const Mount&)>& isVisible) const {
    const auto own = std::ranges::find(mounts_, id, &Mount::id);
    if (own == mounts_.end()) {
        return {};
    }
    std::vector<Mount> mounts;
    std::ranges::copy_if(mounts_, std::back_inserter(mounts), [&](const Mount& mount) {
        return mount.device == own->device && isVisible(mount);
    });
    // A part comes after the folders that it may lie in.
    std::ranges::stable_sort(mounts, {}, [](const Mount& mount) { return mount.root.size(); });
    std::vector<Mount> whole;
    for (const Mount& mount : mounts) {
        if (std::ranges::none_of(whole, [&](const Mount& other) {
                return rest(mount.root, other.root).has_value();
            })) {
            whole.push_back(mount);
        }
    }
    return whole;
}

}  // namespace Brimlo::Platform
