#include "BrimloApp/Analyzer/Analyzer.h"

#include "BrimloApp/Duplicates/DuplicateSearch.h"
#include "BrimloApp/History/History.h"
#include "BrimloApp/LargeFiles/LargeFileSearch.h"
#include "BrimloApp/Overview/Machine.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/SmartClean/SmartClean.h"
#include "BrimloAppTests/Support/ModelTest.h"
#include "BrimloCore/DiskScanner/FileTree.h"
#include "BrimloCore/ScanRecords/ScanHistory.h"

#include <QtTest/QSignalSpy>
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace Brimlo {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

class AnalyzerTest : public Testing::ModelTest {
protected:
    AnalyzerTest() {
        write("tree/large/inner/data", std::string(400'000, 'a'));
        write("tree/small", std::string(100'000, 'b'));
        write("tree/stays", std::string(50'000, 'c'));
        makeFolder("tree/empty");
    }

    void scan() {
        model().analyzer()->startScan(at("tree"));
        finish();
    }

    std::shared_ptr<FileNode> child(const std::string& name) {
        const auto children = model().analyzer()->rows()->nodes();
        const auto found =
            std::ranges::find(children, name, [](const auto& node) { return node->name(); });
        return found == children.end() ? nullptr : *found;
    }

    std::vector<std::string> names() {
        std::vector<std::string> names;
        for (const auto& node : model().analyzer()->rows()->nodes()) {
            names.emplace_back(node->name());
        }
        return names;
    }
};

TEST_F(AnalyzerTest, ScansAFolderAndTellsItsProgressInSteps) {
    model();
    finish();
    const std::size_t idle = clock.waiting();
    model().analyzer()->startScan(at("tree"));
    EXPECT_EQ(clock.waiting(), idle + 1) << "the sampling";
    model().analyzer()->startScan("/");
    EXPECT_EQ(model().analyzer()->scanRoot(), at("tree")) << "a scan is running";
    Background::waitForDone();
    const QSignalSpy samples{model().analyzer(), &Analyzer::progressChanged};
    clock.advance(150ms);
    EXPECT_TRUE(model().analyzer()->isScanning()) << "its result is not home";
    EXPECT_EQ(samples.count(), 1);

    fill(".local/share/Trash/files/data", 100'000);
    finish();
    EXPECT_EQ(clock.waiting(), idle);
    EXPECT_GE(model().machine()->trashBytes(), 100'000) << "the volume is read anew";
    EXPECT_EQ(model().analyzer()->scanFiles(), 3);
    EXPECT_GE(model().analyzer()->scanBytes(), 550'000);
    EXPECT_THAT(names(), ElementsAre("large", "small", "stays", "empty"));
}

TEST_F(AnalyzerTest, ThrowsTheTreeOfACancelledScanAway) {
    scan();
    model().analyzer()->startScan("/usr");
    EXPECT_EQ(model().analyzer()->root(), nullptr);
    model().analyzer()->scan();  // None beside the first, which no cancel would reach.
    model().analyzer()->cancelScan();
    finish();
    EXPECT_FALSE(model().analyzer()->hasTree());
    EXPECT_TRUE(ScanHistory::newest(at("tree")).record) << "of the scan that ended";
    EXPECT_FALSE(ScanHistory::newest("/usr").record);
    EXPECT_THAT(model().analyzer()->rows()->nodes(), IsEmpty());
    // Nor is there a tree of what has nothing to give.
    model().analyzer()->startScan(at("nowhere"));
    finish();
    EXPECT_FALSE(model().analyzer()->hasTree());
    EXPECT_FALSE(model().analyzer()->isScanning());
}

TEST_F(AnalyzerTest, TellsHowFoldersGrewSinceAnEarlierScan) {
    fill("tree/grown/data", 2'000'000);
    fill("tree/shrunk/data", 5'000'000);
    fill("tree/same/data", 2'000'000);
    const auto growths = [&] {
        std::map<std::string, std::string> found;
        NodeRows& rows = *model().analyzer()->rows();
        const int role = rows.roleNames().key("growth");
        for (int row = 0; row < rows.count(); ++row) {
            const std::string words = rows.data(rows.index(row), role).toString().toStdString();
            if (!words.empty()) {
                found.emplace(rows.nodes()[static_cast<std::size_t>(row)]->name(), words);
            }
        }
        return found;
    };
    scan();
    EXPECT_THAT(growths(), IsEmpty());
    EXPECT_FALSE(model().analyzer()->since().isValid());
    EXPECT_EQ(model().analyzer()->grewMost(), "");
    // A scan of a day ago comes before one of a moment ago.
    auto dayAgo = ScanHistory::newest(at("tree")).record.value();
    fill("tree/grown/between", 1'500'000);
    scan();
    EXPECT_THAT(growths(), ElementsAre(Pair("grown", "+1.5 MB")));
    std::filesystem::remove(at("tree/grown/between"));
    dayAgo.time -= std::chrono::days{1};
    ASSERT_TRUE(ScanHistory::remember(dayAgo));

    fill("tree/grown/more", 3'000'000);
    std::filesystem::remove(at("tree/shrunk/data"));
    fill("tree/appeared/data", 2'000'000);
    scan();
    EXPECT_THAT(growths(), ElementsAre(Pair("grown", "+3 MB"), Pair("shrunk", "−5 MB")));
    EXPECT_THAT(
        model().analyzer()->grewMost().toStdString(),
        testing::MatchesRegex("~/tree/grown grew most since .*, by 3 MB\\."));
    EXPECT_TRUE(model().analyzer()->since().isValid());

    // Sorted by growth: those without any between the two, by size.
    NodeRows& rows = *model().analyzer()->rows();
    rows.order()->setKey("Growth");
    const auto names = [&] {
        std::vector<std::string> found;
        for (const auto& node : rows.nodes()) {
            found.emplace_back(node->name());
        }
        return found;
    };
    EXPECT_EQ(names().front(), "grown");
    EXPECT_EQ(names().back(), "shrunk");
    rows.order()->setAscending(true);
    EXPECT_EQ(names().front(), "shrunk");
    rows.order()->setKey("nonsense");
    EXPECT_EQ(rows.order()->key(), "Growth");
}

TEST_F(AnalyzerTest, TakesWhatWentOutOfTheTreeAndNoMore) {
    scan();
    const auto large = child("large");
    const auto stays = child("stays");
    const auto small = child("small");
    const std::int64_t before = model().analyzer()->root()->size;
    model().analyzer()->drill(large);
    const QSignalSpy went{model().analyzer(), &Analyzer::nodesWent};

    // The one fails because it is gone already.
    std::filesystem::remove(at("tree/stays"));
    const auto merged = std::make_shared<FileTree>()->add({.name = "2 small items"}).shared();
    merged->isAggregate = true;
    model().cleanup()->dispose({merged});
    EXPECT_FALSE(model().cleanup()->isCleaning())
        << "an aggregate stands for nothing that could go";
    model().cleanup()->dispose({large, small, stays});
    finish();
    EXPECT_THAT(model().cleanup()->lastReport()->failures, SizeIs(1));
    EXPECT_EQ(model().analyzer()->current(), model().analyzer()->root())
        << "the folder that was shown is gone";
    EXPECT_THAT(names(), ElementsAre("stays", "empty"));
    EXPECT_EQ(model().analyzer()->root()->size, before - large->size - small->size);
    EXPECT_EQ(went.count(), 1);

    // What the gate refuses stays, and so does what can't go, however it is called.
    write(".ssh/keys");
    write("a: b");
    model().analyzer()->startScan(home());
    finish();
    const auto odd = child("a: b");
    std::filesystem::remove(at("a: b"));
    model().cleanup()->dispose({child(".ssh"), odd});
    finish();
    EXPECT_THAT(model().cleanup()->lastReport()->refused, SizeIs(1));
    EXPECT_THAT(model().cleanup()->lastReport()->failures, SizeIs(1));
    EXPECT_NE(child(".ssh"), nullptr);
    EXPECT_NE(child("a: b"), nullptr);
}

TEST_F(AnalyzerTest, TakesWhatWentOutOfWhateverTreeIsShownThen) {
    scan();
    {
        // The scan ends while the clean is still to come.
        const Testing::HeldWork held{Background::writers()};
        model().cleanup()->dispose({child("small")});
        model().analyzer()->scan();
        waitFor([this] { return !model().analyzer()->isScanning(); });
        EXPECT_THAT(names(), ElementsAre("large", "small", "stays", "empty"));
    }
    finish();
    EXPECT_THAT(names(), ElementsAre("large", "stays", "empty"));

    {
        // The clean ends while the scan is still to come home. What it then has seen before the
        // clean is played by a new file.
        const auto stays = child("stays");
        const Testing::HeldWork held;
        model().analyzer()->scan();
        model().cleanup()->dispose({stays});
        waitFor([this] { return !model().cleanup()->isCleaning(); });
        write("tree/stays");
    }
    finish();
    EXPECT_THAT(names(), ElementsAre("large", "empty"));
    scan();
    EXPECT_THAT(names(), ElementsAre("large", "stays", "empty")) << "only that one scan";
}

TEST_F(AnalyzerTest, ListsAgainWhatAnUndoBroughtBack) {
    write(".cache/thumbnails/normal/data");
    fill("large/film", 60'000'000);
    write("dups/a", std::string(1'048'576, 'd'));
    write("dups/b", std::string(1'048'576, 'd'));
    model().duplicates()->setRoot(at("dups"));
    model().duplicates()->find();
    model().largeFiles()->setRoot(at("large"));
    model().largeFiles()->find();
    suggest();
    scan();
    model().analyzer()->drill(child("large"));
    model().cleanup()->run(model().smartClean()->currentPlan());
    finish();
    model().largeFiles()->trash(model().largeFiles()->files().front());
    finish();
    model().duplicates()->trash(model().duplicates()->groups().front());
    finish();
    model().cleanup()->dispose({child("inner")});
    finish();
    ASSERT_EQ(
        model().smartClean()->suggestions().size() + model().largeFiles()->files().size() +
            model().duplicates()->groups().size() + model().analyzer()->rows()->nodes().size(),
        0U);
    for (const HistoryBatch& batch : std::vector{model().history()->batches()}) {
        model().history()->undoBatch(batch);
        finish();
    }
    EXPECT_EQ(suggestion("photos.thumbnails").items.front().path, at(".cache/thumbnails/normal"));
    EXPECT_THAT(model().largeFiles()->files(), SizeIs(1));
    EXPECT_THAT(model().duplicates()->groups(), SizeIs(1));
    EXPECT_THAT(names(), ElementsAre("inner")) << "in the folder that was open";
}

}  // namespace
}  // namespace Brimlo
