#include "BrimloCore/Cleaner/EqualFolders.h"

#include "Support/TempHome.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <iterator>

namespace Brimlo {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kLeast = 1000;

/// The folders found below these, relative to the home; larger ones after an empty text.
std::vector<std::vector<std::string>> found(
    const std::string& home, const std::vector<std::string>& roots) {
    std::vector<std::vector<std::string>> result;
    const auto groups = DuplicateFinder::find(roots, kLeast);
    for (EqualFolders& set : EqualFolders::among(groups, roots, kLeast)) {
        if (!set.larger.empty()) {
            set.folders.emplace_back();
            std::ranges::copy(set.larger, std::back_inserter(set.folders));
        }
        for (std::string& folder : set.folders) {
            folder.erase(0, std::min(home.size(), folder.size()));
        }
        result.push_back(std::move(set.folders));
    }
    return result;
}

class EqualFoldersTest : public Testing::TempHome {
protected:
    void makeTrip(const std::string& folder, char content) {
        write(folder + "/one.jpg", std::string(4000, content));
        write(folder + "/day 2/two.jpg", std::string(3000, content));
        write(folder + "/day 2/note.txt", "short");
        write(folder + "/empty", "");
        makeFolder(folder + "/nothing in it");
        fs::create_symlink("one.jpg", at(folder + "/link"));
    }
};

TEST_F(EqualFoldersTest, TellsTheLargestEqualFoldersOnce) {
    makeTrip("a/rome", 'r');
    makeTrip("a/oslo", 'o');
    makeTrip("b/rome copy", 'r');
    makeTrip("c/a/rome", 'r');
    makeTrip("c/a/oslo", 'o');
    EXPECT_EQ(
        found(
            at(""),
            {
                at("a"), at("b"), at("c")
    }),
        (std::vector<std::vector<std::string>>{{"a", "c/a"}, {"a/rome", "b/rome copy"}}))
        << "each set once, although days and trips in equal folders are equal, too";
    const auto groups = DuplicateFinder::find({at("a"), at("c")}, kLeast);
    const auto sets = EqualFolders::among(groups, {at("a"), at("c")}, kLeast);
    ASSERT_EQ(sets.size(), 1U);
    EXPECT_EQ(sets.front().files, 8);
    EXPECT_EQ(sets.front().bytes, 2 * (4000 + 3000 + 5));
}

TEST_F(EqualFoldersTest, CallsNothingEqualThatDiffersAnywhere) {
    const std::pair<const char*, std::function<void()>> cases[] = {
        {"a short file of the same length", [&] { write("b/day 2/note.txt", "shirt"); }        },
        {"a long file",                     [&] { write("b/one.jpg", std::string(4000, 'x')); }},
        {"another name",                    [&] { fs::rename(at("b/one.jpg"), at("b/1.jpg")); }},
        {"one more short file",             [&] { write("b/day 2/more", "more"); }             },
        {"one more empty folder",           [&] { makeFolder("b/day 3"); }                     },
        {"no empty folder",                 [&] { fs::remove(at("b/nothing in it")); }         },
        {"a symlink's target",
         [&] {
             fs::remove(at("b/link"));
             fs::create_symlink("two.jpg", at("b/link"));
         }                                                                                     },
        {"a further name of a file",
         [&] {
             fs::remove(at("b/one.jpg"));
             fs::create_hard_link(at("a/one.jpg"), at("b/one.jpg"));
         }                                                                                     },
    };
    for (const auto& [what, change] : cases) {
        SCOPED_TRACE(what);
        for (const char* const folder : {"a", "b"}) {
            fs::remove_all(at(folder));
            makeTrip(folder, 't');
        }
        EXPECT_EQ(found(at(""), {at("a"), at("b")}).size(), 1U);
        change();
        for (const auto& set : found(at(""), {at("a"), at("b")})) {
            EXPECT_NE(set, (std::vector<std::string>{"a", "b"}));
        }
    }
}

TEST_F(EqualFoldersTest, TellsTheLargerFolderThatHoldsAllOfAnother) {
    using Sets = std::vector<std::vector<std::string>>;
    const std::pair<const char*, std::function<void()>> cases[] = {
        {"more files",      [&] { write("b/day 3/three.jpg", std::string(5000, '3')); }},
        {"a short file",    [&] { write("b/day 2/more", "more"); }                     },
        {"an empty folder", [&] { makeFolder("b/day 3"); }                             },
    };
    for (const auto& [what, change] : cases) {
        SCOPED_TRACE(what);
        for (const char* const folder : {"a", "b", "c"}) {
            fs::remove_all(at(folder));
        }
        makeTrip("a", 't');
        makeTrip("b", 't');
        change();
        EXPECT_EQ(
            found(
                at(""),
                {
                    at("a"), at("b")
        }),
            (Sets{{"a", "", "b"}}));
        makeTrip("c", 't');
        EXPECT_EQ(
            found(
                at(""),
                {
                    at("a"), at("b"), at("c")
        }),
            (Sets{{"a", "c", "", "b"}}));
        write("b/day 2/note.txt", "shirt");
        for (const auto& set : found(at(""), {at("a"), at("b")})) {
            EXPECT_NE(set.front(), "a") << "a short file differs";
        }
    }
}

}  // namespace
}  // namespace Brimlo
