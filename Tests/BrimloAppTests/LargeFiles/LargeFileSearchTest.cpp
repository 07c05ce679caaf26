#include "BrimloApp/LargeFiles/LargeFileSearch.h"

#include "BrimloApp/Duplicates/DuplicateSearch.h"
#include "BrimloApp/LargeFiles/LargeFileRows.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloAppTests/Support/ModelTest.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace Brimlo {
namespace {

using testing::IsEmpty;
using testing::SizeIs;
using LargeFileSearchTest = Testing::ModelTest;

TEST_F(LargeFileSearchTest, FindsLargeFilesAndTakesARowAwayWhenItsFileWent) {
    const std::string file = write("large/film", "");
    std::filesystem::resize_file(file, 0);
    ASSERT_EQ(std::system(("fallocate -l 60000000 " + file).c_str()), 0);
    model().largeFiles()->setRoot(at("large"));
    model().largeFiles()->find();
    finish();
    ASSERT_THAT(model().largeFiles()->files(), SizeIs(1));
    EXPECT_TRUE(model().largeFiles()->hasSearched());

    const auto node = model().largeFiles()->files().front();
    model().cleanup()->run(CleanPlan{{{.path = write("small")}}});
    model().largeFiles()->trash(node);
    finish();
    EXPECT_THAT(model().largeFiles()->files(), SizeIs(1)) << "another cleanup was running";
    EXPECT_EQ(model().banner()->text(), "Could not start: another cleanup is still running.");
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
    fill("large/film", 60'000'000);
    std::filesystem::create_hard_link(file, at("outside"));
    model().largeFiles()->find();
    finish();
    ASSERT_THAT(model().largeFiles()->files(), SizeIs(1));
    LargeFileRows& rows = *model().largeFiles()->rows();
    EXPECT_EQ(rows.selectedFrees(), "");
    rows.toggleSelected(0);
    EXPECT_EQ(rows.selectedFrees(), "frees 0 bytes");
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

TEST_F(LargeFileSearchTest, SaysNothingOfASearchThatWasCancelled) {
    write("dups/a", std::string(1'048'576, 'd'));
    write("dups/b", std::string(1'048'576, 'd'));
    model().duplicates()->setRoot(at("dups"));
    model().duplicates()->find();
    finish();
    ASSERT_THAT(model().duplicates()->groups(), SizeIs(1));
    model().duplicates()->find();
    EXPECT_THAT(model().duplicates()->groups(), IsEmpty()) << "of the search before";
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
