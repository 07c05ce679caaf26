#include "BrimloCore/Cleaner/Cleaner.h"

#include "BrimloCore/Platform/Linux/TrashInfo.h"
#include "BrimloCoreTests/Cleaner/Child.h"
#include "BrimloCoreTests/Cleaner/CleaningHome.h"

#include <chrono>
#include <ctime>
#include <filesystem>
#include <functional>

#include <fcntl.h>
#include <unistd.h>

namespace Brimlo {
namespace {

using Testing::contentOf;
using Testing::describeTree;
using Testing::exists;
using Lines = std::vector<std::string>;

class CleanerTest : public Testing::CleaningHome {
protected:
    /// `text` so many times.
    static std::string times(int count, const std::string& text) {
        std::string result;
        for (int i = 0; i < count; ++i) {
            result += text;
        }
        return result;
    }
};

TEST_F(CleanerTest, MovesEachKindOfItem) {
    using Make = std::function<void(const std::string& path)>;
    const Make file = [](const std::string& path) { close(creat(path.c_str(), 0640)); };
    const Make folder = [&](const std::string& path) {
        mkdir(path.c_str(), 0750);
        file(path + "/inside");
    };
    const Make fifo = [](const std::string& path) { mkfifo(path.c_str(), 0600); };
    const Make socket = [](const std::string& path) { mknod(path.c_str(), S_IFSOCK | 0600, 0); };
    const auto linkTo = [&](const std::string& target) -> Make {
        return
            [=](const std::string& path) { EXPECT_EQ(symlink(target.c_str(), path.c_str()), 0); };
    };
    const Make outwards = linkTo(at("target"));
    const Make nowhere = linkTo("nowhere");
    // The name of the note is ten bytes longer and has to fit as well.
    const std::string longest = times(255, "a");
    const std::string shortLongest = times(245, "a");
    const std::string ending = times(251, "b") + ".tar";
    const std::string shortEnding = times(241, "b") + ".tar";
    const std::string twoBytes = times(127, "\u00e9") + "x";
    const std::string shortTwoBytes = times(122, "\u00e9");
    const std::string fourBytes = times(63, "\U0001F600");
    const std::string shortFourBytes = times(61, "\U0001F600");
    struct Case {
        const char* name;
        std::string item;
        Make make;
        std::string ending;   ///< Behind the item's path in the plan.
        std::string trashed;  ///< The name it gets.
    };
    const Case cases[] = {
        {"file",                       "file",               file,     "",           "file"              },
        {"folder",                     "folder",             folder,   "",           "folder"            },
        {"folder with a slash behind", "slashed",            folder,   "///",        "slashed"           },
        {"folder spelled with dots",   "dotted",             folder,   "/../dotted", "dotted"            },
        {"link to a folder",           "link",               outwards, "",           "link"              },
        {"link with a slash behind",   "linked",             outwards, "/",          "linked"            },
        {"dangling link",              "dangling",           nowhere,  "",           "dangling"          },
        {"dangling link with a slash", "dangling2",          nowhere,  "/",          "dangling2"         },
        {"pipe",                       "fifo",               fifo,     "",           "fifo"              },
        {"socket",                     "socket",             socket,   "",           "socket"            },
        {"line end",                   "a\nPath=x\n",        file,     "",           "a\nPath=x\n"       },
        {"percent",                    "100%25%",            file,     "",           "100%25%"           },
        {"leading dot",                ".hidden",            file,     "",           ".hidden"           },
        {"dots only",                  "...",                file,     "",           "..."               },
        {"composed letters",           "\u00e9\u00df\u6f22", file,     "",           "\u00e9\u00df\u6f22"},
        {"as long as can be",          longest,              file,     "",           shortLongest        },
        {"long with an ending",        ending,               file,     "",           shortEnding         },
        {"long of two bytes each",     twoBytes,             file,     "",           shortTwoBytes       },
        {"long of four bytes each",    fourBytes,            file,     "",           shortFourBytes      },
    };
    write("target/untouched");
    int number = 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string path = makeFolder("work/" + std::to_string(++number)) + "/" + c.item;
        c.make(path);
        const auto before = Cleaner::identity(path);
        ASSERT_TRUE(before);
        const auto start =
            std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());

