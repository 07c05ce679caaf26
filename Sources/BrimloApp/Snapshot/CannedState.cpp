#include "BrimloApp/Snapshot/CannedState.h"

#include "BrimloApp/AppModel/AppModel.h"
#include "BrimloApp/Snapshot/CannedData.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>

namespace Brimlo {
namespace {

constexpr std::int64_t kGB = 1'000'000'000;

}  // namespace

void CannedState::measured(AppModel& model) {
    model.setScanRoot(CannedData::home());
    model.setLargeRoot(CannedData::home());
    model.setDupRoot(CannedData::home());
    const VolumeInfo::Snapshot volume{
        .total = 512 * kGB,
        .available = 61 * kGB,
        .availableIncludingPurgeable = 74 * kGB,
    };
    model.assign(model.volume_, std::optional{volume}, &AppModel::volumeChanged);
    model.assign(model.hasFullDiskAccess_, true, &AppModel::hasFullDiskAccessChanged);
    // What is being read would come in between.
    while (model.trashMeasuring_ != AppModel::TrashMeasuring::none || !model.isJournalRead()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents);
    }
    model.assign(model.trashBytes_, 3 * kGB, &AppModel::trashBytesChanged);
}

void CannedState::withoutAccess(AppModel& model) {
    model.assign(model.hasFullDiskAccess_, false, &AppModel::hasFullDiskAccessChanged);
}

void CannedState::suggesting(AppModel& model) {
    model.assign(model.isSuggesting_, true, &AppModel::isSuggestingChanged);
    model.assign(
        model.suggestPhase_, QStringLiteral("Sizing candidates…"), &AppModel::suggestPhaseChanged);
    model.assign(
        model.suggestStarted_,
        QDateTime::currentDateTime().addSecs(-4),
        &AppModel::suggestStartedChanged);
}

void CannedState::nothingSuggested(AppModel& model) {
    model.assign(model.isSuggesting_, false, &AppModel::isSuggestingChanged);
}

void CannedState::suggested(AppModel& model) {
    std::vector<Suggestion> suggestions = CannedData::suggestions();
    std::set<std::string> ticked;
    for (const Suggestion& suggestion : suggestions) {
        ticked.insert(suggestion.preselectedPaths.begin(), suggestion.preselectedPaths.end());
    }
    model.setSuggestions(std::move(suggestions));
    model.setSelected(std::move(ticked));
}

void CannedState::cleaning(AppModel& model) {
    model.assign(model.isCleaning_, true, &AppModel::isCleaningChanged);
    model.assign(model.cleaningTotal_, model.planCount(), &AppModel::cleaningTotalChanged);
    model.assign(model.cleaningDone_, model.planCount() - 2, &AppModel::cleaningDoneChanged);
    const std::string path = CannedData::home() + "/Library/Application Support/Slack/Cache";
    model.assign(model.cleaningPath_, QString::fromStdString(path), &AppModel::cleaningPathChanged);
}

void CannedState::cleaned(AppModel& model, const CleanReport& report) {
    model.assign(model.lastReport_, std::optional{report}, &AppModel::lastReportChanged);
    model.setShowResult(true);
}

void CannedState::scanning(AppModel& model) {
    model.assign(model.isScanning_, true, &AppModel::isScanningChanged);
    model.assign(model.scanFiles_, std::int64_t{184'213}, &AppModel::scanFilesChanged);
    model.assign(model.scanBytes_, 57 * kGB, &AppModel::scanBytesChanged);
    model.assign(
        model.scanPath_,
        QString::fromStdString(CannedData::home() + "/Projects/shopfront/node_modules"),
        &AppModel::scanPathChanged);
}

void CannedState::scanned(AppModel& model) {
    model.takeTree(CannedData::tree());
    model.assign(model.unreadableCount_, 5, &AppModel::unreadableCountChanged);
    model.assign(
        model.unreadableAreas_, CannedData::unreadableAreas(), &AppModel::unreadableAreasChanged);
}

void CannedState::findingLargeFiles(AppModel& model) {
    model.assign(model.isFindingLarge_, true, &AppModel::isFindingLargeChanged);
}

void CannedState::foundLargeFiles(AppModel& model) {
    foundNoLargeFiles(model);
    model.assign(model.largeFiles_, CannedData::largeFiles(), &AppModel::largeFilesChanged);
}

void CannedState::foundNoLargeFiles(AppModel& model) {
    model.assign(model.largeSearched_, true, &AppModel::largeSearchedChanged);
}

void CannedState::findingDuplicates(AppModel& model) {
    model.assign(model.isFindingDupes_, true, &AppModel::isFindingDupesChanged);
}

void CannedState::foundDuplicates(AppModel& model) {
    foundNoDuplicates(model);
    model.assign(model.dupGroups_, CannedData::duplicates(), &AppModel::dupGroupsChanged);
}

void CannedState::foundNoDuplicates(AppModel& model) {
    model.assign(model.dupsSearched_, true, &AppModel::dupsSearchedChanged);
}

void CannedState::busy(AppModel& model, const QString& text) {
    model.setBusy(text);
}

void CannedState::offeringCLI(AppModel& model) {
    model.assign(model.offersCLI_, true, &AppModel::offersCLIChanged);
}

void CannedState::withRuleIssues(AppModel& model) {
    model.assign(
        model.ruleIssues_,
        {QStringLiteral("old-rules.json: not valid JSON")},
        &AppModel::ruleIssuesChanged);
}

}  // namespace Brimlo
