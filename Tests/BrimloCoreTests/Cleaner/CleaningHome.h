#pragma once

#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCoreTests/Cleaner/Child.h"
#include "Support/TempHome.h"

#include <expected>
#include <filesystem>
#include <functional>
#include <memory>
#include <ostream>

#include <sys/stat.h>

namespace Brimlo {

/// For the messages of failed expectations.
inline void PrintTo(  // NOLINT(readability-identifier-naming): GoogleTest looks for it
    const CleanReport& report,
    std::ostream* stream) {
    *stream << report.processed << " processed, " << report.movedToTrashBytes << " bytes moved, "
            << report.journalIDs.size() << " entries";
    for (const auto* problems : {&report.failures, &report.refused, &report.unrecorded}) {
        for (const ItemProblem& problem : *problems) {
            *stream << "; " << problem.text();
        }
    }
}

namespace Testing {

/// A home folder with a journal, a Trash and a cleaner of its own.
class CleaningHome : public TempHome {
protected:
    static constexpr std::int64_t kItemSize = 7;

    /// Cleans the paths in one run, each as an item of `kItemSize` bytes.
    CleanReport clean(const std::vector<std::string>& paths, const CleanOptions& options = {}) {
        return cleaner_.execute(planFor(paths), DisposalMode::trash, false, options);
    }

    static CleanPlan planFor(const std::vector<std::string>& paths) {
        std::vector<CleanItem> items;
        items.reserve(paths.size());
        for (const std::string& path : paths) {
            items.push_back({.path = path, .size = kItemSize, .ruleID = "rule", .risk = {}});
        }
        return CleanPlan{items};
    }

    /// Moves one item to the Trash and returns its journal entry.
    JournalEntry trash(const std::string& path) {
        const CleanReport report = clean({path});
        EXPECT_FALSE(report.hasProblems()) << testing::PrintToString(report);
        return report.journalIDs.empty() ? JournalEntry{} : entry(report.journalIDs.front());
    }

    /// The journal, newest first.
    [[nodiscard]] std::vector<JournalEntry> entries() const { return journal_->entries().value(); }

    void change(const Uuid& id, const std::function<void(JournalEntry&)>& body) {
        EXPECT_TRUE(journal_->update({id}, body));
    }

    /// Puts an item back as the journal would tell of it: its path, or the reason why not.
    std::expected<std::string, std::string> undo(const JournalEntry& entry) {
        change(entry.id, [&](JournalEntry& stored) { stored = entry; });
        const UndoReport report = cleaner_.undo({entry.id});
        EXPECT_TRUE(report.unrecorded.empty());
        EXPECT_EQ(report.restored.size() + report.failures.size(), 1U);
        return report.failures.empty()
                   ? std::expected<std::string, std::string>{report.restored.at(0)}
                   : std::unexpected{report.failures.at(0).reason};
    }

    [[nodiscard]] JournalEntry entry(const Uuid& id) const {
        for (const JournalEntry& found : entries()) {
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
        struct stat status{};
        EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
        return status;
    }

    std::shared_ptr<Journal> journal_ = std::make_shared<Journal>(StoragePaths::journal());
    Cleaner cleaner_{journal_};
};

}  // namespace Testing
}  // namespace Brimlo
