#pragma once

#include <functional>
#include <string>
#include <string_view>

/// The desktop's text files of groups, keys and values (freedesktop.org Desktop Entry Specification
/// 1.5, section 3).
namespace Brimlo::Platform::KeyFile {

/// The content of a small regular file, symlinks followed; empty when it can't be read, is longer
/// than 256 KiB, or is a pipe, whose reading would block.
[[nodiscard]] std::string contentOf(const std::string& path);

/// Without the spaces, tabs and carriage returns that may surround keys and values.
[[nodiscard]] std::string_view withoutSpaces(std::string_view text);

/// Calls `entry` with the group, the key and the value of each line that has a key.
void readEntries(
    std::string_view text,
    const std::function<void(std::string_view group, std::string_view key, std::string_view value)>&
        entry);

}  // namespace Brimlo::Platform::KeyFile
