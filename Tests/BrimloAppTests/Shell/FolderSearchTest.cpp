#include "BrimloApp/Shell/FolderSearch.h"

#include "BrimloApp/Duplicates/DuplicateSearch.h"
#include "BrimloApp/LargeFiles/LargeFileSearch.h"
#include "BrimloAppTests/Support/ModelTest.h"

#include <gmock/gmock.h>

namespace Brimlo {
namespace {

using testing::IsEmpty;
using testing::SizeIs;
using FolderSearchTest = Testing::ModelTest;

TEST_F(FolderSearchTest, SaysNothingOfASearchThatWasCancelled) {
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
