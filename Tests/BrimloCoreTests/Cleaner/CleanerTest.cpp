#include "BrimloCore/Cleaner/Cleaner.h"

#include "BrimloCore/Platform/Linux/TrashInfo.h"
#include "BrimloCoreTests/Cleaner/Child.h"
#include "BrimloCoreTests/Cleaner/CleaningHome.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <utility>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace Brimlo {
namespace {

using Testing::contentOf;
using Testing::describeTree;
using Testing::exists;
using Testing::kNobody;
using Lines = std::vector<std::string>;

using CleanerTest = Testing::CleaningHome;

TEST_F(CleanerTest, MovesEachKindOfItem) {
    using Make = std::function<void(const std::string& path)>;
    const Make file = [](const std::string& path) {
        close(open(path.c_str(), O_WRONLY | O_CREAT, 0640));
    };
    const Make folder = [&](const std::string& path) {
        mkdir(path.c_str(), 0750);
        file(path + "/inside");
    };
    const auto linkTo = [&](const std::string& target) -> Make {
        return
            [=](const std::string& path) { EXPECT_EQ(symlink(target.c_str(), path.c_str()), 0); };
    };
    const Make outwards = linkTo(at("target"));
    // The name of the note is ten bytes longer and has to fit as well.
    const std::string longest(255, 'a');
    const std::string shortLongest(245, 'a');
    const struct {
        const char* name;
        std::string item;
        Make make;
        std::string ending;   ///< Behind the item's path in the plan.
        std::string trashed;  ///< The name it gets.
    } cases[] = {
        {"file",                       "file",        file,     "",    "file"       },
        {"folder",                     "folder",      folder,   "",    "folder"     },
        {"folder with a slash behind", "slashed",     folder,   "///", "slashed"    },
        {"link to a folder",           "link",        outwards, "",    "link"       },
        {"link with a slash behind",   "linked",      outwards, "/",   "linked"     },
        {"line end",                   "a\nPath=x\n", file,     "",    "a\nPath=x\n"},
        {"as long as can be",          longest,       file,     "",    shortLongest },
    };
    write("target/untouched");
    int number = 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string path = makeFolder("work/" + std::to_string(++number)) + "/" + c.item;
        c.make(path);
        const auto before = Cleaner::identity(path);
        ASSERT_TRUE(before);
        const CleanReport report = clean({path + c.ending});
        ASSERT_FALSE(report.hasProblems()) << testing::PrintToString(report);
        CleanReport expected{.movedToTrashBytes = kItemSize, .processed = 1};
        expected.journalIDs = report.journalIDs;
        EXPECT_EQ(report, expected);
        EXPECT_FALSE(exists(path));
        EXPECT_EQ(Cleaner::identity(inTrash(c.trashed)), before);

        ASSERT_EQ(report.journalIDs.size(), 1U);
        const JournalEntry found = entry(report.journalIDs.front());
        const JournalEntry told{
            .id = report.journalIDs.front(),
            .date = found.date,
            .originalPath = path + c.ending,
            .trashPath = inTrash(c.trashed),
            .size = kItemSize,
            .ruleID = "rule",
            .trashID = before,
            .batchID = found.batchID,
        };
        EXPECT_EQ(found, told);
        const auto note = Platform::TrashInfo::parse(contentOf(noteOf(c.trashed)));
        ASSERT_TRUE(note);
        EXPECT_EQ(note->path, path);
        EXPECT_EQ(note->entryID, found.id.text());
        EXPECT_EQ(statusOf(noteOf(c.trashed)).st_mode, S_IFREG | 0600U);
    }
    EXPECT_TRUE(exists(at("target/untouched")));
}

TEST_F(CleanerTest, FindsAFreeNameBesideWhatIsThere) {
    makeFolder(".local/share/Trash");
    write(".local/share/Trash/files/lost.txt", "an item that lost its note");
    write(".local/share/Trash/info/orphan.txt.trashinfo", "a note that lost its item");
    link(".local/share/Trash/files/dangling.txt", "nowhere");
    const std::pair<std::string, std::string> cases[] = {
        {"a.txt",        "a.txt"         },
        {"a.txt",        "a.2.txt"       },
        {".a",           ".a"            },
        {"lost.txt",     "lost.2.txt"    },
        {"orphan.txt",   "orphan.2.txt"  },
        {"dangling.txt", "dangling.2.txt"},
    };
    for (const auto& [name, trashed] : cases) {
        EXPECT_EQ(trash(write("work/" + name, trashed)).trashPath, inTrash(trashed));
        EXPECT_EQ(contentOf(inTrash(trashed)), trashed);
        EXPECT_TRUE(exists(noteOf(trashed)));
    }
    for (int i = 0; i < 40; ++i) {
        const std::string content = "one of many " + std::to_string(i);
        EXPECT_EQ(contentOf(*trash(write("work/a.txt", content)).trashPath), content);
    }
    EXPECT_EQ(contentOf(inTrash("lost.txt")), "an item that lost its note");
    EXPECT_FALSE(exists(noteOf("lost.txt")));
    EXPECT_EQ(contentOf(noteOf("orphan.txt")), "a note that lost its item");
    EXPECT_FALSE(exists(inTrash("orphan.txt")));
}

