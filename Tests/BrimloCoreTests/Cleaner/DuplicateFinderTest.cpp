#include "BrimloCore/Cleaner/DuplicateFinder.h"

#include "BrimloCoreTests/Cleaner/Child.h"
#include "Support/TempHome.h"

#include <array>
#include <cstdlib>
#include <filesystem>

#include <sys/stat.h>

namespace Brimlo {
namespace {

namespace fs = std::filesystem;
using DuplicateFinder::Progress;
using Lines = std::vector<std::string>;
using Groups = std::vector<Lines>;

bool shell(const std::string& command) {
    return std::system(command.c_str()) == 0;
}

Groups find(const std::string& root, std::int64_t minSize = 1, const Progress& progress = {}) {
    Groups groups;
    for (const auto& group : DuplicateFinder::find({root}, minSize, nullptr, progress)) {
        groups.push_back(group.paths);
    }
    return groups;
}

using DuplicateFinderTest = Testing::TempHome;

TEST_F(DuplicateFinderTest, ReadsInFullOnlyWhatEdgesDoNotTellApart) {
    using LengthDifferenceAndFilesReadInFull = std::array<std::size_t, 3>;
    constexpr std::size_t kEdge = 65'536;
    const LengthDifferenceAndFilesReadInFull cases[] = {
        {1,             0,               2},
        {kEdge,         kEdge - 1,       2},
        {kEdge + 1,     kEdge,           3},
        {2 * kEdge + 1, 2 * kEdge,       2},
        {160 * kEdge,   159 * kEdge - 1, 3},
        {160 * kEdge,   159 * kEdge,     2},
    };
    for (const auto& [length, differAt, filesReadInFull] : cases) {
        SCOPED_TRACE(std::to_string(differAt) + " of " + std::to_string(length));
        std::string content(length, 'x');
        const Lines equal{write("a/1", content), write("a/2", content)};
        content[differAt] = 'y';
        write("a/3", content);
        std::size_t readInFull = 0;
        EXPECT_EQ(find(at("a"), 1, [&](const std::string&) { ++readInFull; }), Groups{equal});
        EXPECT_EQ(readInFull, filesReadInFull);
    }
}

TEST_F(DuplicateFinderTest, ComparesAllBytesOnceMore) {
    constexpr std::size_t kChunk = 4'194'304;
    const std::string file = write("file", std::string(kChunk + 10, 'x'));
    struct Case {
        const char* name;
        std::string content;
        bool isEqual;
    };
    const Case cases[] = {
        {"equal",                 std::string(kChunk + 10,      'x'), true},
        {"shorter",                       std::string(kChunk,                                           'x'),       false},
        {"longer",                  std::string(2 * kChunk + 10,                                              'x'),                                     false},
        {"another end",                   std::string(kChunk + 9,'x') + "y",false},
        {"empty","",     false                                       },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(DuplicateFinder::areEqual(file, write("other", c.content)), c.isEqual);
    }
    EXPECT_FALSE(DuplicateFinder::areEqual(file, at("missing")));
    EXPECT_FALSE(DuplicateFinder::areEqual(file, link("link", "file")));
    EXPECT_TRUE(DuplicateFinder::areEqual(write("no bytes", ""), write("nor here", "")));
}

TEST_F(DuplicateFinderTest, GroupsFilesAndNotNames) {
    fs::create_hard_link(write("a/one", "1234567"), at("a/one too"));
    setenv("XDG_DATA_HOME", home().c_str(), 1);
    for (const std::string outside : {"Library", ".Trash", ".Trash-0", "x.app", "Trash/files"}) {
        write(outside + "/b/copy", "1234567");
    }
    EXPECT_EQ(find(home()), Groups{});
    const Lines b{write("b/Z"), write("b/z"), write("b/\xff\n")};
    const Lines c{write("c/1", "12345678901234"), write("c/2", "12345678901234")};
    const Lines d{write("d/1", "abcdefghijklmn"), write("d/files/2", "abcdefghijklmn")};
    EXPECT_EQ(find(at("b")), Groups{b});
    EXPECT_EQ(find(at("b"), 8), Groups{});
    const auto groups = DuplicateFinder::find({at("d"), at("c"), at("b"), at("b")}, 7);
    ASSERT_EQ(groups.size(), 3U);
    EXPECT_EQ((Groups{groups[0].paths, groups[1].paths, groups[2].paths}), (Groups{b, c, d}));
    EXPECT_EQ(groups[0].size * 2, groups[0].wastedBytes());
    ScanControl control;
    control.cancel();
    EXPECT_TRUE(DuplicateFinder::find({at("b")}, 7, &control).empty());
}

TEST_F(DuplicateFinderTest, PassesOverWhatCannotBeRead) {
    const Lines equal{write("a/1"), write("a/2")};
    chmod(write("a/closed").c_str(), 0);
    write("a/folder/3");
    chmod(at("a/folder").c_str(), 0);
    link("a/link", "1");
    ASSERT_EQ(mkfifo(at("a/pipe").c_str(), 0600), 0);
    static_cast<void>(write("a/empty", "") + write("a/empty too", ""));
    // The edges tell these apart, so that nobody has to read 8 TB of holes.
    fs::resize_file(write("a/sparse", "1"), std::uintmax_t{8} << 40U);
    fs::resize_file(write("a/sparse too", "2"), std::uintmax_t{8} << 40U);
    Testing::asOrdinaryUser(home(), [&] { EXPECT_EQ(find(at("a"), 0), Groups{equal}); });
}

TEST_F(DuplicateFinderTest, BelievesWhatItReadsAndNotWhatItMet) {
    for (const std::string change :
         {"rm 2", "printf x >> 2", "truncate -s 70000 2", "rm 2; mkfifo 2", "mv 2 3; ln -s 3 2"}) {
        write("a/1", std::string(100'000, 'x'));
        write("a/2", std::string(100'000, 'x'));
        bool isChanged = false;
        const auto progress = [&](const std::string& path) {
            isChanged |= path == at("a/2") && shell("cd " + at("a") + "; " + change);
        };
        EXPECT_EQ(find(at("a"), 1, progress), Groups{});
        EXPECT_TRUE(isChanged);
        fs::remove_all(at("a"));
    }
}

}  // namespace
}  // namespace Brimlo
