#include "BrimloApp/AppModel/ReportFigures.h"

#include "BrimloApp/AppModel/Shown.h"
#include "BrimloCore/Cleaner/CleanReport.h"

#include <string>
#include <vector>

namespace Brimlo {

ReportFigures ReportFigures::of(const std::optional<CleanReport>& report) {
    if (!report) {
        return {};
    }
    ReportFigures figures;
    figures.processed = static_cast<int>(report->processed);
    figures.freedNow = static_cast<double>(report->freedNowBytes);
    figures.movedToTrash = static_cast<double>(report->movedToTrashBytes);
    for (const auto& lines : {report->refused, report->failures}) {
        for (const std::string& line : lines) {
            figures.problems.append(shown(line));
        }
    }
    figures.canUndo = !report->journalIDs.empty();
    return figures;
}

}  // namespace Brimlo
