#pragma once

#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCoreTests/Cleaner/Child.h"
#include "Support/TempHome.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <ostream>

#include <sys/stat.h>

namespace Brimlo {

/// For the messages of failed expectations.
inline void PrintTo(const CleanReport& report, std::ostream* stream) {
    *stream << report.processed << " processed, " << report.movedToTrashBytes << " bytes moved, "
            << report.journalIDs.size() << " entries, failures "
            << testing::PrintToString(report.failures) << ", refused "
            << testing::PrintToString(report.refused);
}

namespace Testing {

/// A home folder with a journal, a Trash and a cleaner of its own.
class CleaningHome : public TempHome {
protected:
    static constexpr std::int64_t kItemSize = 7;

    /// Cleans the paths in one run, each as an item of `kItemSize` bytes.
    CleanReport clean(
        const std::vector<std::string>& paths, const Cleaner::Progress& progress = {}) {
        return cleaner_.execute(planFor(paths), DisposalMode::trash, false, progress);
    }

    static CleanPlan planFor(const std::vector<std::string>& paths) {
        std::vector<CleanItem> items;
        for (const std::string& path : paths) {
            items.push_back({.path = path, .size = kItemSize, .ruleID = "rule", .risk = {}});
        }
        return CleanPlan{items};
    }

    /// Moves one item to the Trash and returns its journal entry.
    JournalEntry trash(const std::string& path) {
        const CleanReport report = clean({path});
        EXPECT_EQ(report.failures, std::vector<std::string>{});
        EXPECT_EQ(report.refused, std::vector<std::string>{});
        return report.journalIDs.empty() ? JournalEntry{} : entry(report.journalIDs.front());
    }

    [[nodiscard]] JournalEntry entry(const Uuid& id) const {
        for (const JournalEntry& found : journal_->entries()) {
            if (found.id == id) {
                return found;
            }
        }
        ADD_FAILURE() << "no journal entry " << id.text();
        return {};
    }

    [[nodiscard]] std::string inTrash(const std::string& name) const {
        return at(".local/share/Trash/files/" + name);
    }

    [[nodiscard]] std::string noteOf(const std::string& name) const {
        return at(".local/share/Trash/info/" + name + ".trashinfo");
    }

    /// Runs the rest of a test as a user whom permissions bind. The home and the journal's folder
    /// are this user's; what a test has made before stays with the one who made it.
    void asOrdinaryUser(const std::function<void()>& body) {
        std::filesystem::remove_all(at("Library"));
        Testing::asOrdinaryUser(home(), [&] {
            makeFolder("Library/Application Support/Brimlo");
            body();
        });
    }

    static struct stat statusOf(const std::string& path) {
        struct stat status {};
        EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
        return status;
    }

    std::shared_ptr<Journal> journal_ = std::make_shared<Journal>(StoragePaths::journal());
    Cleaner cleaner_{journal_};
};

}  // namespace Testing
}  // namespace Brimlo
