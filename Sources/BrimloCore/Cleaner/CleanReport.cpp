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

/// "3 MB", or "at least 3 MB" where that is less than the bytes deleted.
std::string freedWords(const TrashReport& report) {
    const std::int64_t freed = report.freedBytes.value_or(report.bytes);
    return (freed < report.bytes ? "at least " : "") + Fmt::bytes(freed);
}

}  // namespace

bool CleanReport::canUndo() const {
    const auto unrecordedObjects =
        std::ranges::count_if(unrecorded, isPseudoPath, &ItemProblem::path);
    return std::ssize(journalIDs) > std::ssize(goneForGood) - unrecordedObjects;
}

std::string TrashReport::frees() const {
    return freedBytes.value_or(bytes) < bytes ? "frees " + freedWords(*this) : std::string{};
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
        return "Emptied Trash: freed " + freedWords(*this) + ".";
    }
    std::string text = "Could not empty Trash: " + failures.front().text() + ".";
    if (removed > 0) {
        text += " " + std::to_string(removed) + " other item(s) are gone, which freed " +
                freedWords(*this) + ".";
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
