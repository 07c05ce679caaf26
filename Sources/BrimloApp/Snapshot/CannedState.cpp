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
#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Support/AppConfig.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace Brimlo::CannedState {

namespace {

using namespace std::chrono_literals;

constexpr std::int64_t kMB = 1'000'000;
constexpr std::int64_t kGB = 1'000'000'000;
constexpr std::chrono::sys_seconds kToday = std::chrono::sys_days{2026y / 11 / 16} + 10h;

struct Removal {
    std::string_view path;
    std::int64_t size = 0;  ///< The size in the journal; the file in the Trash is small.
    std::string_view ruleID;
};

struct PastClean {
    std::chrono::hours ago{};
    std::vector<Removal> removals;
};

/// A file that a rule matches. It takes real disk space, so it is small.
void leaveFile(const std::string& path, std::size_t kilobytes) {
    std::filesystem::create_directories(std::filesystem::path{path}.parent_path());
    std::ofstream{path} << std::string(kilobytes * 1024, '.');
}

/// Really moves the items to the Trash. The first clean was undone since.
void carryOut(const PastClean& clean) {
    std::vector<CleanItem> items;
    for (const auto& [path, size, ruleID] : clean.removals) {
        items.push_back(
            {StoragePaths::home() + "/" + std::string{path}, size, std::string{ruleID}, {}});
        leaveFile(items.back().path, 1);
    }
    const auto journal = std::make_shared<Journal>(StoragePaths::journal());
    const auto ids =
        Cleaner{journal}.execute(CleanPlan{items}, DisposalMode::trash, false).journalIDs;
    static_cast<void>(journal->update({ids.begin(), ids.end()}, [&](JournalEntry& entry) {
        entry.date = kToday - clean.ago;
        entry.undone = entry.ruleID == "xcode.derived-data";
    }));
}

}  // namespace

void furnishHome() {
    const std::string home = StoragePaths::home();
    const PastClean cleans[] = {
        {54h, {{"Library/Developer/DerivedData", 5230 * kMB, "xcode.derived-data"}}},
        {30h, {{"Library/Caches/Homebrew", 1460 * kMB, "homebrew.cache"}}          },
        {0h,
         {{"Library/Caches/com.spotify.client", 1890 * kMB, "app.spotify"},
          {"Projects/old-shop/node_modules", 923 * kMB, "artifact.node_modules"},
          {".npm/_logs", 31 * kMB, "npm.logs"}}                                    },
    };
    for (const PastClean& clean : cleans) {
        carryOut(clean);
    }
    UserRules::Draft previews;
    previews.id = "custom.render-previews";
    previews.name = "Render previews";
    previews.group = "Sketchbook";
    previews.paths = {"~/Library/Caches/Sketchbook/Previews"};
    previews.risk = Risk::rebuild;
    previews.regenerates = "Sketchbook renders them again when a drawing is opened.";
    previews.quitApps = {"Sketchbook"};
    previews.contentsOnly = true;
    UserRules::Draft exports;
    exports.id = "custom.old-exports";
    exports.name = "Old exports";
    exports.group = "Sketchbook";
    exports.paths = {"~/Movies/Exports/*.tmp"};
    exports.regenerates = "Not recreated. Check that the finished film is there first.";
    for (const UserRules::Draft& draft : {previews, exports}) {
        static_cast<void>(UserRules::save(UserRules::make(draft), UserRules::defaultDirectory()));
    }
    // Asked already, or the question would cover the first screen.
    static_cast<void>(
        AppConfig::change([](AppConfig& config) { config.cliInstallOffered = true; }));
    const std::string tool = home + "/resources/brimlo";
    leaveFile(tool, 1);
    std::filesystem::permissions(tool, std::filesystem::perms::owner_all);
    leaveFile(home + "/Library/Caches/Sketchbook/Previews/Coast.preview", 5200);
    leaveFile(home + "/Library/Caches/Sketchbook/Previews/Dunes.preview", 3100);
    leaveFile(home + "/Library/Caches/Sketchbook/Previews/Harbour.preview", 840);
}

void measured(AppModel& model) {
    model.analyzer()->setScanRoot(CannedData::home());
    model.largeFiles()->setRoot(CannedData::home());
    model.duplicates()->setRoot(CannedData::home());
    Machine& machine = *model.machine();
    machine.setVolume(VolumeInfo::Snapshot{
        .total = 512 * kGB,
        .available = 61 * kGB,
        .availableIncludingPurgeable = std::nullopt,
    });
    machine.setFullDiskAccess(true);
    // A reading that is under way would overwrite this.
    while (machine.isMeasuring() || !model.history()->isJournalRead()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents);
    }
    machine.setTrash({.size = 3 * kGB});
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
    model.analyzer()->areas()->show(
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
    model.duplicates()->setGroups(CannedData::duplicates(), CannedData::equalFolders());
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
