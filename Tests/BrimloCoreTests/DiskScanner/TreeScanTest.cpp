#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/DiskScanner/FolderPlace.h"
#include "BrimloCore/DiskScanner/UnreadableFolders.h"
#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCoreTests/Cleaner/Child.h"
#include "Support/DeepFolder.h"
#include "Support/TempHome.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <set>
#include <thread>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo {
namespace {

namespace fs = std::filesystem;

using Node = std::shared_ptr<FileNode>;

constexpr std::size_t kMiB = 1'048'576;

/// Names of the children, sorted.
std::vector<std::string> names(const Node& node) {
    std::vector<std::string> names;
    for (const FileNode* child : node->children()) {
        names.emplace_back(child->name());
    }
    std::ranges::sort(names);
    return names;
}

Node childOf(const Node& node, const std::string& name) {
    const auto found = std::ranges::find(node->children(), name, &FileNode::name);
    return found == node->children().end() ? nullptr : (*found)->shared();
}

class TreeScanTest : public Testing::TempHome {
protected:
    Node scan(const std::string& relative, const ScanOptions& options = {}) const {
        return DiskScanner{control, options}.scan(at(relative));
    }

    /// What the sum of all entries below a folder should be, each file of several names once.
    struct Sum {
        std::int64_t size = 0;
        std::int64_t fileCount = 0;
    };
    static Sum sumOf(const std::string& folder) {
        Sum sum{.size = Testing::allocatedBytes(folder), .fileCount = 0};
        std::set<std::uint64_t> linked;
        for (const auto& entry : fs::recursive_directory_iterator{folder}) {
            const auto status = Platform::entryStatus(entry.path().c_str());
            const bool isFolder = status->kind == Platform::EntryStatus::Kind::directory;
            sum.fileCount += isFolder ? 0 : 1;
            if (isFolder || status->linkCount < 2 || linked.insert(status->identity.inode).second) {
                sum.size += status->allocatedBytes;
            }
        }
        return sum;
    }

    static void expectSound(const Node& node) {
        ASSERT_TRUE(node->isDirectory);
        std::int64_t fileCount = 0;
        for (FileNode* child : node->children()) {
            EXPECT_EQ(child->parent(), node.get());
            EXPECT_EQ(
                child->path(),
                child->isAggregate ? node->path()
                                   : node->path() + "/" + std::string{child->name()});
            fileCount += child->fileCount;
            if (child->isDirectory) {
                expectSound(child->shared());
            }
        }
        EXPECT_EQ(node->fileCount, fileCount) << node->path();
    }

