#pragma once

#include "BrimloCore/Cleaner/CleanReport.h"
#include "BrimloCore/Cleaner/DuplicateFinder.h"
#include "BrimloCore/Cleaner/EqualFolders.h"
#include "BrimloCore/DiskScanner/FileNode.h"
#include "BrimloCore/DiskScanner/UnreadableFolders.h"
#include "BrimloCore/Models/Suggestion.h"
#include "BrimloCore/SystemSpace/SystemSpace.h"
#include "BrimloCore/VolumeAccount/VolumeAccount.h"

#include <memory>
#include <string>
#include <vector>

/// What the pictures of the screens show: the invented disk of Ada, the same in every run. Names,
/// ratings and sentences of rules are those of the catalog.
namespace Brimlo::CannedData {

/// Ada's home folder. It need not exist.
[[nodiscard]] std::string home();

[[nodiscard]] std::vector<Suggestion> suggestions();

/// A scanned home folder with correct totals.
[[nodiscard]] std::shared_ptr<FileNode> tree();
[[nodiscard]] std::vector<UnreadableArea> unreadableAreas();

/// Large files, the largest first.
[[nodiscard]] std::vector<std::shared_ptr<FileNode>> largeFiles();
[[nodiscard]] std::vector<DuplicateGroup> duplicates();
[[nodiscard]] std::vector<EqualFolders> equalFolders();

/// Some stores of this system with invented sizes, the largest first.
[[nodiscard]] std::vector<SystemPart> systemParts();

/// Where the space of Ada's disk is, with lines that add up.
[[nodiscard]] VolumeAccount account();

/// The result of a clean of the preselected items, without problems and with some.
[[nodiscard]] CleanReport report();
[[nodiscard]] CleanReport reportWithProblems();

}  // namespace Brimlo::CannedData
