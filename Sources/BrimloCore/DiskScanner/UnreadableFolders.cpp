#include "BrimloCore/DiskScanner/UnreadableFolders.h"

#include "BrimloCore/Platform/Privacy.h"

#include <algorithm>
#include <map>
#include <ranges>

namespace Brimlo {

namespace {

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
    // The system's Library is shown under the same name as the user's.
    if (pieces.front() == "Library" && pieces.size() > 1) {
        return "~/Library/" + std::string{pieces[1]};
    }
    return (isInHome ? "~/" : "/") + std::string{pieces.front()};
}

}  // namespace

std::string UnreadableFolders::firstFew(const std::vector<std::string>& paths) {
    constexpr std::size_t kMost = 5;
    std::string words;
    for (const std::string& path : paths | std::views::take(kMost)) {
        words += (words.empty() ? "" : ", ") + path;
    }
    return paths.size() > kMost ? words + " and " + std::to_string(paths.size() - kMost) + " more"
                                : words;
}

std::vector<UnreadableArea> UnreadableFolders::group(
    const std::vector<std::string>& paths, std::string_view home) {
    std::map<std::string, UnreadableArea> byArea;
    for (const std::string& path : paths) {
        const std::string area = areaOf(path, home);
        UnreadableArea& entry = byArea[area];
        if (entry.count++ == 0) {
            entry.area = area;
            entry.example = path;
            entry.reason = Platform::reasonUnreadable(area);
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

std::vector<UnreadableArea> UnreadableFolders::group(
    const ScanControl& control, std::string_view home) {
    const std::vector<std::string> unopened = control.withoutDescriptor();
    std::vector<std::string> denied = control.inaccessible();
    denied.resize(denied.size() - unopened.size());
    std::vector<UnreadableArea> areas = group(denied, home);
    if (!unopened.empty()) {
        areas.push_back(
            {.area = "Too many open files",
             .count = std::ssize(unopened),
             .example = unopened.front(),
             .reason = "The system lets Brimlo open no more files at once. Try again later."});
    }
    if (const auto volumes = control.otherVolumes(); !volumes.empty()) {
        areas.push_back(
            {.area = "Other volumes",
             .count = std::ssize(volumes),
             .example = volumes.front(),
             .reason = "Left out: " + firstFew(volumes) + ". Scan them on their own."});
    }
    return areas;
}

}  // namespace Brimlo