    const std::shared_ptr<ScanControl> control = std::make_shared<ScanControl>();
};

TEST_F(TreeScanTest, MergesWhatIsSmallInACrowdedFolder) {
    const struct {
        const char* name;
        int small;
        int large;
        int smallFolders;
        std::size_t kept;
        std::string merged;  ///< Empty where nothing is.
    } cases[] = {
        {"few",             40, 0,  0,  40, ""              },
        {"one too many",    41, 0,  0,  0,  "41 small items"},
        {"all large",       0,  41, 0,  41, ""              },
        {"one is small",    1,  41, 0,  41, "1 small items" },
        {"folders count",   20, 1,  20, 1,  "40 small items"},
        {"folders make it", 20, 1,  19, 40, ""              },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string folder = makeFolder(c.name);
        const std::string prefix = std::string{c.name} + "/";
        for (int i = 0; i < c.small; ++i) {
            fill(prefix + "small" + std::to_string(i), 1);
        }
        for (int i = 0; i < c.large; ++i) {
            fill(prefix + "large" + std::to_string(i), kMiB);
        }
        for (int i = 0; i < c.smallFolders; ++i) {
            fill(prefix + "folder" + std::to_string(i) + "/file", 5'000);
        }
        const Node root = scan(c.name);
        const Sum sum = sumOf(folder);
        EXPECT_EQ(root->size, sum.size);
        EXPECT_EQ(root->fileCount, sum.fileCount);
        expectSound(root);
        ASSERT_EQ(root->children().size(), c.kept + (c.merged.empty() ? 0 : 1));
        if (!c.merged.empty()) {
            EXPECT_EQ(root->children().back()->name(), c.merged);
            EXPECT_TRUE(root->children().back()->isAggregate);
            EXPECT_TRUE(root->children().back()->children().empty());
        }
    }
    const ScanOptions exact{
        .keepThreshold = Testing::allocatedBytes(at("few/small0")), .alwaysKeepBelowCount = 0};
    EXPECT_EQ(scan("few", exact)->children().size(), 40U) << "what has the threshold stays";
}

TEST_F(TreeScanTest, TakesEveryKindOfEntryForWhatItIs) {
    makeFolder("t/empty");
    fill("t/big/file", 100'000);
    link("t/link", "big");
    link("t/dangling", "nowhere");
    fill("t/line\nend", 10);
    fill("t/\xff\xfe", 10);
    fill("t/" + std::string(255, 'n'), 10);
    ASSERT_EQ(mkfifo(at("t/pipe").c_str(), 0600), 0);
    ASSERT_EQ(mknod(at("t/socket").c_str(), S_IFSOCK | 0600, 0), 0);
    fs::create_hard_link(at("t/big/file"), at("t/again"));
    fs::resize_file(fill("t/sparse", 0), std::uintmax_t{8} << 40U);
    age(at("t/empty"), 100);
    const Node root = scan("t");
    EXPECT_EQ(root->name(), "t");
    EXPECT_EQ(root->size, sumOf(at("t")).size);
    EXPECT_EQ(root->fileCount, 10);
    expectSound(root);
    EXPECT_TRUE(childOf(root, "empty")->isDirectory);
    EXPECT_EQ(childOf(root, "empty")->size, Testing::allocatedBytes(at("t/empty")));
    EXPECT_EQ(
        childOf(root, "empty")->modified, Platform::entryStatus(at("t/empty").c_str())->modified);
    EXPECT_FALSE(childOf(root, "link")->isDirectory);
    EXPECT_EQ(
        childOf(root, "again")->size + childOf(childOf(root, "big"), "file")->size,
        Testing::allocatedBytes(at("t/again")));
    EXPECT_EQ(control->progress().files, 10);
    EXPECT_EQ(control->inaccessible(), std::vector<std::string>{});

    const Node file = childOf(childOf(root, "big"), "file");
    const std::int64_t before = root->size;
    file->remove();
    expectSound(root);
    EXPECT_EQ(root->size, before - file->size) << "a node leaves with its bytes";
    EXPECT_EQ(childOf(root, "big")->size, Testing::allocatedBytes(at("t/big")));
    EXPECT_EQ(root->fileCount, 9);
}

TEST_F(TreeScanTest, ToleratesAnyRoot) {
    EXPECT_EQ(scan("missing"), nullptr);
    EXPECT_EQ(control->inaccessible(), std::vector<std::string>{});
    fill("file", 10'000);
    EXPECT_EQ(scan("file"), nullptr);
    EXPECT_EQ(control->inaccessible(), std::vector<std::string>{});
    fill("folder/inside", 10);
    link("way", "folder");
    EXPECT_EQ(names(scan("way")), std::vector<std::string>{"inside"});
    const Node spelled = scan("folder/../folder//");
    EXPECT_EQ(spelled->name(), "folder");
    EXPECT_EQ(childOf(spelled, "inside")->path(), at("folder/inside"));
    fill("deep/er/file", 10);
    control->cancel();
    EXPECT_EQ(scan("deep")->fileCount, 0);
}

TEST_F(TreeScanTest, TellsOfWhatItHadNoDescriptorFor) {
    fill("t/1/2/3/file", 10);
    // The sanitizer's check of a type opens a pipe, but only for what it has not seen before.
    static_cast<void>(scan("t", {.parallelDepth = 0}));
    rlimit usual{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &usual), 0);
    const int next = dup(0);
    const rlimit few{.rlim_cur = static_cast<rlim_t>(next) + 1, .rlim_max = usual.rlim_max};
    close(next);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
    static_cast<void>(scan("t", {.parallelDepth = 0}));
    setrlimit(RLIMIT_NOFILE, &usual);
    EXPECT_EQ(control->withoutDescriptor().size(), 1U);
    const auto areas = UnreadableFolders::group(*control, home());
    ASSERT_EQ(areas.size(), 1U);
    EXPECT_EQ(areas.front().area, "Too many open files");
}

TEST_F(TreeScanTest, TellsWhatItCouldNotRead) {
    fill("t/closed/secret", 10);
    fill("t/open/file", 10);
    chmod(at("t/closed").c_str(), 0);
    Testing::asOrdinaryUser(home(), [&] {
        const Node root = scan("t");
        EXPECT_EQ(control->inaccessible(), std::vector<std::string>{at("t/closed")});
        EXPECT_EQ(names(root), (std::vector<std::string>{"closed", "open"}));
        const Node closed = childOf(root, "closed");
        EXPECT_TRUE(closed->isDirectory && closed->children().empty());
        EXPECT_EQ(closed->size, Testing::allocatedBytes(at("t/closed")));
        EXPECT_EQ(root->fileCount, 1);
    });
}

TEST_F(TreeScanTest, StaysWithinFewDescriptorsHoweverDeepTheTree) {
    const Testing::DeepFolder deep{makeFolder("deep")};
    const rlimit few{.rlim_cur = 100, .rlim_max = 100};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
    for (const std::int64_t parallelDepth : {0, 3}) {
        Node node = scan("deep", {.parallelDepth = parallelDepth});
        EXPECT_EQ(node->fileCount, 1);
        int depth = 0;
        for (Node below = childOf(node, deep.kName); below; below = childOf(node, deep.kName)) {
            node = below;
            ++depth;
        }
        EXPECT_EQ(depth, deep.kDepth);
        EXPECT_EQ(names(node), std::vector<std::string>{"file"});
    }
    EXPECT_EQ(control->inaccessible(), std::vector<std::string>{});
}

TEST_F(TreeScanTest, GoesThroughNoLinkThatTookAFoldersPlace) {
    constexpr int kDepth = 20;  // Deeper than folders are kept open.
    constexpr int kSwapped = 18;
    std::string path = makeFolder("t");
    std::string swapped;
    FolderPlace place{path};
    for (int depth = 1; depth <= kDepth; ++depth) {
        const FolderPlace::Open open = place.open();
        ASSERT_TRUE(open);
        path += "/d";
        fs::create_directory(path);
        swapped = depth == kSwapped ? path : swapped;
        place = place.inside(open).place("d");
    }
    ASSERT_TRUE(place.open());
    fs::rename(swapped, at("moved"));
    fs::create_directory_symlink(at("moved"), swapped);
    EXPECT_FALSE(place.open());
}

TEST_F(TreeScanTest, SurvivesATreeThatChangesUnderIt) {
    constexpr int kRounds = 30;
    std::atomic<bool> isOver = false;
    std::thread changer{[&] {
        for (int i = 0; !isOver; ++i) {
            const std::string folder = at("t/" + std::to_string(i % 20));
            std::error_code ignored;
            EXPECT_GE(control->progress().bytes, 0) << "as the window asks meanwhile";
            fs::create_directories(folder + "/a/b/c", ignored);
            fs::remove_all(folder, ignored);
            fs::create_directory_symlink("/usr", folder, ignored);
            fs::remove(folder, ignored);
        }
    }};
    fill("t/file", 10);
    for (int i = 0; i < kRounds; ++i) {
        const Node root = scan("t");
        ASSERT_TRUE(root);
        EXPECT_EQ(
            root->fileCount,
            std::ranges::count_if(
                root->children(), [](const FileNode* child) { return !child->isDirectory; }))
            << "a link to /usr was followed";
    }
    isOver = true;
    changer.join();
}

}  // namespace
}  // namespace Brimlo
