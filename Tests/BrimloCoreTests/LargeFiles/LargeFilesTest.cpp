#include "BrimloCore/LargeFiles/LargeFiles.h"

#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCoreTests/Cleaner/Child.h"
#include "Support/DeepFolder.h"
#include "Support/TempHome.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <random>
#include <ranges>

#include <sys/resource.h>
#include <sys/stat.h>

namespace Brimlo {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

/// The paths, checked to come with their sizes as far as these can be asked for.
Lines pathsFound(
    const std::string& root, std::size_t limit, const FileFilter& filter, ScanControl& control) {
    Lines paths;
    const auto found = LargeFiles::find(root, limit, filter, control);
    for (const auto& node : found.value_or(std::vector<std::shared_ptr<FileNode>>{})) {
        const std::string path = node->path();
        EXPECT_TRUE(
            Testing::allocatedBytes(path) == node->size || Testing::allocatedBytes(path) == -1);
        EXPECT_EQ(node->name(), fs::path{path}.filename().string());
        paths.push_back(path);
    }
    return paths;
}

/// The search as it reads on paper: it sorts all there is.
Lines plainFind(const std::string& root, std::size_t limit, std::int64_t minSize) {
    std::map<std::uint64_t, std::string> firstNames;
    for (const auto& entry : fs::recursive_directory_iterator{root}) {
        if (!entry.is_directory() && Testing::allocatedBytes(entry.path()) >= minSize) {
            const auto inode = Platform::FileIdentity::of(entry.path())->inode;
            std::string& name = firstNames.try_emplace(inode, entry.path()).first->second;
            name = std::min(name, entry.path().string());
        }
    }
    Lines files;
    std::ranges::copy(firstNames | std::views::values, std::back_inserter(files));
    std::ranges::sort(files);
    std::ranges::stable_sort(files, std::greater{}, Testing::allocatedBytes);
    files.resize(std::min(files.size(), limit));
    return files;
}

using LargeFilesTest = Testing::TempHome;

TEST_F(LargeFilesTest, AgreesWithThePlainSearchOnGeneratedTrees) {
    std::mt19937 random{7};
    const auto below = [&](std::size_t limit) { return random() % limit; };
    for (int tree = 0; tree < 30; ++tree) {
        Lines folders{"t" + std::to_string(tree)};
        Lines names{write(folders.front() + "/first", "")};
        std::int64_t bytes = 0;
        for (int i = 0; i < 60; ++i) {
            const std::string path = folders[below(folders.size())] + "/" + std::to_string(i);
            if (below(4) == 0) {
                makeFolder(folders.emplace_back(path));
                continue;
            }
            if (below(5) == 0) {
                fs::create_hard_link(names[below(names.size())], at(path));
            } else {
                fill(path, 4'096 * below(6));
            }
            bytes += Testing::allocatedBytes(names.emplace_back(at(path)));
        }
        for (const std::size_t limit : {1U, 3U, 10U, 1'000U}) {
            const std::string root = at(folders.front());
            const auto minSize = static_cast<std::int64_t>(4'096 * below(4));
            ScanControl control;
            EXPECT_EQ(
                pathsFound(root, limit, {.minSize = minSize}, control),
                plainFind(root, limit, minSize));
            EXPECT_EQ(control.progress().files, std::ssize(names));
            EXPECT_EQ(control.progress().bytes, bytes);
        }
    }
}

TEST_F(LargeFilesTest, TakesNothingButFilesAndTellsWhatItCannotOpen) {
    const std::string big = fill("a/new\nline \xff", 50'000);
    link("a/folder", at(""));
    link("a/link", big);
    ASSERT_EQ(mkfifo(at("a/pipe").c_str(), 0600), 0);
    ASSERT_EQ(mknod(at("a/socket").c_str(), S_IFSOCK | 0600, 0), 0);
    fs::resize_file(write("a/sparse", ""), std::uintmax_t{8} << 40U);
    fill("a/closed/file", 60'000);
    chmod(at("a/closed").c_str(), 0);
    Testing::asOrdinaryUser(home(), [&] {
        ScanControl control;
        EXPECT_EQ(pathsFound(at("missing"), 1, {}, control), Lines{});
        EXPECT_EQ(pathsFound(big, 1, {}, control), Lines{});
        EXPECT_EQ(pathsFound(at("a"), 9, {.minSize = 1}, control), Lines{big});
        EXPECT_EQ(control.progress().files, 2);
        EXPECT_EQ(control.inaccessible(), (Lines{at("a/closed")}))
            << "what is no folder lacks none";
        control.cancel();
        EXPECT_EQ(pathsFound(big, 9, {}, control), Lines{});
        EXPECT_EQ(control.inaccessible().size(), 1U);
    });
}

TEST_F(LargeFilesTest, FindsTheLargestOfThoseThatTheFilterLetsThrough) {
    struct Case {
        const char* name;
        FileFilter filter;
        Lines found;
    };
    const auto big = [&](const char* name, int blocks) {
        return write(name, std::string(4'096 * static_cast<std::size_t>(blocks), 'x'));
    };
    const std::string disk = big("a/disk.ISO", 9);
    const std::string film = big("a/b/film.mkv", 8);
    const std::string clip = big("a/clip.v2.MP4", 3);
    const std::string plain = big("a/.mp4", 7);
    age(clip, 40);
    age(plain, 29);
    const auto monthAgo = FileFilter::daysAgo(30);
    const Case cases[] = {
        {"no condition",    {},                                                 {disk, film}},
        {"one kind",        {.kinds = {FileKind::video}},                       {film, clip}},
        {"several kinds",   {.kinds = {FileKind::video, FileKind::archive}},    {disk, film}},
        {"no extension",    {.kinds = {FileKind::other}},                       {plain}     },
        {"an age",          {.before = monthAgo},                               {clip}      },
        {"size and kind",   {.minSize = 20'480, .kinds = {FileKind::video}},    {film}      },
        {"a kind, too new", {.kinds = {FileKind::archive}, .before = monthAgo}, {}          },
        {"older than all",  {.before = FileFilter::daysAgo(INT64_MAX)},         {}          },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ScanControl control;
        EXPECT_EQ(pathsFound(at("a"), 2, c.filter, control), c.found);
    }
}

TEST_F(LargeFilesTest, ReachesTheBottomOfADeepFolderWithFewDescriptors) {
    const Testing::DeepFolder deep{makeFolder("deep")};
    const rlimit few{.rlim_cur = 60, .rlim_max = 60};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
    ScanControl control;
    EXPECT_EQ(pathsFound(at("deep"), 1, {}, control).size(), 1U);
    EXPECT_EQ(control.progress().bytes, deep.fileBlocks());
}

}  // namespace
}  // namespace Brimlo
