#include "BrimloCore/Cleaner/DuplicateExtras.h"
#include "BrimloCoreTests/Cleaner/Child.h"
#include "Support/TempHome.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <set>

#include <sys/stat.h>

namespace Brimlo {
namespace {

namespace fs = std::filesystem;
using Progress = std::function<void(const DuplicateFinder::Progress&)>;
using Lines = std::vector<std::string>;
using Groups = std::vector<Lines>;

bool shell(const std::string& command) {
    return std::system(command.c_str()) == 0;
}

Groups find(const std::string& root, std::int64_t minSize = 1, const Progress& progress = {}) {
    Groups groups;
    for (const auto& group : DuplicateFinder::find({root}, minSize, nullptr, progress)) {
        groups.push_back(group.paths());
    }
    return groups;
}

using DuplicateFinderTest = Testing::TempHome;

TEST_F(DuplicateFinderTest, ComparesOnlyWhatEdgesDoNotTellApart) {
    using LengthDifferenceAndFilesCompared = std::array<std::size_t, 3>;
    constexpr std::size_t kEdge = 65'536;
    const LengthDifferenceAndFilesCompared cases[] = {
        {1,             0,               2},
        {kEdge,         kEdge - 1,       2},
        {2 * kEdge,     kEdge,           2},
        {2 * kEdge + 1, kEdge,           3},
        {2 * kEdge + 1, 2 * kEdge,       2},
        {160 * kEdge,   159 * kEdge - 1, 3},
        {160 * kEdge,   159 * kEdge,     2},
    };
    for (const auto& [length, differAt, filesCompared] : cases) {
        SCOPED_TRACE(std::to_string(differAt) + " of " + std::to_string(length));
        std::string content(length, 'x');
        const Lines equal{write("a/1", content), write("a/2", content)};
        content[differAt] = 'y';
        write("a/3", content);
        std::set<std::string> compared;
        const auto progress = [&](const DuplicateFinder::Progress& reached) {
            EXPECT_EQ(reached.total, length * filesCompared);
            EXPECT_LT(reached.compared, reached.total);
            compared.insert(reached.path);
        };
        EXPECT_EQ(find(at("a"), 1, progress), Groups{equal});
        EXPECT_EQ(compared.size(), filesCompared);
    }
}

TEST_F(DuplicateFinderTest, GroupsExactlyTheEqualAmongMany) {
    // All have the same edges; each length has more classes than are held at once.
    const std::pair<std::size_t, std::size_t> cases[] = {
        {200'000,   600},
        {3'000'000, 50 }
    };
    for (const auto& [length, count] : cases) {
        Groups expected;
        std::string content(length, 'x');
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t place = 70'000 + (i * 7'919) % (length - 140'000);
            content[place] = static_cast<char>('a' + i % 20);
            const std::string name = "a/" + std::to_string(i);
            Lines equal{write(name, content)};
            if (i % 3 == 0) {
                equal.push_back(write(name + " too", content));
                expected.push_back(equal);
            }
            content[place] = 'x';
        }
        std::ranges::sort(expected);
        EXPECT_EQ(find(at("a")), expected);
        fs::remove_all(at("a"));
    }
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
    EXPECT_EQ((Groups{groups[0].paths(), groups[1].paths(), groups[2].paths()}), (Groups{b, c, d}));
    EXPECT_EQ(groups[0].size * 2, groups[0].wastedBytes());
    EXPECT_EQ(find(at("b") + "//."), Groups{b});
}

TEST_F(DuplicateFinderTest, EndsAtAnyStage) {
    const std::string content(100'000, 'x');
    const Lines equal{write("a/1", content), write("a/2", content), write("a/3", content)};
    ScanControl atStart;
    atStart.cancel();
    EXPECT_TRUE(DuplicateFinder::find({at("a")}, 1, &atStart).empty());
    ScanControl whileReading;
    int begun = 0;
    const auto progress = [&](const DuplicateFinder::Progress&) {
        ++begun;
        whileReading.cancel();
    };
    EXPECT_TRUE(DuplicateFinder::find({at("a")}, 1, &whileReading, progress).empty());
    EXPECT_EQ(begun, 1);
    const Lines longer{write("a/4", content + "x"), write("a/5", content + "x")};
    ScanControl afterTheFirst;
    const auto untilShort = [&](const DuplicateFinder::Progress& reached) {
        if (reached.path == equal[0]) {
            afterTheFirst.cancel();
        }
    };
    const auto finished = DuplicateFinder::find({at("a")}, 1, &afterTheFirst, untilShort);
    ASSERT_EQ(finished.size(), 1U);
    EXPECT_EQ(finished[0].paths(), longer);
}

TEST_F(DuplicateFinderTest, PlansForTheExtrasAndNeverForTheLastCopy) {
    const auto extras = [](const Lines& paths) {
        Lines planned;
        DuplicateGroup group{.size = 7, .copies = {}};
        for (const std::string& path : paths) {
            group.copies.push_back({.path = path});
        }
        const CleanPlan plan = DuplicateExtras::plan({group});
        for (const CleanItem& item : plan.items()) {
            EXPECT_EQ(item.size, 7);
            planned.push_back(item.path);
        }
        return planned;
    };
    const Lines there{write("a/1"), write("a/2"), write("a/3")};
    EXPECT_EQ(extras(there), (Lines{there[1], there[2]}));
    fs::remove(there[0]);
    EXPECT_EQ(extras(there), Lines{there[2]}) << "the next one stays";
    EXPECT_EQ(extras({}), Lines{});
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
    Testing::asOrdinaryUser(home(), [&] {
        EXPECT_EQ(find(at("a"), 0), Groups{equal});
        ScanControl control;
        const Lines roots{home(), at("a"), at("a/.")};
        EXPECT_EQ(DuplicateFinder::find(roots, 0, &control).size(), 1U);
        EXPECT_EQ(control.inaccessible().size(), 1U) << "each folder is searched once";
    });
}

TEST_F(DuplicateFinderTest, BelievesWhatItReadsAndNotWhatItMet) {
    for (const std::string change :
         {"rm 2", "printf x >> 2", "truncate -s 70000 2", "rm 2; mkfifo 2", "mv 2 3; ln -s 3 2"}) {
        fill("a/1", 100'000);
        fill("a/2", 100'000);
        bool isChanged = false;
        const auto progress = [&](const DuplicateFinder::Progress& reached) {
            isChanged |= reached.path == at("a/2") && shell("cd " + at("a") + "; " + change);
        };
        EXPECT_EQ(find(at("a"), 1, progress), Groups{});
        EXPECT_TRUE(isChanged);
        fs::remove_all(at("a"));
    }
}

}  // namespace
}  // namespace Brimlo
