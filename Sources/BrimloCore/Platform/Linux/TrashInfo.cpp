#include "BrimloCore/Platform/Linux/TrashInfo.h"

#include "BrimloCore/Models/FileUrl.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace Brimlo::Platform {

namespace {

constexpr std::string_view kPathKey = "Path=";
constexpr std::string_view kDateKey = "DeletionDate=";
constexpr std::string_view kEntryKey = "X-Brimlo-Entry=";

constexpr const char* kDateForm = "%Y-%m-%dT%H:%M:%S";

constexpr std::size_t kLongestName = 255;

/// The longest prefix of `text` of at most `limit` bytes that splits no character.
std::string_view shortened(std::string_view text, std::size_t limit) {
    if (text.size() <= limit) {
        return text;
    }
    const auto isInside = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; };
    while (limit > 0 && isInside(text[limit])) {
        --limit;
    }
    return text.substr(0, limit);
}

/// The time that a text gives in local time.
std::optional<std::time_t> dateIn(const std::string& text) {
    std::tm local{};
    local.tm_isdst = -1;  // Whether it was summer is not told.
    const char* end = strptime(text.c_str(), kDateForm, &local);
    const std::time_t date = end == nullptr ? -1 : std::mktime(&local);
    return date < 0 ? std::nullopt : std::optional{date};
}

}  // namespace

std::string TrashInfo::text(std::time_t now) const {
    std::tm local{};
    localtime_r(&now, &local);
    std::array<char, 32> day{};
    const std::size_t length = std::strftime(day.data(), day.size(), kDateForm, &local);

    std::string text = "[Trash Info]\n";
    text.append(kPathKey).append(FileUrl::encodePath(path)).append("\n");
    text.append(kDateKey).append(day.data(), length).append("\n");
    if (entryID) {
        text.append(kEntryKey).append(*entryID).append("\n");
    }
    return text;
}

std::optional<TrashInfo> TrashInfo::parse(std::string_view text) {
    std::optional<std::string> path;
    std::optional<std::string> entryID;
    std::optional<std::string> date;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        // The first of repeated keys counts.
        if (!path && line.starts_with(kPathKey)) {
            path = FileUrl::decodePath(line.substr(kPathKey.size()));
        } else if (!entryID && line.starts_with(kEntryKey)) {
            entryID = line.substr(kEntryKey.size());
        } else if (!date && line.starts_with(kDateKey)) {
            date = line.substr(kDateKey.size());
        }
    }
    if (!path) {
        return std::nullopt;
    }
    return TrashInfo{
        .path = *path,
        .entryID = entryID,
        .date = date ? dateIn(*date) : std::nullopt,
    };
}

std::string nameInTrash(std::string_view name, int attempt) {
    const std::string number = attempt > 1 ? "." + std::to_string(attempt) : "";
    // A longer extension is part of the name.
    constexpr std::size_t kLongestEnding = 32;
    const std::size_t dot = name.rfind('.');
    const bool hasEnding =
        dot != std::string_view::npos && dot > 0 && name.size() - dot <= kLongestEnding;
    const std::string_view ending = hasEnding ? name.substr(dot) : "";
    const std::string_view stem = name.substr(0, name.size() - ending.size());
    const std::size_t room = kLongestName - kTrashInfoSuffix.size() - number.size() - ending.size();
    return std::string{shortened(stem, room)}.append(number).append(ending);
}

}  // namespace Brimlo::Platform
