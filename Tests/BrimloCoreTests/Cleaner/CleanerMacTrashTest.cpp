#include "BrimloCore/Platform/Trash.h"
#include "BrimloCore/Platform/TrashItem.h"
#include "BrimloCoreTests/Cleaner/CleaningHome.h"

#include <cerrno>
#include <functional>

#include <unistd.h>

namespace Brimlo {
namespace {

using Platform::FileIdentity;
using Testing::exists;

/// What is moved here goes to the Trash of who runs the test, since the system knows no other; all
/// of it is taken out again.
class CleanerMacTrashTest : public Testing::CleaningHome {
protected:
    static Platform::TrashMove::Request request(const std::string& path) {
        return {.path = path, .identity = *FileIdentity::of(path), .entryID = "id"};
    }
};

TEST_F(CleanerMacTrashTest, MovesEachKindOfItemAndBringsItBack) {
    const std::string target = write("target");
    const std::string paths[] = {
        write("brimlo test file"),
        at("brimlo test folder"),
        link("brimlo test link", target),
        link("brimlo test dangling link", "nowhere"),
        write("brimlo test \u00e9\U0001F600"),
    };
    write("brimlo test folder/inside");
    const auto before = Testing::describeTree(at("brimlo test folder"));
    for (const std::string& path : paths) {
        SCOPED_TRACE(path);
        const std::string identity = *Cleaner::identity(path);
        const JournalEntry entry = trash(path);
        EXPECT_FALSE(exists(path));
        ASSERT_TRUE(entry.trashPath);
        EXPECT_TRUE(entry.trashPath->contains("/.Trash/")) << *entry.trashPath;
        EXPECT_EQ(entry.trashID, identity);
        EXPECT_EQ(Cleaner::identity(*entry.trashPath), identity);
        EXPECT_EQ(undo(entry), path);
        EXPECT_FALSE(exists(*entry.trashPath));
        EXPECT_EQ(Cleaner::identity(path), identity);
    }
    EXPECT_EQ(Testing::describeTree(at("brimlo test folder")), before);
    EXPECT_TRUE(exists(target));
}

TEST_F(CleanerMacTrashTest, MovesNothingButWhatWasJudged) {
    const std::string path = write("brimlo test file");
    auto wanted = request(path);
    ++wanted.identity.inode;
    Platform::TrashGroup group;
    EXPECT_EQ(group.prepare(wanted).error().code, ESTALE);

    auto move = group.prepare(request(path));
    ASSERT_TRUE(move);
    ASSERT_EQ(rename(path.c_str(), at("kept").c_str()), 0);
    EXPECT_EQ(move->commit().error().code, ENOENT);
    write("brimlo test file", "another");
    EXPECT_EQ(move->commit().error().code, ESTALE);
    EXPECT_EQ(Testing::contentOf(path), "another");

    const std::string parent = link("parent", at("."));
    auto byLink = request(path);
    byLink.path = parent + "/brimlo test file";
    EXPECT_FALSE(group.prepare(byLink));
}

TEST_F(CleanerMacTrashTest, OverwritesNothing) {
    const std::string path = write("brimlo test file", "trashed");
    const JournalEntry entry = trash(path);
    write("brimlo test file", "new");
    EXPECT_EQ(undo(entry).error(), "Something already exists at " + path);
    const FileIdentity identity = *FileIdentity::of(*entry.trashPath);
    EXPECT_EQ(Platform::TrashItem::putBack(*entry.trashPath, identity, path).error().code, EEXIST);
    EXPECT_EQ(Testing::contentOf(path), "new");
    ASSERT_EQ(unlink(path.c_str()), 0);
    EXPECT_EQ(undo(entry), path);
    EXPECT_EQ(Testing::contentOf(path), "trashed");
}

TEST_F(CleanerMacTrashTest, DeletesForGoodOnlyWhatItIsAskedFor) {
    write("brimlo test folder/closed/inside");
    chmod(at("brimlo test folder/closed").c_str(), 0);
    const JournalEntry entry = trash(at("brimlo test folder"));
    const FileIdentity identity = *FileIdentity::of(*entry.trashPath);
    EXPECT_EQ(
        Platform::TrashItem::remove(*entry.trashPath, {identity.device, identity.inode + 1})
            .error()
            .code,
        ESTALE);
    EXPECT_TRUE(exists(*entry.trashPath));
    EXPECT_TRUE(Platform::TrashItem::remove(*entry.trashPath, identity));
    EXPECT_FALSE(exists(*entry.trashPath));
}

}  // namespace
}  // namespace Brimlo