TEST_F(CleanerTest, LeavesWhatItMustNotMove) {
    trash(write("work/old"));
    write(".ssh/key");
    write("work/x", "what the text means");
    write("work/real/x", "what the disk means");
    link("work/link", makeFolder("work/real/sub"));
    const std::string otherText = at("work/link/../x");
    const std::string badName = write("work/bad\xFFname");
    const std::string badFolder = write("work/bad\xC0/item");
    const std::string intoSsh = link("work/keys", at(".ssh")) + "/key";
    const std::string unreviewed = "it is not the item that was reviewed";
    const std::string unwritable =
        "its name is not valid text, so the journal could not bring it back";
    const std::string credentials = "holds credentials, settings or agent memory";
    const std::string ofTheTrash = "it is part of the Trash or lies there already";
    const std::string share = at(".local/share");
    const struct {
        const char* name;
        std::string path;
        std::string reason;
        bool isRefused;
    } cases[] = {
        {"vanished",                      at("work/vanished"),   "no longer exists",   false},
        {"text and disk mean two things", otherText,             unreviewed,           false},
        {"name that is no text",          badName,               unwritable,           false},
        {"folder that is no text",        badFolder,             unwritable,           false},
        {"what is around the Trash",      at(".local"),          credentials,          true },
        {"folder of the notes",           share + "/Trash/info", ofTheTrash,           false},
        {"item in the Trash",             inTrash("old"),        ofTheTrash,           false},
        {"home",                          home(),                "protected location", true },
        {"credentials",                   at(".ssh/key"),        credentials,          true },
        {"through a link",                intoSsh,               credentials,          true },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        CleanReport expected;
        (c.isRefused ? expected.refused : expected.failures).push_back({c.path, c.reason});
        EXPECT_EQ(clean({c.path}), expected);
    }
    EXPECT_EQ(entries().size(), 1U);
}

TEST_F(CleanerTest, MovesTheItemThatTheGateSaw) {
    const std::string path = write("work/item", "judged");
    write("other", "not judged");
    const auto swap = [&](const CleanItem&) {
        std::filesystem::rename(path, at("judged"));
        std::filesystem::rename(at("other"), path);
    };
    CleanReport expected;
    expected.failures = {
        {path, "it is not the item that was reviewed"}
    };
    EXPECT_EQ(clean({path}, {.progress = swap}), expected);
    EXPECT_EQ(contentOf(path), "not judged");
}

TEST_F(CleanerTest, StopsBetweenItemsAndNamesThoseThatItLeft) {
    const Lines paths{write("work/a"), write("work/b"), write("work/c")};
    int asked = 0;
    // Asked before each of the three is prepared, and before each moves.
    const CleanReport report = clean(paths, {.isStopped = [&] { return ++asked > 4; }});
    EXPECT_EQ(report.processed, 1);
    EXPECT_EQ(report.untouched, (Lines{paths[1], paths[2]}));
    EXPECT_FALSE(exists(paths[0]));
    EXPECT_TRUE(exists(paths[1]) && exists(paths[2]));
    EXPECT_FALSE(exists(noteOf("b")));
    EXPECT_EQ(entries().size(), 1U);
}

TEST_F(CleanerTest, MovesItemsOfManyFoldersWithFewDescriptors) {
    Lines paths;
    for (int i = 0; i < 100; ++i) {
        paths.push_back(write("work/" + std::to_string(i) + "/item"));
    }
    const rlimit few{.rlim_cur = 64, .rlim_max = 64};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
    const CleanReport report = clean(paths);
    EXPECT_EQ(report.failures, std::vector<ItemProblem>{});
    EXPECT_EQ(report.processed, 100);
}

