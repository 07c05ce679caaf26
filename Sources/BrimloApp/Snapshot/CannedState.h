#pragma once

#include <QtCore/QString>

namespace Brimlo {

class AppModel;
struct CleanReport;

}  // namespace Brimlo

/// Puts the model into the states that its screens can show, including short ones and ones that
/// need a special disk, with the data of CannedData. Main thread.
namespace Brimlo::CannedState {

/// Fills the home folder with what the model reads from there: a journal, rules, files that match
/// a rule, and a command line tool that does nothing. Call it before there is a model.
void furnishHome();

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
