#include "BrimloCore/Cleaner/EqualFolders.h"

#include "Support/TempHome.h"

#include <filesystem>
#include <functional>

namespace Brimlo {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kLeast = 1000;

/// The folders found below these, relative to the home.
std::vector<std::vector<std::string>> found(
    const std::string& home, const std::vector<std::string>& roots) {
    std::vector<std::vector<std::string>> result;
    const auto groups = DuplicateFinder::find(roots, kLeast);
    for (EqualFolders& set : EqualFolders::among(groups, roots, kLeast)) {
        for (std::string& folder : set.folders) {
            folder.erase(0, home.size() + 1);
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
        write(folder + "/empty");
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
            EXPECT_EQ(set, (std::vector<std::string>{"a/day 2", "b/day 2"}));
        }
    }
}

}  // namespace
}  // namespace Brimlo
