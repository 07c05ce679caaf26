#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Duplicates/DuplicateSearch.h"
#include "BrimloApp/LargeFiles/LargeFileSearch.h"
#include "BrimloAppTests/Support/ModelTest.h"

#include <gmock/gmock.h>

#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo {
namespace {

using AnalyzerVolumesTest = Testing::ModelTest;

TEST_F(AnalyzerVolumesTest, CountsWhatItCouldNotReadAndWhatItLeftOut) {
    constexpr uid_t kNobody = 65'534;
    write("tree/file", "");
    const std::string closed = makeFolder("tree/closed");
    const std::string volume = makeFolder("tree/volume");
    // The pools have no thread yet; those to come get the namespace of this one.
    if (unshare(CLONE_NEWNS) != 0 ||
        mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("none", volume.c_str(), "tmpfs", 0, nullptr) != 0) {
        GTEST_SKIP() << "the right to mount is missing";
    }
    finish();
    chmod(home().c_str(), 0755);
    chmod(closed.c_str(), 0);
    ASSERT_EQ(seteuid(kNobody), 0);
    model().analyzer()->startScan(at("tree"));
    finish();
    model().largeFiles()->setRoot(at("tree"));
    model().largeFiles()->find();
    model().duplicates()->setRoot(at("tree"));
    model().duplicates()->find();
    finish();
    ASSERT_EQ(seteuid(0), 0);
    umount(volume.c_str());
    EXPECT_EQ(model().analyzer()->areas()->unreadableCount(), 1);
    EXPECT_EQ(model().analyzer()->areas()->leftOutCount(), 1);
    EXPECT_EQ(model().largeFiles()->unreadableCount(), 1);
    EXPECT_EQ(model().duplicates()->unreadableCount(), 1);
    EXPECT_EQ(model().analyzer()->areas()->count(), 2);
    chmod(closed.c_str(), 0700);
    model().analyzer()->startScan(at("tree"));
    finish();
    EXPECT_EQ(
        model().analyzer()->areas()->unreadableCount() +
            model().analyzer()->areas()->leftOutCount(),
        0);
}

}  // namespace
}  // namespace Brimlo