TEST_F(CleanerTest, TheNextReaderSettlesWhatAKilledCleanMoved) {
    const Lines names{"a", "b", "c"};
    for (int last = 0; last < 6; ++last) {
        SCOPED_TRACE(last);
        Lines paths;
        for (const std::string& name : names) {
            paths.push_back(write("work/" + name, name));
        }
        Testing::inProcesses(1, [&](int) {
            int asked = 0;
            const auto die = [&] {
                if (asked++ == last) {
                    _exit(0);
                }
                return false;
            };
            static_cast<void>(clean(paths, {.isStopped = die}));
        });
        std::erase_if(paths, exists);
        std::vector<Uuid> ids;
        for (const JournalEntry& entry : entries()) {
            EXPECT_EQ(std::ranges::count(paths, entry.originalPath), 1);
            EXPECT_FALSE(contentOf(entry.trashPath.value_or("")).empty());
            ids.push_back(entry.id);
        }
        EXPECT_EQ(std::ssize(paths), std::max(0, last - 3));
        EXPECT_EQ(ids.size(), paths.size());
        EXPECT_EQ(cleaner_.undo(ids).restored.size(), paths.size());
        std::filesystem::remove_all(at(".local"));
        std::filesystem::remove(StoragePaths::journal());
    }
}

TEST_F(CleanerTest, RefusesATrashThatIsNotPrivate) {
    using Spoil = std::function<void(const std::string& path)>;
    const Spoil writable = [](const std::string& path) { chmod(path.c_str(), 0777); };
    const Spoil asLink = [&](const std::string& path) {
        std::filesystem::rename(path, at("moved"));
        std::filesystem::create_symlink(at("moved"), path);
    };
    // Somebody else may be in any group but the one that has the user's name.
    const Spoil shared = [](const std::string& path) {
        chmod(path.c_str(), chown(path.c_str(), geteuid(), kNobody) == 0 ? 0770 : 0777);
    };
    const std::pair<const char*, Spoil> cases[] = {
        {"a link",                asLink  },
        {"writable by all",       writable},
        {"writable by its group", shared  },
    };
    const std::string path = write("work/item");
    for (const auto& [what, spoil] : cases) {
        for (const std::string folder : {"Trash", "Trash/files", "Trash/info"}) {
            SCOPED_TRACE(folder + " is " + what);
            std::filesystem::remove_all(at("moved"));
            std::filesystem::remove_all(at(".local/share/Trash"));
            makeFolder(".local/share/Trash/files");
            makeFolder(".local/share/Trash/info");
            spoil(at(".local/share/" + folder));
            const Lines before = describeTree(at(".local/share"));
            const std::string name = folder.substr(folder.rfind('/') + 1);
            CleanReport expected;
            expected.failures = {
                {path,
                 "the Trash folder \"" + name +
                     "\" is a link, belongs to somebody else or may be changed by others"}
            };
            EXPECT_EQ(clean({path}), expected);
            EXPECT_EQ(describeTree(at(".local/share")), before);
        }
    }
    EXPECT_TRUE(exists(path));
    EXPECT_EQ(entries().size(), 0U);
}

TEST_F(CleanerTest, TellsWhatTheJournalDoesNotKnow) {
    using Spoil = std::function<void(const std::string& path)>;
    const struct {
        const char* name;
        Spoil spoil;
        int code;
    } cases[] = {
        {"a pipe",         [](const std::string& path) { mkfifo(path.c_str(), 0600); },    EINVAL},
        {"a folder",       [](const std::string& path) { mkdir(path.c_str(), 0700); },     EISDIR},
        {"not to be read", [](const std::string& path) { close(creat(path.c_str(), 0)); }, EACCES},
        {"not to be made",
         [](const std::string&) { chmod(StoragePaths::support().c_str(), 0500); },
         EACCES                                                                                  },
    };
    asOrdinaryUser([&] {
        for (const auto& c : cases) {
            SCOPED_TRACE(c.name);
            const std::string path = write("work/item");
            c.spoil(StoragePaths::journal());
            const std::string reason = Error::fromSystem(c.code).description;
            CleanReport expected;
            expected.failures = {
                {path, "the journal can't be written: " + reason}
            };
            EXPECT_EQ(clean({path}, {.unrecorded = CleanOptions::Unrecorded::stays}), expected);
            EXPECT_TRUE(exists(path));

            expected = {.movedToTrashBytes = kItemSize, .processed = 1};
            expected.unrecorded = {
                {path, "it is in the Trash and the journal lacks it: " + reason}
            };
            EXPECT_EQ(clean({path}), expected);
            EXPECT_TRUE(exists(inTrash("item")));
            chmod(StoragePaths::support().c_str(), 0700);
            std::filesystem::remove_all(StoragePaths::journal());
            std::filesystem::remove_all(at(".local"));
        }
    });
}

}  // namespace
}  // namespace Brimlo
