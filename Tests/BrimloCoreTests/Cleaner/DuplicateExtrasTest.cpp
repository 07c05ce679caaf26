#include "BrimloCore/Cleaner/DuplicateExtras.h"

#include "BrimloCoreTests/Cleaner/OwnMounts.h"
#include "Support/Proof.h"
#include "Support/TempHome.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <thread>
#include <utility>

namespace Brimlo {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;
using Testing::contentOf;

bool shell(const std::string& command) {
    return std::system(command.c_str()) == 0;
}

class DuplicateExtrasTest : public Testing::TempHome {
protected:
    /// Runs the rest of a test with a fresh btrfs at "v".
    void onBtrfs(const std::function<void()>& body) {
        fs::resize_file(write("image", ""), std::uintmax_t{128} << 20U);
        Testing::withOwnMounts([&] {
            makeFolder("v");
            if (!shell("cd && (mkfs.btrfs -q image && mount -o loop image v) > /dev/null 2>&1")) {
                GTEST_SKIP() << "this takes mkfs.btrfs (btrfs-progs) and the right to mount";
            }
            body();
        });
    }

    static CloneReport clone(const std::string& original, const std::string& extra) {
        return DuplicateExtras::clone({DuplicateGroup{.copies = {{original}, {extra}}}});
    }

    const std::string content_ = std::string(1'000'000, 'c');
};

TEST_F(DuplicateExtrasTest, TellsBeforehandWhereNothingCanBeCloned) {
    const auto refuses = [](const std::vector<std::string>& paths) {
        DuplicateGroup group{.copies = {}};
        std::ranges::transform(paths, std::back_inserter(group.copies), [](const auto& path) {
            return DuplicateGroup::Copy{.path = path};
        });
        return DuplicateExtras::cloneRefusal(group).has_value();
    };
    const std::string noClones = "/proc/self/status";
    EXPECT_TRUE(refuses({noClones, noClones}));
    onBtrfs([&] {
        const std::string file = write("v/file");
        EXPECT_FALSE(refuses({file, file}));
        EXPECT_FALSE(refuses({file, noClones, file})) << "one of the extras can be";
        EXPECT_TRUE(refuses({file, noClones}));
        EXPECT_TRUE(refuses({noClones, file}));
        EXPECT_FALSE(refuses({noClones, file, file})) << "one of the others can stay";
    });
}

TEST_F(DuplicateExtrasTest, PutsACloneInThePlaceOfTheDuplicate) {
    const std::string elsewhere = write("elsewhere", content_);
    onBtrfs([&] {
        const std::string original = write("v/original", content_);
        const std::string duplicate = write("v/duplicate", content_);
        // With these bits the clone would lend the rights of the original's owner.
        ASSERT_TRUE(shell("cd ~/v && chown nobody duplicate && chmod 6777 duplicate"));
        age(duplicate, 30);
        const auto modified = fs::last_write_time(duplicate);
        EXPECT_EQ(clone(original, duplicate), (CloneReport{.sharedBytes = 1'000'000}));
        EXPECT_EQ(fs::last_write_time(duplicate), modified);
        EXPECT_EQ(fs::status(duplicate).permissions(), fs::perms::all);
        // What shares its bytes wastes none, and can't share them again.
        EXPECT_TRUE(DuplicateFinder::find({at("v")}, 1).empty());
        EXPECT_EQ(clone(original, duplicate), CloneReport{});
        write("v/original", "changed");
        EXPECT_EQ(contentOf(duplicate), content_);
        const CloneReport report = clone(elsewhere, duplicate);
        const std::string reason = ": clonefile failed: Invalid cross-device link";
        EXPECT_EQ(report, (CloneReport{.failures = {duplicate + reason}}));
        EXPECT_EQ(report.sentence(), "Cloned some duplicates; 1 failed (different volume?).");
        EXPECT_EQ(contentOf(duplicate), content_);
    });
}

TEST_F(DuplicateExtrasTest, LosesNothingThatCameSinceTheSearch) {
    onBtrfs([&] {
        const std::string extra = at("v/2");
        const std::pair<std::string, std::string> cases[] = {
            {"printf x >> 2",                               "is no longer equal"                    },
            {"printf y | dd of=2 conv=notrunc status=none", "is no longer equal"                    },
            {"printf x >> 1",                               "is no longer equal"                    },
            {"rm 1",                                        "is no longer equal"                    },
            {"rm 2; ln -s 1 2",                             "is no longer equal"                    },
            {"ln 2 other",                                  "has other names, which would not share"},
            {"touch 2.brimlo-clone",                        "clonefile failed: File exists"         },
            {"(sleep 100 >> 2 & echo $! > ../writer)",      "is open for writing in another program"},
        };
        for (const auto& [change, reason] : cases) {
            SCOPED_TRACE(change);
            ASSERT_TRUE(shell("rm -rf ~/v/*"));
            write("v/1", content_);
            write("v/2", content_);
            const auto groups = DuplicateFinder::find({at("v")}, 1);
            ASSERT_EQ(groups.size(), 1U);
            ASSERT_TRUE(shell("cd ~/v; " + change));
            const std::string before = contentOf(extra);
            EXPECT_EQ(DuplicateExtras::clone(groups).failures, Lines{extra + ": " + reason});
            EXPECT_TRUE(contentOf(extra) == before);
            EXPECT_EQ(Testing::exists(extra + ".brimlo-clone"), change.contains("touch"));
        }
        EXPECT_TRUE(shell("kill $(cat ~/writer)"));
    });
}

TEST_F(DuplicateExtrasTest, LosesNoEditThatComesMeanwhile) {
    onBtrfs([&] {
        using Clock = std::chrono::steady_clock;
        const std::string content = content_.substr(0, 20'000);
        const std::string original = write("v/original", content);
        const std::string extra = at("v/extra");
        Clock::duration usual{1};
        const std::int64_t rounds = Testing::rounds("BRIMLO_RACES", 300);
        std::mt19937 random{1};
        std::int64_t lost = 0;
        std::int64_t cloned = 0;
        for (std::int64_t round = 0; round < rounds; ++round) {
            write("v/extra", content);
            write("v/new", "saved");
            const auto pause = usual * (random() % 1'000) / 800;
            const bool isSaved = round % 2 == 0;
            std::thread writer{[&] {
                std::this_thread::sleep_for(pause);
                if (isSaved) {
                    fs::rename(at("v/new"), extra);
                } else {
                    std::ofstream{extra, std::ios::app} << "edit";
                }
            }};
            const auto start = Clock::now();
            const CloneReport report = clone(original, extra);
            usual = Clock::now() - start;
            writer.join();
            cloned += report.failures.empty() ? 1 : 0;
            lost += contentOf(extra) == (isSaved ? "saved" : content + "edit") ? 0 : 1;
        }
        EXPECT_EQ(lost, 0);
        EXPECT_GT(cloned, 0);
        EXPECT_LT(cloned, rounds);
        Testing::told("races of a clone with a writer", rounds, lost);
    });
}

}  // namespace
}  // namespace Brimlo
