#include "BrimloApp/Snapshot/CannedData.h"
#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Support/AppConfig.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string_view>
#include <vector>

namespace Brimlo::CannedData {
namespace {

using namespace std::chrono_literals;

constexpr std::int64_t kMB = 1'000'000;
constexpr std::chrono::sys_seconds kToday = std::chrono::sys_days{2026y / 11 / 16} + 10h;

struct Removal {
    std::string_view path;
    std::int64_t size = 0;  ///< That the journal tells of; what lies in the Trash is small.
    std::string_view ruleID;
};

struct Cleanup {
    std::chrono::hours ago{};
    std::vector<Removal> removals;
};

/// A file for a rule to find. It takes what is written, so it is kept small.
void leaveFile(const std::string& path, const std::size_t kilobytes) {
    std::filesystem::create_directories(std::filesystem::path{path}.parent_path());
    std::ofstream{path} << std::string(kilobytes * 1024, '.');
}

/// Moves what was cleaned to the Trash for real. The first one was put back since.
void carryOut(const Cleanup& cleanup) {
    std::vector<CleanItem> items;
    for (const auto& [path, size, ruleID] : cleanup.removals) {
        items.push_back(
            {StoragePaths::home() + "/" + std::string{path}, size, std::string{ruleID}, {}});
        leaveFile(items.back().path, 1);
    }
    const auto journal = std::make_shared<Journal>(StoragePaths::journal());
    const auto ids =
        Cleaner{journal}.execute(CleanPlan{items}, DisposalMode::trash, false).journalIDs;
    static_cast<void>(journal->update({ids.begin(), ids.end()}, [&](JournalEntry& entry) {
        entry.date = kToday - cleanup.ago;
        entry.undone = entry.ruleID == "xcode.derived-data";
    }));
}

}  // namespace

void furnishHome() {
    const std::string home = StoragePaths::home();
    const Cleanup cleanups[] = {
        {54h, {{"Library/Developer/DerivedData", 5230 * kMB, "xcode.derived-data"}}},
        {30h, {{"Library/Caches/Homebrew", 1460 * kMB, "homebrew.cache"}}          },
        {0h,
         {{"Library/Caches/com.spotify.client", 1890 * kMB, "app.spotify"},
          {"Projects/old-shop/node_modules", 923 * kMB, "artifact.node_modules"},
          {".npm/_logs", 31 * kMB, "npm.logs"}}                                    },
    };
    for (const Cleanup& cleanup : cleanups) {
        carryOut(cleanup);
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
    // Asked already: the question would else lie over whatever is shown first.
    static_cast<void>(
        AppConfig::change([](AppConfig& config) { config.cliInstallOffered = true; }));
    const std::string tool = home + "/resources/brimlo";
    leaveFile(tool, 1);
    std::filesystem::permissions(tool, std::filesystem::perms::owner_all);
    leaveFile(home + "/Library/Caches/Sketchbook/Previews/Coast.preview", 5200);
    leaveFile(home + "/Library/Caches/Sketchbook/Previews/Dunes.preview", 3100);
    leaveFile(home + "/Library/Caches/Sketchbook/Previews/Harbour.preview", 840);
}

}  // namespace Brimlo::CannedData
