#pragma once

#include <QtCore/QString>

namespace Brimlo {

class AppModel;
struct CleanReport;

}  // namespace Brimlo

/// Puts the model into the states that its screens have words for, also those that last a moment
/// and those for which no disk is at hand, with the data of CannedData. Main thread.
namespace Brimlo::CannedState {

void measured(AppModel& model);
void withoutAccess(AppModel& model);

void suggesting(AppModel& model);
void nothingSuggested(AppModel& model);
void suggested(AppModel& model);
void cleaning(AppModel& model);
void cleaned(AppModel& model, const CleanReport& report);

void scanning(AppModel& model);
void scanned(AppModel& model);
void findingLargeFiles(AppModel& model);
void foundLargeFiles(AppModel& model);
void foundNoLargeFiles(AppModel& model);
void findingDuplicates(AppModel& model);
void foundDuplicates(AppModel& model);
void foundNoDuplicates(AppModel& model);

void busy(AppModel& model, const QString& text);
void offeringCLI(AppModel& model);
void withRuleIssues(AppModel& model);

}  // namespace Brimlo::CannedState
