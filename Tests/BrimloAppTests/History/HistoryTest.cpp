#include "BrimloApp/History/History.h"

#include "BrimloApp/Overview/Machine.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/Settings/Settings.h"
#include "BrimloAppTests/Support/ModelTest.h"
#include "BrimloCore/Platform/Privacy.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <gmock/gmock.h>

#include <filesystem>

#include <sys/stat.h>

namespace Brimlo {
namespace {

using Testing::contentOf;
using Testing::exists;
using testing::IsEmpty;
using testing::SizeIs;

class HistoryTest : public Testing::ModelTest {
protected:
    /// Cleans files of these names, as one cleanup.
    void clean(const std::vector<std::string>& names) {
        std::vector<CleanItem> items;
        items.reserve(names.size());
        for (const std::string& name : names) {
            items.push_back({.path = write(name, name), .size = 4096, .ruleID = {}, .risk = {}});
        }
        model().cleanup()->run(CleanPlan{items});
        finish();
    }
};

TEST_F(HistoryTest, RestoresWhatCanBeAndKeepsTheRestInTheTrash) {
    clean({"earlier"});
    clean({"a", "b", "c"});
    model().history()->show(JournalReading{});  // It was read before those of the cleanups.
    ASSERT_THAT(model().history()->batches(), SizeIs(2));
    write("b", "new");
    {
        const Testing::HeldWork held{Background::writers()};
        model().history()->undoBatch(model().history()->batches().front());
        model().history()->emptyTrash();
        model().history()->purgeOwnTrash();
        model().settings()->runAutoClean(true, false);
        EXPECT_EQ(model().busy(), "Restoring…") << "one at a time";
    }
    finish();
    EXPECT_EQ(
        model().banner()->text().toStdString(),
        "Restored 2 item(s). 1 could not be restored: Something already exists at " + at("b") +
            ".");
    EXPECT_FALSE(exists(at("earlier"))) << "another cleanup";
    EXPECT_EQ(contentOf(at("a")), "a");
    EXPECT_EQ(contentOf(at("b")), "new");
    EXPECT_EQ(model().history()->batches().front().restorableCount(), 1U);

    // The model's copy is not asked: what was undone elsewhere is not undone again.
    const HistoryBatch stale = model().history()->batches().front();
    std::filesystem::remove(at("b"));
    model().history()->undoBatch(stale);
    finish();
    model().history()->undoBatch(stale);
    finish();
    EXPECT_EQ(model().banner()->text(), "Restored 0 item(s).");
    EXPECT_EQ(contentOf(at("b")), "b");
}

TEST_F(HistoryTest, SaysWhenTheJournalCannotBeReadOrWritten) {
    clean({"a"});
    EXPECT_EQ(model().history()->journalProblem(), "");
    std::filesystem::remove(StoragePaths::journal());
    ASSERT_EQ(mkfifo(StoragePaths::journal().c_str(), 0600), 0);
    clean({"b"});
    EXPECT_EQ(model().history()->journalProblem(), "Invalid argument");
    EXPECT_THAT(model().history()->batches(), IsEmpty());
    const ReportFigures report = model().cleanup()->reportFigures();
    EXPECT_EQ(report.processed, 1);
    EXPECT_FALSE(report.canUndo);
    const QString lacks = ": it is in the Trash and the journal lacks it: Invalid argument";
    EXPECT_EQ(report.problems, QStringList{QString::fromStdString(at("b")) + lacks});
}

TEST_F(HistoryTest, PurgesAndEmptiesInItsOwnWords) {
    {
        const Testing::HeldWork held{Background::writers()};
        model().history()->purgeOwnTrash();
        model().history()->undoAll({});
        EXPECT_EQ(model().busy(), "Removing from Trash…");
    }
    finish();
    EXPECT_EQ(
        model().banner()->text(), "Permanently removed 0 bytes that Brimlo had moved to Trash.");

    clean({"a"});
    model().history()->purgeOwnTrash();
    finish();
    EXPECT_EQ(model().banner()->text(), "Permanently removed 4 KB that Brimlo had moved to Trash.");
    EXPECT_EQ(model().machine()->trashBytes(), 0);

    clean({"b"});
    model().history()->emptyTrash();
    EXPECT_EQ(model().busy(), "Emptying Trash…");
    finish();
    EXPECT_EQ(model().banner()->text(), "Emptied Trash: freed 4 KB.");

    clean({"c"});
    std::filesystem::remove_all(at(".local/share/Trash/files"));
    write(".local/share/Trash/files", "no folder");
    model().history()->emptyTrash();
    finish();
    EXPECT_THAT(
        model().banner()->text().toStdString(),
        testing::MatchesRegex("Could not empty Trash: .+\\."));
    EXPECT_EQ(
        model().banner()->text().contains("Full Disk Access"),
        !Platform::privacySettingsAddress().empty());
}

}  // namespace
}  // namespace Brimlo
