#include "BrimloCore/Cleaner/CleanReport.h"

#include "BrimloCore/Platform/Fmt.h"

#include <algorithm>
#include <iterator>

namespace Brimlo {

namespace {

/// What is left in the Trash, and why; "" when nothing is.
std::string leftSentence(const std::vector<ItemProblem>& failures) {
    return failures.empty() ? ""
                            : " " + std::to_string(failures.size()) +
                                  " item(s) could not be removed: " + failures.front().text() + ".";
}

}  // namespace

bool CleanReport::canUndo() const {
    const auto unrecordedObjects =
        std::ranges::count_if(unrecorded, isPseudoPath, &ItemProblem::path);
    return std::ssize(journalIDs) > std::ssize(goneForGood) - unrecordedObjects;
}

std::string TrashReport::purgedSentence(bool dryRun) const {
    return (dryRun ? "Would permanently remove " : "Permanently removed ") + Fmt::bytes(bytes) +
           " that Brimlo had moved to Trash." + leftSentence(failures);
}

std::string TrashReport::deletedSentence() const {
    return "Deleted " + Fmt::bytes(bytes) + " for good." + leftSentence(failures);
}

std::string TrashReport::emptiedSentence() const {
    if (failures.empty()) {
        return "Emptied Trash: freed " + Fmt::bytes(bytes) + ".";
    }
    std::string text = "Could not empty Trash: " + failures.front().text() + ".";
    if (removed > 0) {
        text += " " + std::to_string(removed) + " other item(s) are gone, which freed " +
                Fmt::bytes(bytes) + ".";
    }
    return text;
}

std::string UndoReport::sentence() const {
    std::string text = "Restored " + std::to_string(restored.size()) + " item(s).";
    if (!failures.empty()) {
        text += " " + std::to_string(failures.size()) +
                " could not be restored: " + failures.front().reason + ".";
    }
    if (!unrecorded.empty()) {
        text += " The journal could not be updated: " + unrecorded.front().reason + ".";
    }
    return text;
}

}  // namespace Brimlo
