#include "BrimloApp/Review/ReportFigures.h"

#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Cleaner/CleanReport.h"
#include "BrimloCore/Docker/DockerSnapshot.h"

namespace Brimlo {

ReportFigures ReportFigures::of(const std::optional<CleanReport>& report) {
    if (!report) {
        return {};
    }
    ReportFigures figures;
    figures.processed = static_cast<int>(report->processed);
    figures.freedNow = static_cast<double>(report->freedNowBytes);
    figures.movedToTrash = static_cast<double>(report->movedToTrashBytes);
    for (const auto* problems : {&report->refused, &report->failures, &report->unrecorded}) {
        for (const ItemProblem& problem : *problems) {
            const bool isDocker = isPseudoPath(problem.path);
            figures.problems.append(shown(
                isDocker ? DockerObject::words(problem.path) + ": " + problem.reason
                         : problem.text()));
        }
    }
    figures.canUndo = !report->journalIDs.empty();
    return figures;
}

}  // namespace Brimlo
