#pragma once

#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Cleaner/CleanReport.h"
#include "BrimloCore/Cleaner/CopyChoice.h"
#include "BrimloCore/Cleaner/DuplicateFinder.h"
#include "BrimloCore/Cleaner/EqualFolders.h"
#include "BrimloCore/Cleaner/TrashContents.h"
#include "BrimloCore/DiskScanner/FileNode.h"
#include "BrimloCore/DiskScanner/UnreadableFolders.h"
#include "BrimloCore/Docker/DockerSnapshot.h"
#include "BrimloCore/Journal/JournalEntry.h"
#include "BrimloCore/Models/Suggestion.h"
#include "BrimloCore/RulePacks/Coverage.h"
#include "BrimloCore/ScanRecords/Growth.h"
#include "BrimloCore/Support/Json.h"
#include "BrimloCore/SystemSpace/SystemSpace.h"
#include "BrimloCore/UserRules/RuleValidation.h"
#include "BrimloCore/VolumeAccount/VolumeAccount.h"

#include <string_view>
#include <vector>

/// The types of the core in the tool's JSON documents: keys are the names of the fields, an absent
/// value has no key.
namespace Brimlo::JsonForms {

/// A path; invalid UTF-8 becomes U+FFFD.
[[nodiscard]] Json::Value path(std::string_view path);

[[nodiscard]] Json::Object suggestion(const Suggestion& suggestion);
/// Why it is made: the label and the text of each reason.
[[nodiscard]] Json::Array reasons(const Suggestion& suggestion);
/// Adds "freedBytes", what is freed at least, and "freedAtMostBytes" where that is more.
void addFreed(Json::Object& object, const FreedSpace& freed);
[[nodiscard]] Json::Array items(const std::vector<SuggestionItem>& items);
[[nodiscard]] Json::Array items(const std::vector<CleanItem>& items);
[[nodiscard]] Json::Object plan(const CleanPlan& plan);
[[nodiscard]] Json::Object report(const CleanReport& report);
[[nodiscard]] Json::Object report(const UndoReport& report);
[[nodiscard]] Json::Object report(const TrashReport& report);
[[nodiscard]] Json::Object trash(const TrashContents& contents);
[[nodiscard]] Json::Value entry(const JournalEntry& entry);
/// Without the children.
[[nodiscard]] Json::Object node(const FileNode& node);
[[nodiscard]] Json::Object growth(const Growth& growth);
/// `reasons` tell which of its copies stay.
[[nodiscard]] Json::Object duplicates(
    const DuplicateGroup& group, const CopyChoice::Reasons& reasons);
[[nodiscard]] Json::Object equalFolders(const EqualFolders& set);
[[nodiscard]] Json::Object leftOut(const DuplicateFinder::LeftOut& leftOut);
[[nodiscard]] Json::Array areas(const std::vector<UnreadableArea>& areas);
[[nodiscard]] Json::Object docker(const DockerSnapshot& snapshot);
[[nodiscard]] Json::Array systemParts(const std::vector<SystemPart>& parts);
[[nodiscard]] Json::Object account(const VolumeAccount& account);
[[nodiscard]] Json::Object coverage(const CoverageEntry& entry);
[[nodiscard]] Json::Object validation(const RuleValidation& validation);

}  // namespace Brimlo::JsonForms
