#include "BrimloApp/Duplicates/DuplicateSearch.h"

#include "BrimloApp/History/History.h"
#include "BrimloApp/Overview/Machine.h"
#include "BrimloAppTests/Support/ModelTest.h"

#include <gmock/gmock.h>

namespace Brimlo {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class DuplicateSearchTest : public Testing::ModelTest {
protected:
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

TEST_F(DuplicateSearchTest, TellsHowManyCopiesCouldNotBeCloned) {
    makeDuplicates();
    ASSERT_THAT(model().duplicates()->groups(), SizeIs(1));
    DuplicateGroup group = model().duplicates()->groups().front();
    model().history()->purgeOwnTrash();
    model().duplicates()->clone(group);
    EXPECT_EQ(model().busy(), "Removing from Trash…") << "one at a time";
    finish();
    fill(".local/share/Trash/files/data", 100'000);
    // A name that is taken makes both clones fail, on file systems that know clones as well.
    write("dups/b.brimlo-clone");
    write("dups/c.brimlo-clone");
    model().duplicates()->clone(group);
    EXPECT_EQ(model().busy(), "Replacing duplicates with clones…");
    model().history()->emptyTrash();
    EXPECT_EQ(model().busy(), "Replacing duplicates with clones…") << "one at a time";
    finish();
    EXPECT_GE(model().machine()->trashBytes(), 100'000) << "the disk is looked at anew";
    EXPECT_EQ(model().banner()->text(), "Cloned some duplicates; 2 failed (different volume?).");
    EXPECT_THAT(model().duplicates()->groups(), IsEmpty());
    group.copies.resize(1);
    model().duplicates()->clone(group);
    finish();
    EXPECT_EQ(model().banner()->text(), "Replaced duplicates with clones, sharing 0 bytes.");
}

TEST_F(DuplicateSearchTest, ReplacesNoCopyThatChangedSinceItWasFound) {
    makeDuplicates();
    write("dups/b", "an edit");
    write("dups/c", std::string(1'048'576, 'e'));
    model().duplicates()->clone(model().duplicates()->groups().front());
    finish();
    EXPECT_EQ(Testing::contentOf(at("dups/b")), "an edit");
    EXPECT_TRUE(model().banner()->text().startsWith("Cloned some duplicates; 2 failed"));
}

}  // namespace
}  // namespace Brimlo
