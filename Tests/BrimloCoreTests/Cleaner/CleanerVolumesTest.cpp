#include "BrimloCore/Cleaner/AutoCleaner.h"
#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Platform/Linux/TrashInfo.h"
#include "BrimloCore/Support/AppConfig.h"
#include "BrimloCoreTests/Cleaner/CleaningHome.h"
#include "BrimloCoreTests/Cleaner/OwnMounts.h"
#include "Support/Proof.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace Brimlo {
namespace {

namespace fs = std::filesystem;
using Testing::contentOf;
using Testing::exists;
using Testing::withOwnMounts;
using Lines = std::vector<std::string>;

class CleanerVolumesTest : public Testing::CleaningHome {
protected:
    /// Mounts an empty file system in memory on a folder, made when it is missing.
    [[nodiscard]] bool mountMemory(
        const std::string& relative, const char* options = "size=1m") const {
        const std::string point = makeFolder(relative);
        return mount("tmpfs", point.c_str(), "tmpfs", 0, options) == 0;
    }

    const std::string user_ = std::to_string(getuid());
};

#define ASSERT_MOUNTED(mounting)                          \
    if (!(mounting)) {                                    \
        GTEST_SKIP() << "mounting is not permitted here"; \
    }

TEST_F(CleanerVolumesTest, UsesTheTrashAtTheTopOfTheVolume) {
    struct Case {
        const char* name;
        std::function<void(const std::string& shared)> prepare;
        std::string trash;
    };
    const auto folder = [](mode_t mode) {
        return [=](const std::string& shared) {
            mkdir(shared.c_str(), 0700);
            chmod(shared.c_str(), mode);
        };
    };
    const auto asLink = [](const std::string& shared) {
        mkdir((shared + "-elsewhere").c_str(), 01777);
        fs::create_symlink(shared + "-elsewhere", shared);
    };
    // Its owner may rename what lies in it, sticky or not.
    const auto ofAnother = [](const std::string& shared) {
        mkdir(shared.c_str(), 0700);
        chmod(shared.c_str(), 01777);
        EXPECT_EQ(chown(shared.c_str(), Testing::kNobody, Testing::kNobody), 0);
    };
    const Case cases[] = {
        {"no shared folder",             [](const std::string&) {}, ".Trash-" + user_},
        {"shared folder",                folder(01777),             ".Trash/" + user_},
        {"shared folder that is a link", asLink,                    ".Trash-" + user_},
        {"shared folder of another",     ofAnother,                 ".Trash-" + user_},
    };
    withOwnMounts([&] {
        for (const auto& c : cases) {
            SCOPED_TRACE(c.name);
            ASSERT_MOUNTED(mountMemory("volume"));
            c.prepare(at("volume/.Trash"));
            const std::string path = write("volume/some folder/item");
            const JournalEntry entry = trash(path);
            EXPECT_EQ(entry.trashPath, at("volume/" + c.trash + "/files/item"));
            const auto note = Platform::TrashInfo::parse(
                contentOf(at("volume/" + c.trash + "/info/item.trashinfo")));
            ASSERT_TRUE(note);
            EXPECT_EQ(note->path, "some folder/item");
            EXPECT_EQ(note->entryID, entry.id.text());
            EXPECT_FALSE(exists(at(".local/share/Trash/files/item")));

            // Neither the purge nor the emptying leaves the home Trash.
            change(entry.id, [](JournalEntry& old) { old.date -= std::chrono::days{9}; });
            EXPECT_EQ(cleaner_.purgeOwnTrash(1, false), TrashReport{});
            EXPECT_EQ(Cleaner::emptyTrash(), TrashReport{.freedBytes = 0});
            EXPECT_EQ(this->entry(entry.id).purgedFromTrash, false);
            EXPECT_EQ(undo(entry), path);
            EXPECT_TRUE(fs::is_empty(at("volume/" + c.trash + "/info")));
            ASSERT_EQ(umount(at("volume").c_str()), 0);
        }
    });
}

TEST_F(CleanerVolumesTest, TellsWhyAHomeTakesNoSettings) {
    withOwnMounts([&] {
        // Its one inode is that of the top.
        ASSERT_MOUNTED(mountMemory("full", "nr_inodes=1"));
        setenv("HOME", at("full").c_str(), 1);
        EXPECT_EQ(
            AppConfig::change([](AppConfig& config) { config.staleDays = 1; }).error().description,
            "The setting could not be saved: No space left on device");
    });
}

TEST_F(CleanerVolumesTest, RestoresOnlyOntoTheVolumeOfTheTrash) {
    const std::pair<std::string, bool> cases[] = {
        {"a%20b/item",           true },
        {"../item",              false},
        {"a/../../item",         false},
        {"link/item",            false},
        {at("elsewhere/item"),   false},
        {at("volume/of%20path"), false},
    };
    withOwnMounts([&] {
        ASSERT_MOUNTED(mountMemory("volume"));
        link("volume/link", makeFolder("elsewhere"));
        for (const auto& [path, comesBack] : cases) {
            SCOPED_TRACE(path);
            const std::string trashed = write("volume/.Trash-" + user_ + "/files/item");
            write("volume/.Trash-" + user_ + "/info/item.trashinfo", "Path=" + path + "\n");
            const auto items = cleaner_.trashContents()->find({trashed});
            ASSERT_TRUE(items);
            EXPECT_EQ(cleaner_.restore(*items).failures.empty(), comesBack);
            EXPECT_EQ(exists(trashed), !comesBack);
            EXPECT_TRUE(fs::is_empty(at("elsewhere")));
        }
        EXPECT_TRUE(exists(at("volume/a b/item")));
    });
}

TEST_F(CleanerVolumesTest, FollowsTheMountAndNotTheDevice) {
    withOwnMounts([&] {
        // One file system on two mounts: a rename does not cross them.
        write("stored/folder/item");
        ASSERT_MOUNTED(
            mount(at("stored").c_str(), makeFolder("bound").c_str(), nullptr, MS_BIND, nullptr) ==
            0);
        const JournalEntry entry = trash(at("bound/folder/item"));
        EXPECT_EQ(entry.trashPath, at("bound/.Trash-" + user_ + "/files/item"));
        EXPECT_EQ(undo(entry), at("bound/folder/item"));
    });
}

TEST_F(CleanerVolumesTest, MovesNothingThatHoldsAMount) {
    const auto bind = [](const std::string& from, const std::string& to) {
        return mount(from.c_str(), to.c_str(), nullptr, MS_BIND, nullptr) == 0;
    };
    withOwnMounts([&] {
        for (const std::string folder : {"plain", "a b\\\n", "a\rb\v", "#x"}) {
            ASSERT_MOUNTED(mountMemory(folder + "/deep/point"));
            const std::string file = write(folder + "/deep/point/file");
            for (const char* below : {"", "/deep", "/deep/point"}) {
                const std::string item = folder + below;
                SCOPED_TRACE(item);
                CleanReport expected;
                expected.failures = {
                    {at(item), "a volume is mounted on it or inside it"}
                };
                EXPECT_EQ(clean({at(item)}), expected);
                EXPECT_TRUE(exists(file));
            }
        }
        ASSERT_MOUNTED(bind(write("stored"), write("bound/file")));
        EXPECT_EQ(clean({at("bound")}).processed, 0);
        EXPECT_EQ(clean({at("bound/file")}).processed, 0);
        EXPECT_EQ(entries().size(), 0U);
    });
}

TEST_F(CleanerVolumesTest, DeletesNothingThatIsMountedInTheTrash) {
    withOwnMounts([&] {
        const JournalEntry entry = trash(makeFolder("code/item").append("/"));
        ASSERT_MOUNTED(mountMemory(".local/share/Trash/files/item/point"));
        const std::string file = write(".local/share/Trash/files/item/point/file");
        const std::vector<ItemProblem> busy = {
            {inTrash("item"), Error::fromSystem(EBUSY).description}
        };
        EXPECT_EQ(Cleaner::emptyTrash().failures, busy);
        EXPECT_TRUE(exists(file));
        change(entry.id, [](JournalEntry& old) { old.date -= std::chrono::days{9}; });
        EXPECT_EQ(cleaner_.purgeOwnTrash(1, false), (TrashReport{.failures = busy}));
        EXPECT_FALSE(this->entry(entry.id).purgedFromTrash);
        EXPECT_TRUE(exists(file));
    });
}

TEST_F(CleanerVolumesTest, AutoCleanLooksAtTheVolumeOfTheHome) {
    withOwnMounts([&] {
        ASSERT_MOUNTED(mountMemory("own"));
        const std::string own = at("own");
        setenv("HOME", own.c_str(), 1);
        const AppConfig neverShort{.autoCleanEnabled = true, .freeSpaceThresholdGB = -1};
        const AutoCleanOutcome outcome = AutoCleaner::run(neverShort, cleaner_, true, false);
        const auto volume = VolumeInfo::snapshot(own);
        EXPECT_EQ(outcome.skippedReason, AutoCleaner::reasonToWait(neverShort, volume));
        EXPECT_EQ(VolumeInfo::ofHome()->total, volume->total);
        EXPECT_FALSE(VolumeInfo::ofHome()->isSystem);
    });
}

class FullDiskTest : public CleanerVolumesTest {
protected:
    static constexpr int kItems = 3;

