#include "BrimloApp/Snapshot/CannedData.h"
#include "BrimloCore/Support/Journal.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>

namespace Brimlo::CannedData {
namespace {

using namespace std::chrono_literals;

constexpr std::int64_t kMB = 1'000'000;
constexpr std::chrono::sys_seconds kToday = std::chrono::sys_days{2026y / 11 / 16} + 10h;

struct Removal {
    std::string_view path;
    std::int64_t size = 0;
    std::string_view ruleID;
    std::chrono::hours ago{};
    Uuid batch;
};

JournalEntry entry(const Removal& removal) {
    JournalEntry made = JournalEntry::make(
        {.originalPath = home() + "/" + std::string{removal.path},
         .trashPath = home() + "/.local/share/Trash/files/" + std::string{Path::name(removal.path)},
         .size = removal.size,
         .ruleID = std::string{removal.ruleID},
         .trashID = std::nullopt,
         .batchID = removal.batch});
    made.date = kToday - removal.ago;
    made.undone = removal.ruleID == "xcode.derived-data";
    return made;
}

/// A file for a rule to find. It takes what is written, so it is kept small.
void leaveFile(const std::string& path, const std::size_t kilobytes) {
    std::filesystem::create_directories(std::filesystem::path{path}.parent_path());
    std::ofstream{path} << std::string(kilobytes * 1024, '.');
}

}  // namespace

void furnishHome() {
    const std::string home = StoragePaths::home();
    Journal journal{StoragePaths::journal()};
    const Uuid last = Uuid::random();
    const std::vector<Removal> removals{
        {"Library/Developer/DerivedData",     5230 * kMB, "xcode.derived-data",    54h, Uuid::random()},
        {"Library/Caches/Homebrew",           1460 * kMB, "homebrew.cache",        30h, Uuid::random()},
        {"Library/Caches/com.spotify.client", 1890 * kMB, "app.spotify",           0h,  last          },
        {"Projects/old-shop/node_modules",    923 * kMB,  "artifact.node_modules", 0h,  last          },
        {".npm/_logs",                        31 * kMB,   "npm.logs",              0h,  last          },
    };
    for (const Removal& removal : removals) {
        journal.append(entry(removal));
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
    const std::string tool = home + "/resources/brimlo";
    leaveFile(tool, 1);
    std::filesystem::permissions(tool, std::filesystem::perms::owner_all);
    leaveFile(home + "/Library/Caches/Sketchbook/Previews/Coast.preview", 5200);
    leaveFile(home + "/Library/Caches/Sketchbook/Previews/Dunes.preview", 3100);
    leaveFile(home + "/Library/Caches/Sketchbook/Previews/Harbour.preview", 840);
}

}  // namespace Brimlo::CannedData
