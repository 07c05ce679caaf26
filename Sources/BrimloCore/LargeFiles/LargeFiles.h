#pragma once

#include "BrimloCore/DiskScanner/FileFilter.h"
#include "BrimloCore/DiskScanner/FileNode.h"
#include "BrimloCore/DiskScanner/ScanControl.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// The largest files below a folder, found without keeping a tree.
namespace Brimlo::LargeFiles {

/// The `limit` largest files below `root` that `filter` lets through, the largest first; nullopt
/// when `root` is not a folder that can be read.
///
/// Sizes are allocated bytes. Equal files are in the order of their paths, which also decides which
/// of them end a full list, and a hard-linked file is listed once, under the first of its paths.
/// Symlinks below `root` are not followed and other volumes not entered. `root` may be in any form;
/// `limit` is at least 1.
///
/// The control is told each folder once its entries are read, and each that can't be opened or is
/// on another volume. Cancelled, it returns what was found so far. Uses several threads; blocks
/// until all are done.
[[nodiscard]] std::optional<std::vector<std::shared_ptr<FileNode>>> find(
    const std::string& root, std::size_t limit, const FileFilter& filter, ScanControl& control);

}  // namespace Brimlo::LargeFiles
