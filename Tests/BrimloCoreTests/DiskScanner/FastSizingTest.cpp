#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "Support/TempHome.h"

#include <filesystem>
#include <random>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo {
namespace {

namespace fs = std::filesystem;

std::int64_t blocksOf(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 ? std::int64_t{status.st_blocks} * 512 : -1;
}

class FastSizingTest : public Testing::TempHome {
protected:
    std::string fill(const std::string& relative, std::size_t bytes) const {
        return write(relative, std::string(bytes, 'x'));
    }

    static void expectSizes(
        const std::string& path,
        std::int64_t quick,
        std::optional<std::int64_t> bulk,
        std::int64_t legacy) {
        SCOPED_TRACE(path);
        EXPECT_EQ(DiskScanner::quickSize(path), quick);
        EXPECT_EQ(DiskScanner::bulkSize(path), bulk);
        EXPECT_EQ(DiskScanner::legacyQuickSize(path), legacy);
    }
};

TEST_F(FastSizingTest, MeasuresWhatIsNoFolderAsItself) {
    const std::string file = fill("file", 50'000);
    fill("folder/big", 900'000);
    const std::string toFolder = link("toFolder", "folder");
    const std::string toFile = link("toFile", "file");
    const std::string dangling = link("dangling", std::string(200, 'x'));
    ASSERT_EQ(mkfifo(at("pipe").c_str(), 0600), 0);
    const std::string sparse = write("sparse", "");
    fs::resize_file(sparse, std::uintmax_t{1} << 40U);
    ASSERT_GE(blocksOf(file), 50'000);
    for (const std::string& path : {file, toFile, dangling, at("pipe"), sparse}) {
        expectSizes(path, blocksOf(path), std::nullopt, blocksOf(path));
    }
    EXPECT_EQ(DiskScanner::quickSize(toFolder), blocksOf(toFolder));
    EXPECT_EQ(DiskScanner::legacyQuickSize(toFolder), blocksOf(toFolder));
    expectSizes(at("missing"), 0, std::nullopt, 0);
    expectSizes("", 0, std::nullopt, 0);
}

TEST_F(FastSizingTest, LeavesOutTheFoldersOwnBlocks) {
    const std::string empty = makeFolder("empty");
    expectSizes(empty, 0, 0, blocksOf(empty));
    const std::int64_t files = blocksOf(fill("a/one", 10'000)) + blocksOf(fill("a/.two", 1)) +
                               blocksOf(fill("a/b/three", 100'000)) +
                               blocksOf(link("a/b/up", "../..")) + blocksOf(link("a/b/round", "."));
    const std::int64_t folders = blocksOf(at("a")) + blocksOf(at("a/b"));
    expectSizes(at("a"), files, files, files + folders);
    expectSizes(at("a/"), files, files, files + folders);
}

TEST_F(FastSizingTest, CountsAHardLinkedFileOnce) {
    const std::string file = fill("a/one", 100'000);
    makeFolder("a/b");
    fs::create_hard_link(file, at("a/two"));
    fs::create_hard_link(file, at("a/b/three"));
    fs::create_hard_link(file, at("outside"));
    const std::int64_t folders = blocksOf(at("a")) + blocksOf(at("a/b"));
    expectSizes(at("a"), blocksOf(file), blocksOf(file), blocksOf(file) + folders);
    expectSizes(at("outside"), blocksOf(file), std::nullopt, blocksOf(file));
    EXPECT_EQ(DiskScanner::quickSize(at("a/b")), blocksOf(file)) << "each call starts anew";
}

TEST_F(FastSizingTest, AgreesWithThePlainWalkOnGeneratedTrees) {
    constexpr int kTrees = 30;
    constexpr int kEntries = 60;
    std::mt19937 random{11};
    const auto below = [&](std::size_t limit) { return random() % limit; };
    for (int tree = 0; tree < kTrees; ++tree) {
        SCOPED_TRACE(tree);
        std::vector<std::string> folders{"t" + std::to_string(tree)};
        std::vector<std::string> files;
        makeFolder(folders.front());
        std::int64_t folderBlocks = 0;
        std::int64_t fileBlocks = 0;
        for (int i = 0; i < kEntries; ++i) {
            const std::string path =
                folders[below(folders.size())] + "/" +
                std::string(1 + below(below(10) == 0 ? 255 : 3), i % 2 == 0 ? 'n' : '\xe9');
            if (Testing::exists(at(path))) {
                continue;
            }
            switch (below(6)) {
                case 0:
                case 1:
                    folders.push_back(path);
                    makeFolder(path);
                    break;
                case 2:
                    fileBlocks += blocksOf(link(path, at(folders.front())));
                    break;
                case 3:
                    if (!files.empty()) {
                        fs::create_hard_link(at(files[below(files.size())]), at(path));
                        break;
                    }
                    [[fallthrough]];
                default:
                    files.push_back(path);
                    fileBlocks += blocksOf(fill(path, below(20'000)));
            }
        }
        for (const std::string& folder : folders) {
            folderBlocks += blocksOf(at(folder));
        }
        expectSizes(at(folders.front()), fileBlocks, fileBlocks, fileBlocks + folderBlocks);
    }
}

TEST_F(FastSizingTest, PassesOverWhatItMayNotRead) {
    constexpr uid_t kNobody = 65'534;
    const std::int64_t open = blocksOf(fill("a/open/file", 10'000));
    fill("a/closed/file", 90'000);
    chmod(home().c_str(), 0755);
    chmod(at("a/closed").c_str(), 0);
    const std::int64_t folders =
        blocksOf(at("a")) + blocksOf(at("a/open")) + blocksOf(at("a/closed"));
    const bool isRoot = geteuid() == 0;
    if (isRoot && seteuid(kNobody) != 0) {
        GTEST_SKIP() << "nothing is closed to this user";
    }
    expectSizes(at("a"), open, open, open + folders);
    expectSizes(at("a/closed"), blocksOf(at("a/closed")), std::nullopt, blocksOf(at("a/closed")));
    if (isRoot) {
        ASSERT_EQ(seteuid(0), 0);
    }
}

/// A folder of more depth than a path can name; removes it again.
class DeepFolder {
public:
    /// At each of the upper levels and in the last lie a file and two more folders with a file.
    DeepFolder(std::string path, int depth, std::string name)
        : path_(std::move(path))
        , name_(std::move(name)) {
        int folder = open(path_.c_str(), O_RDONLY | O_DIRECTORY);
        for (int level = 0; level < depth; ++level) {
            // One beside it waits while the walk is below, whatever the order of the directory.
            const bool branches = level < kBranching || level + 1 == depth;
            if (branches) {
                addFile(folder, "file");
                addSide(folder, "before");
            }
            mkdirat(folder, name_.c_str(), 0755);
            if (branches) {
                addSide(folder, "later");
            }
            const int next = openat(folder, name_.c_str(), O_RDONLY | O_DIRECTORY);
            close(folder);
            folder = next;
        }
        close(folder);
    }

    /// Takes level after level off the top, as no path reaches the bottom.
    ~DeepFolder() {
        const std::string next = path_ + ".next";
        bool hasNext = true;
        while (hasNext) {
            std::error_code ignored;
            fs::remove_all(path_ + "/before", ignored);
            fs::remove_all(path_ + "/later", ignored);
            fs::remove(path_ + "/file", ignored);
            hasNext = rename((path_ + "/" + name_).c_str(), next.c_str()) == 0;
            fs::remove(path_, ignored);
            fs::rename(next, path_, ignored);
        }
    }

    DeepFolder(const DeepFolder&) = delete;
    DeepFolder& operator=(const DeepFolder&) = delete;

    [[nodiscard]] std::int64_t fileBlocks() const { return blocks_; }

private:
    static constexpr int kBranching = 200;

    void addSide(int folder, const char* name) {
        mkdirat(folder, name, 0755);
        const int side = openat(folder, name, O_RDONLY | O_DIRECTORY);
        addFile(side, "file");
        close(side);
    }

    void addFile(int folder, const char* name) {
        const int file = openat(folder, name, O_WRONLY | O_CREAT, 0644);
        struct stat status {};
        if (write(file, "content", 7) == 7 && fstat(file, &status) == 0) {
            blocks_ += std::int64_t{status.st_blocks} * 512;
        }
        close(file);
    }

    std::string path_;
    std::string name_;
    std::int64_t blocks_ = 0;
};

TEST_F(FastSizingTest, ReachesTheBottomOfDeepFoldersWithFewDescriptors) {
    struct Case {
        int depth;
        std::string name;
    };
    for (const Case& c : {
             Case{2'000,            "d" },
             Case{ 300, std::string(255, 'n')}
    }) {
        SCOPED_TRACE(c.depth);
        const DeepFolder deep{makeFolder("deep"), c.depth, c.name};
        rlimit usual{};
        ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &usual), 0);
        const rlimit few{.rlim_cur = 100, .rlim_max = usual.rlim_max};
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
        const std::int64_t size = DiskScanner::quickSize(at("deep"));
        setrlimit(RLIMIT_NOFILE, &usual);
        EXPECT_EQ(size, deep.fileBlocks());
        EXPECT_GT(size, 0);
    }
}

}  // namespace
}  // namespace Brimlo