        const CleanReport report = clean({path + c.ending});
        ASSERT_EQ(report.failures, Lines{});
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
        EXPECT_GE(found.date, start);
        EXPECT_LE(found.date, std::chrono::system_clock::now());

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
    struct Case {
        const char* name;
        const char* trashed;
    };
    const Case cases[] = {
        {"a.txt",        "a.txt"         },
        {"a.txt",        "a.2.txt"       },
        {"a.txt",        "a.3.txt"       },
        {".a",           ".a"            },
        {".a",           ".a.2"          },
        {"lost.txt",     "lost.2.txt"    },
        {"orphan.txt",   "orphan.2.txt"  },
        {"dangling.txt", "dangling.2.txt"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.trashed);
        EXPECT_EQ(
            trash(write(std::string{"work/"} + c.name, c.trashed)).trashPath, inTrash(c.trashed));
        EXPECT_EQ(contentOf(inTrash(c.trashed)), c.trashed);
        EXPECT_TRUE(exists(noteOf(c.trashed)));
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
    const std::string aroundTrash = "the Trash itself lies inside it";
    const std::string share = at(".local/share");
    struct Case {
        const char* name;
        std::string path;
        std::string reason;
        bool isRefused;
    };
    const Case cases[] = {
        {"vanished",                      at("work/vanished"),    "no longer exists",             false},
        {"below a file",                  at("work/x/y"),         "no longer exists",             false},
        {"text and disk mean two things", otherText,              unreviewed,                     false},
        {"name that is no text",          badName,                unwritable,                     false},
        {"folder that is no text",        badFolder,              unwritable,                     false},
        {"Trash and what is around it",   at(".local"),           aroundTrash,                    false},
        {"Trash",                         share + "/Trash",       aroundTrash,                    false},
        {"folder of the items",           share + "/Trash/files", aroundTrash,                    false},
        {"folder of the notes",           share + "/Trash/info",  ofTheTrash,                     false},
        {"item in the Trash",             inTrash("old"),         ofTheTrash,                     false},
        {"note in the Trash",             noteOf("old"),          ofTheTrash,                     false},
        {"home",                          home(),                 "protected location",           true },
        {"credentials",                   at(".ssh/key"),         credentials,                    true },
        {"through a link",                intoSsh,                credentials,                    true },
        {"not the user's",                "/etc/passwd",          "outside user-owned locations", true },
    };
    const Lines before = describeTree(home());
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        CleanReport expected;
        Lines& lines = c.isRefused ? expected.refused : expected.failures;
        lines.push_back(c.path + ": " + c.reason);
        EXPECT_EQ(clean({c.path}), expected);
    }
    // A name tried and taken back changes a folder's time, and no more.
    const auto names = [](const Lines& lines) {
        Lines result;
        for (const std::string& line : lines) {
            result.push_back(line.substr(0, line.find(" time ")));
        }
        return result;
    };
    EXPECT_EQ(names(describeTree(home())), names(before));
    EXPECT_EQ(journal_->entries().size(), 1U);
}

TEST_F(CleanerTest, RecordsARunAsOneBatch) {
    const Lines paths{write("work/a"), write("work/bb"), write(".ssh/c"), write("work/dddd")};
    Lines told;
    const auto progress = [&](const std::string& path) { told.push_back(path); };
    std::filesystem::remove(paths[1]);
    const CleanReport report = clean(paths, progress);
    CleanReport expected{.movedToTrashBytes = 2 * kItemSize, .processed = 2};
    expected.failures = {paths[1] + ": no longer exists"};
    expected.refused = {paths[2] + ": holds credentials, settings or agent memory"};
    expected.journalIDs = report.journalIDs;
    EXPECT_EQ(report, expected);
    EXPECT_EQ(told, (Lines{paths[0], paths[1], paths[3]}));
    ASSERT_EQ(report.journalIDs.size(), 2U);
    EXPECT_EQ(entry(report.journalIDs[0]).originalPath, paths[0]);
    EXPECT_EQ(entry(report.journalIDs[1]).originalPath, paths[3]);
    const Uuid batchID = entry(report.journalIDs[0]).batchID;
    EXPECT_EQ(entry(report.journalIDs[1]).batchID, batchID);
    EXPECT_NE(trash(write("work/later")).batchID, batchID);
}

TEST_F(CleanerTest, TouchesNothingInADryRun) {
    const CleanPlan plan = planFor({write("work/a"), write(".ssh/b"), at("work/missing")});
    const Lines before = describeTree(home());
    int told = 0;
    CleanReport expected{.processed = 2};
    expected.refused = {at(".ssh/b") + ": holds credentials, settings or agent memory"};
    EXPECT_EQ(
        cleaner_.execute(plan, DisposalMode::trash, true, [&](const std::string&) { ++told; }),
        expected);
    EXPECT_EQ(cleaner_.execute(CleanPlan{{}}, DisposalMode::trash, false), CleanReport{});
    EXPECT_EQ(told, 2);
    EXPECT_EQ(describeTree(home()), before);
}

TEST_F(CleanerTest, FollowsNoParentThatBecameALink) {
    const std::string secret = write(".ssh/item", "secret");
    const std::string path = write("work/item");
    const CleanPlan plan = planFor({path});
    const auto swap = [&](const std::string& = {}) {
        std::filesystem::rename(at("work"), at("aside"));
        link("work", at(".ssh"));
    };
    // Between the gate's verdict and the move.
    const CleanReport late = cleaner_.execute(plan, DisposalMode::trash, false, swap);
    EXPECT_EQ(late.failures.size(), 1U);
    EXPECT_EQ(late.processed, 0);
    // Between the review and the run.
    const CleanReport early = cleaner_.execute(plan, DisposalMode::trash, false);
    EXPECT_EQ(early.refused, Lines{path + ": holds credentials, settings or agent memory"});
    EXPECT_EQ(contentOf(secret), "secret");
    EXPECT_TRUE(exists(at("aside/item")));
    EXPECT_EQ(journal_->entries().size(), 0U);
}

TEST_F(CleanerTest, MovesTheItemThatTheGateSaw) {
    const std::string path = write("work/item", "judged");
    write("other", "not judged");
    const CleanReport report = clean({path}, [&](const std::string&) {
        std::filesystem::rename(path, at("judged"));
        std::filesystem::rename(at("other"), path);
    });
    EXPECT_EQ(report.failures, Lines{path + ": it is not the item that was reviewed"});
    EXPECT_EQ(contentOf(path), "not judged");
}

TEST_F(CleanerTest, RefusesATrashThatIsNotPrivate) {
    using Spoil = std::function<void(const std::string& path)>;
    const Spoil writable = [](const std::string& path) { chmod(path.c_str(), 0777); };
    const Spoil asLink = [&](const std::string& path) {
        std::filesystem::rename(path, at("moved"));
        std::filesystem::create_symlink(at("moved"), path);
    };
    const Spoil asFile = [&](const std::string& path) {
        std::filesystem::remove_all(path);
        close(creat(path.c_str(), 0600));
    };
    const Spoil foreign = [&](const std::string& path) {
        EXPECT_EQ(chown(path.c_str(), Testing::kNobody, Testing::kNobody), 0);
    };
    struct Case {
        const char* name;
        Spoil spoil;
        bool needsRoot;
    };
    const Case cases[] = {
        {"a link",          asLink,   false},
        {"a file",          asFile,   false},
        {"writable by all", writable, false},
        {"somebody else's", foreign,  true },
    };
    const std::string path = write("work/item");
    for (const auto& c : cases) {
        for (const std::string folder : {"Trash", "Trash/files", "Trash/info"}) {
            if (c.needsRoot && geteuid() != 0) {
                continue;
            }
            SCOPED_TRACE(folder + " is " + c.name);
            std::filesystem::remove_all(at("moved"));
            std::filesystem::remove_all(at(".local/share/Trash"));
            makeFolder(".local/share/Trash/files");
            makeFolder(".local/share/Trash/info");
            c.spoil(at(".local/share/" + folder));
            const Lines before = describeTree(at(".local/share"));
            const std::string name = folder.substr(folder.rfind('/') + 1);
            CleanReport expected;
            expected.failures = {
                path + ": the Trash folder \"" + name +
                "\" is a link, belongs to somebody else or may be changed by others"};
            EXPECT_EQ(clean({path}), expected);
            EXPECT_EQ(describeTree(at(".local/share")), before);
        }
    }
    EXPECT_TRUE(exists(path));
    EXPECT_EQ(journal_->entries().size(), 0U);
}

TEST_F(CleanerTest, TellsWhatPermissionsForbid) {
    const std::string sticky = write("sticky/item");
    chmod(at("sticky").c_str(), 01777);
    const bool isRoot = geteuid() == 0;
    asOrdinaryUser([&] {
        const std::string closed = write("closed/item");
        chmod(at("closed").c_str(), 0555);
        const std::string cause = ": no permission to change its folder";
        EXPECT_EQ(clean({closed}).failures, Lines{closed + cause});
        EXPECT_FALSE(exists(at(".local")));  // Asked before anything is written.
        if (isRoot) {
            EXPECT_EQ(clean({sticky}).failures, Lines{sticky + ": it belongs to somebody else"});
        }
        const std::string locked = makeFolder("work/locked");
        chmod(locked.c_str(), 0555);
        EXPECT_EQ(clean({locked}).failures, Lines{locked + ": no permission to move it"});
        EXPECT_TRUE(std::filesystem::is_empty(at(".local/share/Trash/info")));

        chmod(at(".local/share").c_str(), 0555);
        std::filesystem::remove_all(at(".local/share/Trash/files"));
        std::filesystem::remove_all(at(".local/share/Trash/info"));
        chmod(at(".local/share/Trash").c_str(), 0555);
        const std::string path = write("work/item");
        EXPECT_EQ(
            clean({path}).failures,
            Lines{path + ": the Trash folder \"files\" could not be opened (Permission denied)"});
        EXPECT_TRUE(exists(path));
    });
}

TEST_F(CleanerTest, MovesWithoutAJournalToWriteTo) {
    asOrdinaryUser([&] {
        const std::string path = write("work/item");
        chmod(StoragePaths::support().c_str(), 0500);
        const CleanReport report = clean({path});
        EXPECT_EQ(report.failures, Lines{});
        EXPECT_EQ(report.processed, 1);
        EXPECT_EQ(report.journalIDs.size(), 1U);
        EXPECT_TRUE(exists(inTrash("item")));
        EXPECT_EQ(journal_->entries().size(), 0U);
        chmod(StoragePaths::support().c_str(), 0700);
    });
}

TEST_F(CleanerTest, LeavesAnUnreadableJournalAlone) {
    asOrdinaryUser([&] {
        trash(write("work/first"));
        const std::string before = contentOf(StoragePaths::journal());
        chmod(StoragePaths::journal().c_str(), 0);
        EXPECT_EQ(clean({write("work/item")}).processed, 1);
        chmod(StoragePaths::journal().c_str(), 0600);
        EXPECT_EQ(contentOf(StoragePaths::journal()), before);
    });
}

}  // namespace
}  // namespace Brimlo
