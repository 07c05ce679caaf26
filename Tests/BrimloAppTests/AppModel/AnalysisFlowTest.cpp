#include "BrimloAppTests/Support/ModelTest.h"

#include <QtCore/QFileInfo>
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

namespace Brimlo {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using Testing::exists;
using testing::IsEmpty;
using testing::SizeIs;

class AnalysisFlowTest : public Testing::ModelTest {
protected:
    AnalysisFlowTest() {
        write("tree/large/inner/data", std::string(400'000, 'a'));
        write("tree/small", std::string(100'000, 'b'));
        write("tree/stays", std::string(50'000, 'c'));
        makeFolder("tree/empty");
    }

    void scan() {
        model().startScan(at("tree"));
        finish();
    }

    std::shared_ptr<FileNode> child(const std::string& name) {
        const auto children = model().currentChildren();
        const auto found =
            std::ranges::find(children, name, [](const auto& node) { return node->name; });
        return found == children.end() ? nullptr : *found;
    }

    std::vector<std::string> names() {
        std::vector<std::string> names;
        for (const auto& node : model().currentChildren()) {
            names.push_back(node->name);
        }
        return names;
    }

    /// Three copies of what counts as large enough to be compared.
    void makeDuplicates() {
        for (const char* name : {"dups/a", "dups/b", "dups/c"}) {
            write(name, std::string(1'048'576, 'd'));
        }
        model().setDupRoot(at("dups"));
        model().findDuplicates();
        finish();
    }
};

TEST_F(AnalysisFlowTest, ScansAFolderAndTellsItsProgressInSteps) {
    model();
    finish();
    const std::size_t idle = clock.waiting();
    changes();
    model().startScan(at("tree"));
    EXPECT_THAT(changes(), ElementsAre("scanRoot", "isScanning"));
    EXPECT_EQ(clock.waiting(), idle + 1) << "the sampling";
    model().startScan("/");
    EXPECT_EQ(model().scanRoot(), at("tree")) << "a scan is running";
    Background::waitForDone();
    clock.advance(150ms);
    EXPECT_TRUE(model().isScanning()) << "its result is not home";
    EXPECT_THAT(changes(), ElementsAre("scanFiles", "scanBytes", "scanPath")) << "a sample";

    write(".local/share/Trash/files/data", std::string(100'000, 'x'));
    finish();
    EXPECT_EQ(clock.waiting(), idle);
    auto told = changes();
    std::erase(told, "volume");
    EXPECT_THAT(told, ElementsAre("isScanning", "root", "current", "trashBytes"))
        << "the result, and the volume read anew";
    EXPECT_EQ(model().scanFiles(), 3);
    EXPECT_GE(model().scanBytes(), 550'000);
    EXPECT_THAT(names(), ElementsAre("large", "small", "stays", "empty"));
}

TEST_F(AnalysisFlowTest, ThrowsTheTreeOfACancelledScanAway) {
    scan();
    model().startScan("/usr");
    EXPECT_EQ(model().root(), nullptr);
    model().cancelScan();
    finish();
    EXPECT_FALSE(model().hasTree());
    EXPECT_THAT(model().currentChildren(), IsEmpty());
    // A file is nothing to read a folder from.
    model().startScan(at("tree/small"));
    finish();
    EXPECT_FALSE(model().hasTree());
    // Nor is there a tree of what has nothing to give.
    model().startScan(at("nowhere"));
    finish();
    EXPECT_FALSE(model().hasTree());
    EXPECT_FALSE(model().isScanning());
}

TEST_F(AnalysisFlowTest, OpensOnlyWhatHasSomethingInIt) {
    scan();
    const auto top = model().current();
    model().drill(child("small"));
    model().drill(child("empty"));
    EXPECT_EQ(model().current(), top);
    model().drill(child("large"));
    EXPECT_THAT(names(), ElementsAre("inner"));
    model().setCurrent(model().current()->parent.lock());
    EXPECT_EQ(model().current(), top);

    model().setSortKeyID("Name");
    model().setAscending(true);
    EXPECT_THAT(names(), ElementsAre("empty", "large", "small", "stays"));
    changes();
    model().setSortKeyID("Colour");
    EXPECT_THAT(changes(), IsEmpty());
}

TEST_F(AnalysisFlowTest, TakesWhatWentOutOfTheTreeAndNoMore) {
    scan();
    const auto large = child("large");
    const auto stays = child("stays");
    const auto small = child("small");
    const std::int64_t before = model().root()->size;
    model().drill(large);
    FileNode aggregate;
    const int version = model().treeVersion();

    // The one fails because it is gone already.
    std::filesystem::remove(at("tree/stays"));
    auto merged = std::make_shared<FileNode>();
    merged->isAggregate = true;
    merged->path = at("tree");
    model().dispose({merged}, DisposalMode::trash);
    EXPECT_FALSE(model().isCleaning()) << "an aggregate stands for nothing that could go";
    model().dispose({large, small, stays}, DisposalMode::trash);
    finish();
    EXPECT_THAT(model().lastReport()->failures, SizeIs(1));
    EXPECT_EQ(model().current(), model().root()) << "the folder that was shown is gone";
    EXPECT_THAT(names(), ElementsAre("stays", "empty"));
    EXPECT_EQ(model().root()->size, before - large->size - small->size);
    EXPECT_EQ(model().treeVersion(), version + 1);

    // What the gate refuses stays, and so does what can't go, however it is called.
    write(".ssh/keys");
    write("a: b");
    model().startScan(home());
    finish();
    const auto odd = child("a: b");
    std::filesystem::remove(at("a: b"));
    model().dispose({child(".ssh"), odd}, DisposalMode::trash);
    finish();
    EXPECT_THAT(model().lastReport()->refused, SizeIs(1));
    EXPECT_THAT(model().lastReport()->failures, SizeIs(1));
    EXPECT_NE(child(".ssh"), nullptr);
    EXPECT_NE(child("a: b"), nullptr);
}

TEST_F(AnalysisFlowTest, TakesWhatWentOutOfWhateverTreeIsShownThen) {
    scan();
    {
        // The scan ends while the clean is still to come.
        const Testing::HeldWork held{Background::writers()};
        model().dispose({child("small")}, DisposalMode::trash);
        model().startScan();
        waitFor([this] { return !model().isScanning(); });
        EXPECT_THAT(names(), ElementsAre("large", "small", "stays", "empty"));
    }
    finish();
    EXPECT_THAT(names(), ElementsAre("large", "stays", "empty"));

    {
        // The clean ends while the scan is still to come home. What it then has seen before the
        // clean is played by a new file.
        const auto stays = child("stays");
        const Testing::HeldWork held;
        model().startScan();
        model().dispose({stays}, DisposalMode::trash);
        waitFor([this] { return !model().isCleaning(); });
        write("tree/stays");
    }
    finish();
    EXPECT_THAT(names(), ElementsAre("large", "empty"));
    scan();
    EXPECT_THAT(names(), ElementsAre("large", "stays", "empty")) << "only that one scan";
}

TEST_F(AnalysisFlowTest, FindsLargeFilesAndTakesARowAwayWhenItsFileWent) {
    const std::string file = write("large/film", "");
    std::filesystem::resize_file(file, 0);
    ASSERT_EQ(std::system(("fallocate -l 60000000 " + file).c_str()), 0);
    scan();
    model().setLargeRoot(at("large"));
    model().findLargeFiles();
    finish();
    ASSERT_THAT(model().largeFiles(), SizeIs(1));
    EXPECT_TRUE(model().largeSearched());

    const auto node = model().largeFiles().front();
    model().dispose({child("small")}, DisposalMode::trash);
    model().trashLargeFile(node);
    finish();
    EXPECT_THAT(model().largeFiles(), SizeIs(1)) << "another cleanup was running";
    EXPECT_EQ(model().banner(), "Could not start: another cleanup is still running.");
    std::filesystem::rename(file, at("elsewhere"));
    model().trashLargeFile(node);
    finish();
    EXPECT_THAT(model().lastReport()->failures, SizeIs(1));
    EXPECT_THAT(model().largeFiles(), SizeIs(1));
    std::filesystem::rename(at("elsewhere"), file);
    model().trashLargeFile(node);
    finish();
    EXPECT_THAT(model().largeFiles(), IsEmpty());

    model().setLargeRoot(at("large"));
    write("large/film", std::string(60'000'000, 'x'));
    model().findLargeFiles();
    finish();
    ASSERT_THAT(model().largeFiles(), SizeIs(1));
    const Testing::Arrivals searches;
    {
        const Testing::HeldWork held;
        model().findLargeFiles();
        EXPECT_THAT(model().largeFiles(), IsEmpty()) << "of the search before";
        model().findLargeFiles();
        model().cancelLargeFiles();
    }
    finish();
    EXPECT_EQ(searches.count(), 1) << "never two at once";
    EXPECT_FALSE(model().isFindingLarge());
}

TEST_F(AnalysisFlowTest, ListsAgainWhatAnUndoBroughtBack) {
    write(".cache/thumbnails/normal/data");
    write("large/film", std::string(60'000'000, 'x'));
    makeDuplicates();
    model().setLargeRoot(at("large"));
    model().findLargeFiles();
    suggest();
    scan();
    model().drill(child("large"));
    model().runClean(model().currentPlan(), DisposalMode::trash);
    finish();
    model().trashLargeFile(model().largeFiles().front());
    finish();
    model().trashDuplicates(model().dupGroups().front());
    finish();
    model().dispose({child("inner")}, DisposalMode::trash);
    finish();
    ASSERT_EQ(
        model().suggestions().size() + model().largeFiles().size() + model().dupGroups().size() +
            model().currentChildren().size(),
        0U);
    for (const HistoryBatch& batch : std::vector{model().historyBatches()}) {
        model().undoBatch(batch);
        finish();
    }
    EXPECT_EQ(suggestion("photos.thumbnails").items.front().path, at(".cache/thumbnails/normal"));
    EXPECT_THAT(model().largeFiles(), SizeIs(1));
    EXPECT_THAT(model().dupGroups(), SizeIs(1));
    EXPECT_THAT(names(), ElementsAre("inner")) << "in the folder that was open";
}

TEST_F(AnalysisFlowTest, MovesAllButOneCopyToTheTrash) {
    makeDuplicates();
    ASSERT_THAT(model().dupGroups(), SizeIs(1));
    const DuplicateGroup group = model().dupGroups().front();
    EXPECT_THAT(group.paths, ElementsAre(at("dups/a"), at("dups/b"), at("dups/c")));
    model().trashDuplicates(group);
    finish();
    EXPECT_THAT(model().dupGroups(), IsEmpty());
    EXPECT_TRUE(exists(at("dups/a")));
    EXPECT_FALSE(exists(at("dups/b")));
    EXPECT_EQ(model().lastReport()->processed, 2);
}

TEST_F(AnalysisFlowTest, TellsHowManyCopiesCouldNotBeCloned) {
    makeDuplicates();
    ASSERT_THAT(model().dupGroups(), SizeIs(1));
    DuplicateGroup group = model().dupGroups().front();
    // A name that is taken makes both clones fail, on file systems that know clones as well.
    write("dups/b.brimlo-clone");
    write("dups/c.brimlo-clone");
    model().cloneDuplicates(group);
    EXPECT_EQ(model().busy(), "Replacing duplicates with clones…");
    model().emptyTrash();
    EXPECT_EQ(model().busy(), "Replacing duplicates with clones…") << "one at a time";
    finish();
    EXPECT_EQ(model().banner(), "Cloned some duplicates; 2 failed (different volume?).");
    EXPECT_THAT(model().dupGroups(), IsEmpty());
    group.paths.resize(1);
    model().cloneDuplicates(group);
    finish();
    EXPECT_EQ(model().banner(), "Replaced duplicates with clones, sharing 0 bytes.");
}

TEST_F(AnalysisFlowTest, ReplacesNoCopyThatChangedSinceItWasFound) {
    makeDuplicates();
    write("dups/b", "an edit");
    write("dups/c", std::string(1'048'576, 'e'));
    model().cloneDuplicates(model().dupGroups().front());
    finish();
    EXPECT_EQ(Testing::contentOf(at("dups/b")), "an edit");
    EXPECT_TRUE(model().banner().startsWith("Cloned some duplicates; 2 failed"));
}

TEST_F(AnalysisFlowTest, SaysNothingOfASearchThatWasCancelled) {
    write("dups/a", std::string(1'048'576, 'd'));
    write("dups/b", std::string(1'048'576, 'd'));
    model().setDupRoot(at("dups"));
    model().findDuplicates();
    model().cancelDuplicates();
    model().findDuplicates();
    finish();
    EXPECT_THAT(model().dupGroups(), IsEmpty()) << "a second search beside the first";
    EXPECT_FALSE(model().dupsSearched());
    model().setLargeRoot(at("dups"));
    model().findLargeFiles();
    finish();
    EXPECT_TRUE(model().largeSearched());
    model().findLargeFiles();
    model().cancelLargeFiles();
    finish();
    EXPECT_FALSE(model().largeSearched()) << "the one before does not count";
}

TEST_F(AnalysisFlowTest, TakesDroppedFoldersAndNothingElse) {
    const auto address = [this](const char* name) {
        return QUrl::fromLocalFile(QString::fromStdString(at(name)));
    };
    EXPECT_FALSE(model().scanDropped(address("tree/small")));
    EXPECT_FALSE(model().findLargeFilesInDropped(address("nowhere")));
    EXPECT_FALSE(model().findDuplicatesInDropped(QUrl{"https://example.org/tree"}));
    EXPECT_FALSE(model().isScanning() || model().isFindingLarge() || model().isFindingDupes());
    EXPECT_TRUE(model().scanDropped(address("tree")));
    EXPECT_TRUE(model().findLargeFilesInDropped(address("tree")));
    EXPECT_TRUE(model().findDuplicatesInDropped(address("tree")));
    EXPECT_TRUE(model().isScanning() && model().isFindingLarge() && model().isFindingDupes());
    EXPECT_EQ(model().scanRoot(), at("tree"));

    // Another one, while a search runs, is no new name for what that finds.
    model().findLargeFilesInDropped(address("tree/large"));
    model().findDuplicatesInDropped(address("tree/large"));
    EXPECT_EQ(model().largeRoot(), at("tree"));
    EXPECT_EQ(model().dupRoot(), at("tree"));
    finish();
}

}  // namespace
}  // namespace Brimlo
