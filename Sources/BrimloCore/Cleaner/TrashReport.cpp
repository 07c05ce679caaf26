#include "BrimloCore/Cleaner/TrashReport.h"

#include "BrimloCore/Platform/Fmt.h"

namespace Brimlo {

std::string TrashReport::purgedSentence(bool dryRun) const {
    std::string text = (dryRun ? "Would permanently remove " : "Permanently removed ") +
                       Fmt::bytes(bytes) + " that Brimlo had moved to Trash.";
    if (!failures.empty()) {
        text += " " + std::to_string(failures.size()) +
                " item(s) could not be removed: " + failures.front().text() + ".";
    }
    return text;
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

}  // namespace Brimlo
