#include "BrimloApp/Analyzer/Analyzer.h"

#include "BrimloApp/Duplicates/DuplicateSearch.h"
#include "BrimloApp/History/History.h"
#include "BrimloApp/LargeFiles/LargeFileSearch.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/SmartClean/SmartClean.h"
#include "BrimloAppTests/Support/ModelTest.h"

#include <QtCore/QFileInfo>
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

namespace Brimlo {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using Testing::exists;
using testing::IsEmpty;
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
        const auto children = model().analyzer()->currentChildren();
        const auto found =
            std::ranges::find(children, name, [](const auto& node) { return node->name; });
        return found == children.end() ? nullptr : *found;
    }

    std::vector<std::string> names() {
        std::vector<std::string> names;
        for (const auto& node : model().analyzer()->currentChildren()) {
            names.push_back(node->name);
        }
        return names;
    }

    /// Three copies of what counts as large enough to be compared.
    void makeDuplicates() {
        for (const char* name : {"dups/a", "dups/b", "dups/c"}) {
            write(name, std::string(1'048'576, 'd'));
        }
        model().duplicates()->setRoot(at("dups"));
        model().duplicates()->find();
        finish();
    }
};

TEST_F(AnalyzerTest, ScansAFolderAndTellsItsProgressInSteps) {
    model();
    finish();
    const std::size_t idle = clock.waiting();
    changes();
    model().analyzer()->startScan(at("tree"));
    EXPECT_THAT(changes(), ElementsAre("Analyzer.scanRoot", "Analyzer.isScanning"));
    EXPECT_EQ(clock.waiting(), idle + 1) << "the sampling";
    model().analyzer()->startScan("/");
    EXPECT_EQ(model().analyzer()->scanRoot(), at("tree")) << "a scan is running";
    Background::waitForDone();
    clock.advance(150ms);
    EXPECT_TRUE(model().analyzer()->isScanning()) << "its result is not home";
    EXPECT_THAT(changes(), ElementsAre("Analyzer.progress")) << "a sample";

    write(".local/share/Trash/files/data", std::string(100'000, 'x'));
    finish();
    EXPECT_EQ(clock.waiting(), idle);
    auto told = changes();
    std::erase(told, "Machine.volume");
    EXPECT_THAT(told, ElementsAre("Analyzer.isScanning", "Analyzer.current", "Machine.trashBytes"))
        << "the result, and the volume read anew";
    EXPECT_EQ(model().analyzer()->scanFiles(), 3);
    EXPECT_GE(model().analyzer()->scanBytes(), 550'000);
    EXPECT_THAT(names(), ElementsAre("large", "small", "stays", "empty"));
}

TEST_F(AnalyzerTest, ThrowsTheTreeOfACancelledScanAway) {
    scan();
    model().analyzer()->startScan("/usr");
    EXPECT_EQ(model().analyzer()->root(), nullptr);
    model().analyzer()->cancelScan();
    finish();
    EXPECT_FALSE(model().analyzer()->hasTree());
    EXPECT_THAT(model().analyzer()->currentChildren(), IsEmpty());
    // A file is nothing to read a folder from.
    model().analyzer()->startScan(at("tree/small"));
    finish();
    EXPECT_FALSE(model().analyzer()->hasTree());
    // Nor is there a tree of what has nothing to give.
    model().analyzer()->startScan(at("nowhere"));
    finish();
    EXPECT_FALSE(model().analyzer()->hasTree());
    EXPECT_FALSE(model().analyzer()->isScanning());
}

TEST_F(AnalyzerTest, OpensOnlyWhatHasSomethingInIt) {
    scan();
    const auto top = model().analyzer()->current();
    model().analyzer()->drill(child("small"));
    model().analyzer()->drill(child("empty"));
    EXPECT_EQ(model().analyzer()->current(), top);
    model().analyzer()->drill(child("large"));
    EXPECT_THAT(names(), ElementsAre("inner"));
    model().analyzer()->setCurrent(model().analyzer()->current()->parent.lock());
    EXPECT_EQ(model().analyzer()->current(), top);

    model().analyzer()->setSortKey("Name");
    model().analyzer()->setAscending(true);
    EXPECT_THAT(names(), ElementsAre("empty", "large", "small", "stays"));
    changes();
    model().analyzer()->setSortKey("Colour");
    EXPECT_THAT(changes(), IsEmpty());
}

TEST_F(AnalyzerTest, TakesWhatWentOutOfTheTreeAndNoMore) {
    scan();
    const auto large = child("large");
    const auto stays = child("stays");
    const auto small = child("small");
    const std::int64_t before = model().analyzer()->root()->size;
    model().analyzer()->drill(large);
    FileNode aggregate;
    changes();

    // The one fails because it is gone already.
    std::filesystem::remove(at("tree/stays"));
    auto merged = std::make_shared<FileNode>();
    merged->isAggregate = true;
    merged->path = at("tree");
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
    EXPECT_THAT(changes(), Contains("Analyzer.nodesWent").Times(1));

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

TEST_F(AnalyzerTest, FindsLargeFilesAndTakesARowAwayWhenItsFileWent) {
    const std::string file = write("large/film", "");
    std::filesystem::resize_file(file, 0);
    ASSERT_EQ(std::system(("fallocate -l 60000000 " + file).c_str()), 0);
    scan();
    model().largeFiles()->setRoot(at("large"));
    model().largeFiles()->find();
    finish();
    ASSERT_THAT(model().largeFiles()->files(), SizeIs(1));
    EXPECT_TRUE(model().largeFiles()->hasSearched());

    const auto node = model().largeFiles()->files().front();
    model().cleanup()->dispose({child("small")});
    model().largeFiles()->trash(node);
    finish();
    EXPECT_THAT(model().largeFiles()->files(), SizeIs(1)) << "another cleanup was running";
    EXPECT_EQ(model().banner(), "Could not start: another cleanup is still running.");
    std::filesystem::rename(file, at("elsewhere"));
    model().largeFiles()->trash(node);
    finish();
    EXPECT_THAT(model().cleanup()->lastReport()->failures, SizeIs(1));
    EXPECT_THAT(model().largeFiles()->files(), SizeIs(1));
    std::filesystem::rename(at("elsewhere"), file);
    model().largeFiles()->trash(node);
    finish();
    EXPECT_THAT(model().largeFiles()->files(), IsEmpty());

    model().largeFiles()->setRoot(at("large"));
    write("large/film", std::string(60'000'000, 'x'));
    model().largeFiles()->find();
    finish();
    ASSERT_THAT(model().largeFiles()->files(), SizeIs(1));
    const Testing::Arrivals searches;
    {
        const Testing::HeldWork held;
        model().largeFiles()->find();
        EXPECT_THAT(model().largeFiles()->files(), IsEmpty()) << "of the search before";
        model().largeFiles()->find();
        model().largeFiles()->cancel();
    }
    finish();
    EXPECT_EQ(searches.count(), 1) << "never two at once";
    EXPECT_FALSE(model().largeFiles()->isSearching());
}

TEST_F(AnalyzerTest, ListsAgainWhatAnUndoBroughtBack) {
    write(".cache/thumbnails/normal/data");
    write("large/film", std::string(60'000'000, 'x'));
    makeDuplicates();
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
            model().duplicates()->groups().size() + model().analyzer()->currentChildren().size(),
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

TEST_F(AnalyzerTest, MovesAllButOneCopyToTheTrash) {
    makeDuplicates();
    ASSERT_THAT(model().duplicates()->groups(), SizeIs(1));
    const DuplicateGroup group = model().duplicates()->groups().front();
    EXPECT_THAT(group.paths, ElementsAre(at("dups/a"), at("dups/b"), at("dups/c")));
    model().duplicates()->trash(group);
    finish();
    EXPECT_THAT(model().duplicates()->groups(), IsEmpty());
    EXPECT_TRUE(exists(at("dups/a")));
    EXPECT_FALSE(exists(at("dups/b")));
    EXPECT_EQ(model().cleanup()->lastReport()->processed, 2);
}

TEST_F(AnalyzerTest, TellsHowManyCopiesCouldNotBeCloned) {
    makeDuplicates();
    ASSERT_THAT(model().duplicates()->groups(), SizeIs(1));
    DuplicateGroup group = model().duplicates()->groups().front();
    // A name that is taken makes both clones fail, on file systems that know clones as well.
    write("dups/b.brimlo-clone");
    write("dups/c.brimlo-clone");
    model().duplicates()->clone(group);
    EXPECT_EQ(model().busy(), "Replacing duplicates with clones…");
    model().history()->emptyTrash();
    EXPECT_EQ(model().busy(), "Replacing duplicates with clones…") << "one at a time";
    finish();
    EXPECT_EQ(model().banner(), "Cloned some duplicates; 2 failed (different volume?).");
    EXPECT_THAT(model().duplicates()->groups(), IsEmpty());
    group.paths.resize(1);
    model().duplicates()->clone(group);
    finish();
    EXPECT_EQ(model().banner(), "Replaced duplicates with clones, sharing 0 bytes.");
}

TEST_F(AnalyzerTest, ReplacesNoCopyThatChangedSinceItWasFound) {
    makeDuplicates();
    write("dups/b", "an edit");
    write("dups/c", std::string(1'048'576, 'e'));
    model().duplicates()->clone(model().duplicates()->groups().front());
    finish();
    EXPECT_EQ(Testing::contentOf(at("dups/b")), "an edit");
    EXPECT_TRUE(model().banner().startsWith("Cloned some duplicates; 2 failed"));
}

TEST_F(AnalyzerTest, SaysNothingOfASearchThatWasCancelled) {
    write("dups/a", std::string(1'048'576, 'd'));
    write("dups/b", std::string(1'048'576, 'd'));
    model().duplicates()->setRoot(at("dups"));
    model().duplicates()->find();
    model().duplicates()->cancel();
    model().duplicates()->find();
    finish();
    EXPECT_THAT(model().duplicates()->groups(), IsEmpty()) << "a second search beside the first";
    EXPECT_FALSE(model().duplicates()->hasSearched());
    model().largeFiles()->setRoot(at("dups"));
    model().largeFiles()->find();
    finish();
    EXPECT_TRUE(model().largeFiles()->hasSearched());
    model().largeFiles()->find();
    model().largeFiles()->cancel();
    finish();
    EXPECT_FALSE(model().largeFiles()->hasSearched()) << "the one before does not count";
}

}  // namespace
}  // namespace Brimlo