    /// Three items in a home of its own on the volume, on which `fill` leaves little room.
    void prepareVolume(const std::function<void()>& fill) {
        ASSERT_MOUNTED(mountMemory("volume", "size=512k,nr_inodes=200"));
        setenv("HOME", at("volume").c_str(), 1);
        for (int i = 0; i < kItems; ++i) {
            write(item(i), "content");
        }
        makeFolder("volume/Library/Application Support/Brimlo");
        fill();
    }

    /// Mounts a file system on "volume": one in memory, or one that this command makes on an image.
    bool mountSystem(const char* make) {
        if (make == nullptr) {
            return mountMemory("volume", "size=1m,nr_inodes=200");
        }
        const std::string image = write("image", "");
        fs::resize_file(image, std::uintmax_t{320} << 20U);
        const std::string command = std::string{make} + " " + image + " && mount -o loop " + image +
                                    " " + makeFolder("volume");
        return std::system(("(" + command + ") > /dev/null 2>&1").c_str()) == 0;
    }

    /// Takes every block and inode of the volume that can be had.
    void fillUp() const {
        const int file = open(at("volume/filler").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        for (off_t size = std::uintmax_t{1} << 28U; size >= 1; size /= 2) {
            struct stat status{};
            while (fstat(file, &status) == 0 && posix_fallocate(file, status.st_size, size) == 0) {
            }
        }
        close(file);
        mkdir(at("volume/names").c_str(), 0700);
        for (int i = 0; i < 300'000; ++i) {
            const std::string name = at("volume/names/" + std::to_string(i));
            const int made = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
            if (made < 0) {
                break;
            }
            close(made);
        }
    }

    static std::string item(int number) {
        return "volume/code/" + std::string(200, 'i') + std::to_string(number);
    }

    /// Whether an item is in the Trash; it is in one place, and in the Trash it has its journal
    /// entry and its trashinfo file.
    [[nodiscard]] bool isTrashed(
        const std::string& path, const std::vector<JournalEntry>& entries) const {
        const std::string trash = at("volume/.local/share/Trash/");
        const std::string name = fs::path{path}.filename().string();
        const bool isThere = exists(trash + "files/" + name);
        EXPECT_NE(isThere, exists(path));
        const auto found = std::ranges::find(entries, path, &JournalEntry::originalPath);
        const auto note =
            Platform::TrashInfo::parse(contentOf(trash + "info/" + name + ".trashinfo"));
        EXPECT_EQ(found != entries.end(), isThere);
        EXPECT_EQ(note.has_value(), isThere);
        if (note && found != entries.end()) {
            EXPECT_EQ(found->trashPath, trash + "files/" + name);
            EXPECT_EQ(note->path, path);
            EXPECT_EQ(note->entryID, found->id.text());
        }
        return isThere;
    }

    /// Cleans the items and counts those that moved, wherever the room ran out.
    int cleanOnFullVolume() {
        const auto journal = std::make_shared<Journal>(StoragePaths::journal());
        const CleanReport report = Cleaner{journal}.execute(
            planFor({at(item(0)), at(item(1)), at(item(2))}), DisposalMode::trash, false);
        const std::vector<JournalEntry> entries = journal->entries().value();
        int moved = 0;
        for (int i = 0; i < kItems; ++i) {
            moved += isTrashed(at(item(i)), entries) ? 1 : 0;
        }
        EXPECT_EQ(report.processed, moved);
        EXPECT_EQ(report.failures.size(), static_cast<std::size_t>(kItems - moved));
        EXPECT_EQ(entries.size(), static_cast<std::size_t>(moved));
        for (const auto& file : fs::directory_iterator{StoragePaths::support()}) {
            EXPECT_NE(file.path().extension(), ".tmp");
        }
        return moved;
    }
};

TEST_F(FullDiskTest, DeletesWithNoRoomLeft) {
    const std::pair<const char*, const char*> systems[] = {
        {"tmpfs", nullptr          },
        {"ext4",  "mkfs.ext4 -q -F"},
        {"xfs",   "mkfs.xfs -q -f" },
    };
    withOwnMounts([&] {
        int tried = 0;
        int broken = 0;
        for (const auto& [system, make] : systems) {
            for (const bool isPurge : {true, false}) {
                SCOPED_TRACE(std::string{system} + (isPurge ? ", purge" : ", empty"));
                if (!mountSystem(make)) {
                    continue;  // The count tells.
                }
                setenv("HOME", at("volume").c_str(), 1);
                Cleaner cleaner{std::make_shared<Journal>(StoragePaths::journal())};
                fill("volume/old/file", 50'000);
                write("volume/single");
                const CleanPlan both = planFor({at("volume/old"), at("volume/single")});
                ASSERT_EQ(cleaner.execute(both, DisposalMode::trash, false).processed, 2);
                fillUp();
                const TrashReport report =
                    isPurge ? cleaner.purgeOwnTrash(0, false) : Cleaner::emptyTrash();
                EXPECT_EQ(report.removed, 2);
                EXPECT_EQ(report.failures, std::vector<ItemProblem>{});
                const bool isGone = fs::is_empty(at("volume/.local/share/Trash/files"));
                EXPECT_TRUE(isGone);
                EXPECT_EQ(cleaner.history().value().front().state(), JournalEntry::State::gone);
                ASSERT_EQ(umount(at("volume").c_str()), 0);
                ++tried;
                broken += isGone ? 0 : 1;
            }
        }
        ASSERT_MOUNTED(tried > 0);
        Testing::told("deletions on a full ext4, xfs or tmpfs", tried, broken);
    });
}

TEST_F(FullDiskTest, LeavesNothingHalfDoneWhateverIsFree) {
    constexpr std::uintmax_t kPage = 4'096;
    const auto leavePages = [&](std::uintmax_t pages) {
        struct statvfs status{};
        statvfs(at("volume").c_str(), &status);
        write("volume/filler", std::string((status.f_bfree - pages) * kPage, 'f'));
    };
    const auto leaveInodes = [&](std::uintmax_t inodes) {
        makeFolder("volume/filler");
        struct statvfs status{};
        statvfs(at("volume").c_str(), &status);
        for (std::uintmax_t i = inodes; i < status.f_ffree; ++i) {
            write("volume/filler/" + std::to_string(i), "");
        }
    };
    withOwnMounts([&] {
        const std::pair<const char*, std::function<void(std::uintmax_t)>> fills[] = {
            {"pages",  leavePages },
            {"inodes", leaveInodes}
        };
        for (const auto& [what, fill] : fills) {
            std::vector<int> moved;
            int broken = 0;
            constexpr std::uintmax_t kLevels = 45;
            for (std::uintmax_t room = 0; room < kLevels; ++room) {
                SCOPED_TRACE("room for " + std::to_string(room));
                const bool wasRight = !HasFailure();
                ASSERT_NO_FATAL_FAILURE(prepareVolume([&] { fill(room); }));
                if (IsSkipped()) {
                    return;
                }
                moved.push_back(cleanOnFullVolume());
                broken += wasRight && HasFailure() ? 1 : 0;
                ASSERT_EQ(umount(at("volume").c_str()), 0);
            }
            EXPECT_EQ(moved.front(), 0);
            EXPECT_EQ(moved.back(), kItems);
            Testing::told(std::string{"levels of a full disk, by "} + what, kLevels, broken);
        }
    });
}

}  // namespace
}  // namespace Brimlo
