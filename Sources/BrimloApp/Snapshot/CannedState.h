#pragma once

#include <QtCore/QString>

namespace Brimlo {

class AppModel;
struct CleanReport;

/// Puts the model into the states that its screens have words for, also those that last a moment
/// and those for which no disk is at hand, with the data of CannedData. Main thread.
struct CannedState {
    static void measured(AppModel& model);
    static void withoutAccess(AppModel& model);

    static void suggesting(AppModel& model);
    static void nothingSuggested(AppModel& model);
    static void suggested(AppModel& model);
    static void cleaning(AppModel& model);
    static void cleaned(AppModel& model, const CleanReport& report);

    static void scanning(AppModel& model);
    static void scanned(AppModel& model);
    static void findingLargeFiles(AppModel& model);
    static void foundLargeFiles(AppModel& model);
    static void foundNoLargeFiles(AppModel& model);
    static void findingDuplicates(AppModel& model);
    static void foundDuplicates(AppModel& model);
    static void foundNoDuplicates(AppModel& model);

    static void busy(AppModel& model, const QString& text);
    static void offeringCLI(AppModel& model);
    static void withRuleIssues(AppModel& model);
};

}  // namespace Brimlo
