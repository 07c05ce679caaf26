#include "BrimloApp/Snapshot/CannedState.h"

#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Duplicates/DuplicateSearch.h"
#include "BrimloApp/History/History.h"
#include "BrimloApp/LargeFiles/LargeFileSearch.h"
#include "BrimloApp/Overview/Machine.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/Rules/RuleBook.h"
#include "BrimloApp/Settings/Settings.h"
#include "BrimloApp/SmartClean/SmartClean.h"
#include "BrimloApp/Snapshot/CannedData.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>

namespace Brimlo::CannedState {
namespace {

constexpr std::int64_t kGB = 1'000'000'000;

}  // namespace

void measured(AppModel& model) {
    model.analyzer()->setScanRoot(CannedData::home());
    model.largeFiles()->setRoot(CannedData::home());
    model.duplicates()->setRoot(CannedData::home());
    Machine& machine = *model.machine();
    machine.setVolume(VolumeInfo::Snapshot{
        .total = 512 * kGB,
        .available = 61 * kGB,
        .availableIncludingPurgeable = 74 * kGB,
    });
    machine.setFullDiskAccess(true);
    // What is being read would come in between.
    while (machine.isMeasuring() || !model.history()->isJournalRead()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents);
    }
    machine.setTrashBytes(3 * kGB);
}

void withoutAccess(AppModel& model) {
    model.machine()->setFullDiskAccess(false);
}

void suggesting(AppModel& model) {
    model.smartClean()->show(
        {.isSuggesting = true,
         .phase = QStringLiteral("Sizing candidates…"),
         .started = QDateTime::currentDateTime().addSecs(-4)});
}

void nothingSuggested(AppModel& model) {
    model.smartClean()->show(SmartClean::Progress{});
}

void suggested(AppModel& model) {
    model.smartClean()->show(CannedData::suggestions());
}

void cleaning(AppModel& model) {
    const std::string path = CannedData::home() + "/Library/Application Support/Slack/Cache";
    const int count = model.smartClean()->planCount();
    model.cleanup()->show(
        {.isCleaning = true,
         .path = QString::fromStdString(path),
         .done = count - 2,
         .total = count});
}

void cleaned(AppModel& model, const CleanReport& report) {
    model.cleanup()->show(report);
}

void scanning(AppModel& model) {
    model.analyzer()->setScanning(true);
    model.analyzer()->show(
        {.files = 184'213,
         .bytes = 57 * kGB,
         .path = CannedData::home() + "/Projects/shopfront/node_modules"});
}

void scanned(AppModel& model) {
    model.analyzer()->setTree(CannedData::tree());
    model.analyzer()->show(
        {.unreadableCount = 5, .leftOutCount = 0, .areas = CannedData::unreadableAreas()});
}

void findingLargeFiles(AppModel& model) {
    model.largeFiles()->show({.isSearching = true});
}

void foundLargeFiles(AppModel& model) {
    foundNoLargeFiles(model);
    model.largeFiles()->setFiles(CannedData::largeFiles());
}

void foundNoLargeFiles(AppModel& model) {
    model.largeFiles()->show({.hasSearched = true});
}

void findingDuplicates(AppModel& model) {
    model.duplicates()->show({.isSearching = true});
}

void foundDuplicates(AppModel& model) {
    foundNoDuplicates(model);
    model.duplicates()->setGroups(CannedData::duplicates());
}

void foundNoDuplicates(AppModel& model) {
    model.duplicates()->show({.hasSearched = true});
}

void busy(AppModel& model, const QString& text) {
    model.setBusy(text);
}

void offeringCLI(AppModel& model) {
    model.settings()->setOffersCLI(true);
}

void withRuleIssues(AppModel& model) {
    model.rules()->show(
        {.rules = model.rules()->customRules(), .issues = {"old-rules.json: not valid JSON"}});
}

}  // namespace Brimlo::CannedState
