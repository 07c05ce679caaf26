#include "BrimloCore/DiskScanner/UnreadableFolders.h"

#include <algorithm>
#include <array>
#include <map>

namespace Brimlo {

namespace {

/// Words in the names of what macOS shows only to apps with Full Disk Access.
constexpr std::array<std::string_view, 30> kPrivateWords{
    "Safari",
    "Mail",
    "Messages",
    "Photos",
    "Accounts",
    "Biome",
    "IntelligencePlatform",
    "Shortcuts",
    "Daemon Containers",
    "Autosave Information",
    "Containers",
    "Group Containers",
    "Application Scripts",
    "Mobile Documents",
    "Metadata",
    "HomeKit",
    "Suggestions",
    "Calendars",
    "Reminders",
    "Trial",
    "News",
    "Weather",
    "Finance",
    "Sharing",
    "PersonalizationPortrait",
    "IdentityServices",
    "FaceTime",
    "DoNotDisturb",
    "Assistant",
    "com.apple",
};

/// The first components of a path, as many as an area may need.
std::vector<std::string_view> firstPieces(std::string_view path) {
    std::vector<std::string_view> pieces;
    while (!path.empty() && pieces.size() < 2) {
        const std::size_t end = std::min(path.find('/'), path.size());
        if (end > 0) {
            pieces.push_back(path.substr(0, end));
        }
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return pieces;
}

std::string areaOf(std::string_view path, std::string_view home) {
    const bool isInHome =
        path.size() > home.size() && path.starts_with(home) && path[home.size()] == '/';
    const std::vector<std::string_view> pieces =
        firstPieces(isInHome ? path.substr(home.size() + 1) : path);
    if (pieces.empty()) {
        return std::string{path};
    }
    // The system's Library goes under the same name as the user's.
    if (pieces.front() == "Library" && pieces.size() > 1) {
        return "~/Library/" + std::string{pieces[1]};
    }
    return (isInHome ? "~/" : "/") + std::string{pieces.front()};
}

}  // namespace

std::vector<UnreadableArea> UnreadableFolders::group(
    const std::vector<std::string>& paths, std::string_view home) {
    std::map<std::string, UnreadableArea> byArea;
    for (const std::string& path : paths) {
        const std::string area = areaOf(path, home);
        UnreadableArea& entry = byArea[area];
        if (entry.count++ == 0) {
            entry.area = area;
            entry.example = path;
            entry.reason = reason(area);
        }
    }
    std::vector<UnreadableArea> areas;
    areas.reserve(byArea.size());
    for (auto& [area, entry] : byArea) {
        areas.push_back(std::move(entry));
    }
    std::ranges::stable_sort(areas, std::ranges::greater{}, &UnreadableArea::count);
    return areas;
}

std::string UnreadableFolders::reason(std::string_view area) {
    if (area == "~/.Trash") {
        return "The Trash is protected by macOS. Full Disk Access lets Brimlo see and size it.";
    }
    const bool isPrivate = std::ranges::any_of(
        kPrivateWords, [&](std::string_view word) { return area.contains(word); });
    if (isPrivate) {
        return "Private Apple or app data that macOS only shows to apps with Full Disk Access.";
    }
    return "macOS or the folder's owner denied access. If it is yours, check its permissions.";
}

}  // namespace Brimlo
