#pragma once

#include "BrimloCore/Cleaner/CleanReport.h"
#include "BrimloCore/Cleaner/DuplicateFinder.h"
#include "BrimloCore/DiskScanner/FileNode.h"
#include "BrimloCore/DiskScanner/UnreadableFolders.h"
#include "BrimloCore/Models/Suggestion.h"

#include <memory>
#include <string>
#include <vector>

/// What the pictures of the screens show: the disk of one Ada, made up, the same at every run. The
/// names, ratings and sentences of rules are those of the catalog.
namespace Brimlo::CannedData {

/// Ada's home folder. Nobody looks whether there is one.
[[nodiscard]] std::string home();

[[nodiscard]] std::vector<Suggestion> suggestions();

/// A scanned home folder, sizes and counts added up.
[[nodiscard]] std::shared_ptr<FileNode> tree();
[[nodiscard]] std::vector<UnreadableArea> unreadableAreas();

/// Files that stand alone, the largest first.
[[nodiscard]] std::vector<std::shared_ptr<FileNode>> largeFiles();
[[nodiscard]] std::vector<DuplicateGroup> duplicates();

/// What came of a clean of the items that start ticked, once without a fault and once with some.
[[nodiscard]] CleanReport report();
[[nodiscard]] CleanReport reportWithProblems();

/// Writes into the user's home folder what is read from there: a journal, rules, files for a rule
/// to find, and a command line tool that does nothing.
void furnishHome();

}  // namespace Brimlo::CannedData
