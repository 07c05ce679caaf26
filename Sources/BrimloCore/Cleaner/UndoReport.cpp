#include "BrimloCore/Cleaner/UndoReport.h"

namespace Brimlo {

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
