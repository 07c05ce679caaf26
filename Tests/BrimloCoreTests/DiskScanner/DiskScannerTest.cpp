#include "BrimloCore/DiskScanner/DiskScanner.h"

#include "BrimloCoreTests/Cleaner/Child.h"
#include "Support/TempHome.h"

#include <filesystem>
#include <random>

#include <sys/stat.h>

namespace Brimlo {
namespace {

namespace fs = std::filesystem;

class DiskScannerTest : public Testing::TempHome {
protected:
    static void expectSizes(
        const std::string& path,
        std::int64_t quick,
        std::optional<std::int64_t> bulk,
        std::int64_t legacy) {
        SCOPED_TRACE(path);
        EXPECT_EQ(DiskScanner::quickSize(path), quick);
        const auto fast = DiskScanner::bulkSize(path);
        EXPECT_EQ(fast ? std::optional{fast->size} : std::nullopt, bulk);
        EXPECT_EQ(DiskScanner::legacyQuickSize(path).size, legacy);
    }
};

TEST_F(DiskScannerTest, MeasuresWhatIsNoFolderAsItself) {
    const std::string file = fill("file", 50'000);
    fill("folder/big", 900'000);
    const std::string toFolder = link("toFolder", "folder");
    const std::string toFile = link("toFile", "file");
    ASSERT_EQ(mkfifo(at("pipe").c_str(), 0600), 0);
    const std::string sparse = write("sparse", "");
    fs::resize_file(sparse, std::uintmax_t{1} << 40U);
    for (const std::string& path : {file, toFile, at("pipe"), sparse}) {
        expectSizes(
            path, Testing::allocatedBytes(path), std::nullopt, Testing::allocatedBytes(path));
    }
    EXPECT_EQ(DiskScanner::quickSize(toFolder), Testing::allocatedBytes(toFolder));
    EXPECT_EQ(DiskScanner::legacyQuickSize(toFolder).size, Testing::allocatedBytes(toFolder));
    expectSizes(at("missing"), 0, std::nullopt, 0);
}

TEST_F(DiskScannerTest, AgreesWithThePlainWalkOnGeneratedTrees) {
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
                    fileBlocks += Testing::allocatedBytes(link(path, at(folders.front())));
                    break;
                case 3:
                    if (!files.empty()) {
                        fs::create_hard_link(at(files[below(files.size())]), at(path));
                        break;
                    }
                    [[fallthrough]];
                default:
                    files.push_back(path);
                    fileBlocks += Testing::allocatedBytes(fill(path, below(20'000)));
            }
        }
        for (const std::string& folder : folders) {
            folderBlocks += Testing::allocatedBytes(at(folder));
        }
        expectSizes(at(folders.front()), fileBlocks, fileBlocks, fileBlocks + folderBlocks);
    }
}

TEST_F(DiskScannerTest, PassesOverWhatItMayNotRead) {
    const std::int64_t open = Testing::allocatedBytes(fill("a/open/file", 10'000));
    fill("a/closed/file", 90'000);
    const std::int64_t closed = Testing::allocatedBytes(at("a/closed"));
    const std::int64_t folders =
        Testing::allocatedBytes(at("a")) + Testing::allocatedBytes(at("a/open")) + closed;
    chmod(at("a/closed").c_str(), 0);
    Testing::asOrdinaryUser(home(), [&] {
        expectSizes(at("a"), open, open, open + folders);
        expectSizes(at("a/closed"), closed, std::nullopt, closed);
    });
}

}  // namespace
}  // namespace Brimlo
