#pragma once

#include "BrimloCore/DiskScanner/ScanControl.h"
#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/Support/Uuid.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Brimlo {

/// Distinct files on disk with the same content, as of when they were read.
struct DuplicateGroup {
    /// One of the files.
    struct Copy {
        std::string path;
        Platform::FileVersion::Time written = {};  ///< When its content changed.

        bool operator==(const Copy&) const = default;
    };

    Uuid id = Uuid::random();
    std::int64_t size = 0;     ///< The length of each in bytes, not its allocated size.
    std::vector<Copy> copies;  ///< Two or more, sorted by path.

    bool operator==(const DuplicateGroup&) const = default;

    /// The bytes that would be freed if only one of the files stayed.
    [[nodiscard]] std::int64_t wastedBytes() const;

    [[nodiscard]] std::vector<std::string> paths() const;
};

/// Finds files of the same content.
namespace DuplicateFinder {

/// How far the comparison of files is.
struct Progress {
    std::string path;           ///< The file that is compared next.
    std::int64_t compared = 0;  ///< Bytes, including those that need no comparison any more.
    std::int64_t total = 0;
    std::optional<std::chrono::seconds> left;  ///< The time left, once it can be estimated.

    /// "1.2 GB of 4 GB, about 20 s left".
    [[nodiscard]] std::string words() const;
};

/// What a search passed over on purpose.
struct LeftOut {
    std::int64_t minSize = 0;
    std::int64_t shortFiles = 0;  ///< Shorter than that; names, not files.
    std::int64_t shortBytes = 0;
    std::int64_t folders = 0;  ///< A Trash, "Library", photo libraries and apps.

    /// "Left out: 1,200 files shorter than 1 MB (80 MB in all) and 3 folders of applications or
    /// the Trash."; empty for nothing.
    [[nodiscard]] std::string words() const;
};

/// The groups of equal files of at least `minSize` bytes below the folders `roots`, the most wasted
/// bytes first, then by first path.
///
/// Hard links of one file count as one, and so do clones that share every byte, where the system
/// can tell (`Platform::sharedExtents`): deleting one of them would free nothing. Folders called
/// "Library", a Trash, and folders ending in ".photoslibrary" or ".app" are not entered; other
/// volumes are. A folder that several roots lead to is searched once. Empty files and those that
/// can't be read or change meanwhile are left out; `control`, which may be null, is told of
/// unreadable folders. Cancelled, the result is what was finished by then, the longest files first.
/// Blocks; one thread; reads whole files only when length, beginning and end agree, and compares
/// all their bytes. `progress` is called before each part of a file, at most a megabyte. `leftOut`
/// may be null.
[[nodiscard]] std::vector<DuplicateGroup> find(
    const std::vector<std::string>& roots,
    std::int64_t minSize,
    ScanControl* control = nullptr,
    const std::function<void(const Progress&)>& progress = {},
    LeftOut* leftOut = nullptr);

}  // namespace DuplicateFinder

}  // namespace Brimlo
