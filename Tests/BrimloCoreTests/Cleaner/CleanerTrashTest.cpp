#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCoreTests/Cleaner/Child.h"
#include "BrimloCoreTests/Cleaner/CleaningHome.h"
#include "Support/DeepFolder.h"

#include <chrono>
#include <filesystem>
#include <functional>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Brimlo {
namespace {

namespace fs = std::filesystem;
using Testing::contentOf;
using Testing::describeTree;
using Testing::exists;
using Testing::inChild;
using Lines = std::vector<std::string>;
using Problems = std::vector<ItemProblem>;

class CleanerTrashTest : public Testing::CleaningHome {
protected:
    /// Makes the journal say of an item that it was trashed so many seconds ago.
    void setAge(const JournalEntry& entry, std::int64_t seconds) {
        change(entry.id, [&](JournalEntry& changed) {
            changed.date -= std::chrono::seconds{seconds};
        });
    }
};

TEST_F(CleanerTrashTest, UndoRestoresATreeExactly) {
    const std::string tree = makeFolder("work/tree");
    write("work/tree/a/file", "content");
    write("work/tree/old", "old");
    age(at("work/tree/old"), 400);
    link("work/tree/dangling", "../nowhere");
    link("work/tree/out", home());
    age(at("work/tree/out"), 3);
    fs::create_hard_link(at("work/tree/a/file"), at("work/tree/hard"));
    write("work/tree/sparse", "x");
    fs::resize_file(at("work/tree/sparse"), std::uintmax_t{1} << 20U);
    write("work/tree/shut/inside");
    mkfifo(at("work/tree/pipe").c_str(), 0604);
    chmod(at("work/tree/old").c_str(), 04511);
    chmod(at("work/tree/a").c_str(), 03755);
    age(at("work/tree/a"), 20);
    age(tree, 30);
    const Lines before = describeTree(tree);
    const auto blocks = statusOf(at("work/tree/sparse")).st_blocks;
    chmod(at("work/tree/shut").c_str(), 0);

    const JournalEntry entry = trash(tree);
    fs::remove_all(at("work"));
    EXPECT_EQ(undo(entry), tree);
    EXPECT_EQ(statusOf(at("work/tree/shut")).st_mode, static_cast<mode_t>(S_IFDIR));
    chmod(at("work/tree/shut").c_str(), 0755);
    EXPECT_EQ(describeTree(tree), before);
    EXPECT_EQ(statusOf(at("work/tree/sparse")).st_blocks, blocks);
    EXPECT_EQ(statusOf(at("work/tree/hard")).st_nlink, 2U);
    EXPECT_FALSE(exists(inTrash("tree")));
    EXPECT_FALSE(exists(noteOf("tree")));
    JournalEntry expected = entry;
    expected.undone = true;
    EXPECT_EQ(this->entry(entry.id), expected);
}

TEST_F(CleanerTrashTest, UndoRestoresOnlyTheItemAndOverwritesNothing) {
    using Change = std::function<void(JournalEntry & entry)>;
    const std::string path = at("work/item");
    const auto rewriteNote = [&](const std::string& line) {
        write(".local/share/Trash/info/item.trashinfo", "[Trash Info]\nPath=/x\n" + line);
    };
    const auto otherDevice = [](JournalEntry& entry) {
        entry.trashID = "77:" + entry.trashID->substr(entry.trashID->find(':') + 1);
    };
    const Change none = [](JournalEntry&) {};
    const Change emptied = [&](JournalEntry&) { fs::remove(inTrash("item")); };
    const Change otherInode = [](JournalEntry& entry) { entry.trashID = "1:1"; };
    const Change noIdentity = [](JournalEntry& entry) { entry.trashID = {}; };
    const Change othersNote = [&](JournalEntry&) { rewriteNote(""); };
    const Change noNote = [&](JournalEntry&) { fs::remove(noteOf("item")); };
    const Change reused = [&](JournalEntry&) {
        rewriteNote("X-Brimlo-Entry=" + Uuid{}.text() + "\n");
    };
    const Change noTrash = [&](JournalEntry& entry) {
        entry.trashPath = write(".ssh/files/item", "the item");
        entry.trashID = {};
        write(
            ".ssh/info/item.trashinfo",
            "[Trash Info]\nPath=/x\nX-Brimlo-Entry=" + entry.id.text() + "\n");
    };
    const Change cutPath = [&](JournalEntry& entry) {
        entry.originalPath = at("work") + std::string{"/x\0y", 4};
    };
    const Change newFile = [&](JournalEntry&) { write("work/item", "new"); };
    const Change newLink = [&](JournalEntry&) { link("work/item", "none"); };
    const Change linkedTrash = [&](JournalEntry&) {
        fs::rename(at(".local/share/Trash/files"), at("elsewhere"));
        link(".local/share/Trash/files", at("elsewhere"));
    };
    const Change fileAbove = [&](JournalEntry&) {
        fs::remove_all(at("work"));
        write("work");
    };
    const std::string gone = "Nothing left to restore from";
    const std::string taken = "Something already exists at " + path;
    const std::string unsafe =
        "the Trash folder \"files\" is a link, belongs to somebody else or may be changed by "
        "others";
    const struct {
        const char* name;
        Change change;
        std::string reason;  ///< Empty when it comes back.
    } cases[] = {
        {"untouched",                   none,        ""                                        },
        {"emptied",                     emptied,     gone                                      },
        {"other inode",                 otherInode,  gone                                      },
        {"reused inode",                reused,      gone                                      },
        {"device renumbered",           otherDevice, ""                                        },
        {"note of another program",     othersNote,  gone                                      },
        {"no note",                     noNote,      gone                                      },
        {"no identity",                 noIdentity,  ""                                        },
        {"out of no Trash",             noTrash,     gone                                      },
        {"a path cut at a NUL",         cutPath,     "The journal names no place to restore to"},
        {"file in its place",           newFile,     taken                                     },
        {"dangling link in its place",  newLink,     taken                                     },
        {"Trash behind a link",         linkedTrash, unsafe                                    },
        {"a file where its folder was", fileAbove,   Error::fromSystem(ENOTDIR).description    },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        for (const char* folder : {"work", ".local", ".ssh", "elsewhere"}) {
            fs::remove_all(at(folder));
        }
        const JournalEntry entry = trash(write("work/item", "the item"));
        JournalEntry seen = entry;
        c.change(seen);
        const auto content = [&] { return fs::is_regular_file(path) ? contentOf(path) : ""; };
        const std::string before = content();
        const bool comesBack = c.reason.empty();
        const auto undone = undo(seen);
        EXPECT_EQ(undone ? "" : undone.error(), c.reason);
        EXPECT_EQ(this->entry(entry.id).undone, comesBack);
        EXPECT_EQ(content(), comesBack ? "the item" : before);
        EXPECT_EQ(exists(inTrash("item")), !comesBack && std::string_view{c.name} != "emptied");
    }
}

TEST_F(CleanerTrashTest, RestoresAndPurgesSingleItemsOfAnyProgram) {
    const std::string path = "Path=" + home() + "/";
    const std::string nowhere = "The Trash names no place to restore to";
    const struct {
        const char* name;
        std::string note;
        std::string reason;
    } cases[] = {
        {"line end in the path", path + "new/deep/a%0Ab\n",   ""                                          },
        {"taken",                path + "taken\n",            "Something already exists at " + at("taken")},
        {"dots",                 path + "new/../../item\n",   nowhere                                     },
        {"relative",             "Path=new/item\n",           nowhere                                     },
        {"NUL",                  path + "a%00b\n",            nowhere                                     },
        {"cut",                  path + "a%2\n",              nowhere                                     },
        {"no path",              "DeletionDate=2026-03-01\n", nowhere                                     },
    };
    write("taken", "new");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        write(".local/share/Trash/files/item", "theirs");
        write(".local/share/Trash/info/item.trashinfo", "[Trash Info]\n" + c.note);
        const auto items = cleaner_.trashContents()->find({"item", inTrash("item")});
        ASSERT_TRUE(items);
        ASSERT_EQ(items->size(), 1U);
        const UndoReport report = cleaner_.restore(*items);
        EXPECT_EQ(report.failures.empty() ? "" : report.failures.front().reason, c.reason);
        EXPECT_EQ(exists(inTrash("item")), !c.reason.empty());
        EXPECT_EQ(cleaner_.purge(*items).removed, c.reason.empty() ? 0 : 1);
        EXPECT_FALSE(exists(inTrash("item")) || exists(noteOf("item")));
    }
    EXPECT_EQ(contentOf(at("new/deep/a\nb")), "theirs");
    EXPECT_EQ(contentOf(at("taken")), "new");

    const JournalEntry back = trash(write("back"));
    const JournalEntry gone = trash(write("gone"));
    EXPECT_TRUE(cleaner_.restore(*cleaner_.trashContents()->find({at("back")})).failures.empty());
    const auto items = *cleaner_.trashContents()->find({"gone"});
    fs::rename(inTrash("gone"), at("kept"));
    write(".local/share/Trash/files/gone", "another");
    EXPECT_EQ(cleaner_.purge(items).removed, 0);
    EXPECT_EQ(contentOf(inTrash("gone")), "another");
    fs::rename(at("kept"), inTrash("gone"));
    EXPECT_EQ(cleaner_.purge(items).removed, 1);
    EXPECT_TRUE(entry(back.id).undone && entry(gone.id).purgedFromTrash);
}

TEST_F(CleanerTrashTest, PurgeTakesOnlyOwnOldItems) {
    constexpr std::int64_t kDay = 86'400;
    using Change = std::function<void(JournalEntry & entry)>;
    const auto aged = [](std::int64_t seconds) -> Change {
        return [=](JournalEntry& entry) { entry.date -= std::chrono::seconds{seconds}; };
    };
    const auto old = [&](const Change& change) -> Change {
        return [=](JournalEntry& entry) {
            entry.date -= std::chrono::seconds{11 * kDay};
            change(entry);
        };
    };
    const auto removed = [&](JournalEntry& entry) { fs::remove(*entry.trashPath); };
    const auto replaced = [&](JournalEntry& entry) {
        // The first one stays, so that its inode is not used again.
        fs::rename(*entry.trashPath, at("kept"));
        write(fs::path{*entry.trashPath}.lexically_relative(home()).string(), "other");
    };
    const auto elsewhere = [&](JournalEntry& entry) {
        const std::string folder = makeFolder("volume/.Trash-0/files");
        fs::rename(*entry.trashPath, folder + "/item");
        entry.trashPath = folder + "/item";
    };
    const auto dotted = [&](JournalEntry& entry) {
        entry.trashPath = at(".local/share/Trash/files/../files/item");
    };
    // ext4 gives the inode of a file that is gone to the next one.
    const auto annexed = [&](JournalEntry&) {
        write(".local/share/Trash/info/item.trashinfo", "[Trash Info]\nPath=/theirs\n");
    };
    const auto undone = [](JournalEntry& entry) { entry.undone = true; };
    const auto unidentified = [](JournalEntry& entry) { entry.trashID = {}; };
    const auto noteless = [&](JournalEntry&) { fs::remove(noteOf("item")); };
    const struct {
        const char* name;
        Change change;
        std::int64_t bytes;
        bool isMarked;
        bool isDeleted;  ///< What lies at the entry's path in the Trash.
        bool isMarkedInDryRun;
    } cases[] = {
        {"old",                    aged(10 * kDay + 5),  kItemSize, true,  true,  false},
        {"younger than the limit", aged(10 * kDay - 60), 0,         false, false, false},
        {"undone",                 old(undone),          0,         false, false, false},
        {"vanished",               old(removed),         0,         true,  true,  true },
        {"without identity",       old(unidentified),    0,         false, false, false},
        {"another object",         old(replaced),        0,         true,  false, true },
        {"in what is no Trash",    old(elsewhere),       0,         true,  false, true },
        {"by way of dots",         old(dotted),          0,         true,  false, true },
        {"without a note",         old(noteless),        0,         true,  false, true },
        {"with another's note",    old(annexed),         0,         true,  false, true },
    };
    for (const auto& c : cases) {
        for (const bool dryRun : {true, false}) {
            SCOPED_TRACE(std::string{c.name} + (dryRun ? ", dry run" : ""));
            for (const char* folder : {"work", ".local", "volume", "kept"}) {
                fs::remove_all(at(folder));
            }
            fs::remove(StoragePaths::journal());
            JournalEntry changed = trash(write("work/item"));
            const std::string place = *changed.trashPath;
            c.change(changed);
            change(changed.id, [&](JournalEntry& entry) { entry = changed; });
            EXPECT_EQ(cleaner_.purgeOwnTrash(10, dryRun).bytes, c.bytes);
            EXPECT_EQ(entry(changed.id).purgedFromTrash, dryRun ? c.isMarkedInDryRun : c.isMarked);
            const bool wasThere = std::string_view{c.name} != "vanished";
            EXPECT_EQ(
                exists(changed.trashPath.value_or(place)), wasThere && (dryRun || !c.isDeleted));
            if (c.bytes > 0) {
                EXPECT_EQ(exists(noteOf("item")), dryRun);
            }
        }
    }
}

TEST_F(CleanerTrashTest, PurgeDeletesWhatForbidsItsChange) {
    asOrdinaryUser([&] {
        write("work/tree/a/b/file");
        write("work/tree/shut/file");
        link("work/tree/a/link", makeFolder("kept"));
        write("kept/file");
        setAge(trash(at("work/tree")), 10);
        for (const char* folder : {"tree/a/b", "tree/a", "tree/shut", "tree"}) {
            chmod(inTrash(folder).c_str(), std::string_view{folder} == "tree/shut" ? 0 : 0555);
        }
        EXPECT_EQ(cleaner_.purgeOwnTrash(0, false).bytes, kItemSize);
        EXPECT_TRUE(fs::is_empty(at(".local/share/Trash/files")));
        EXPECT_TRUE(fs::is_empty(at(".local/share/Trash/info")));
        EXPECT_TRUE(fs::is_empty(at(".local/share/Trash/expunged")));
        EXPECT_TRUE(exists(at("kept/file")));
    });
}

TEST_F(CleanerTrashTest, DeletesDeepTreesWithFewDescriptors) {
    inChild([&] {
        const Testing::DeepFolder deep{makeFolder("deep")};
        setAge(trash(at("deep")), 10);
        const rlimit limit{.rlim_cur = 64, .rlim_max = 64};
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
        EXPECT_EQ(cleaner_.purgeOwnTrash(0, false).bytes, kItemSize);
        EXPECT_TRUE(fs::is_empty(at(".local/share/Trash/files")));
        const Testing::DeepFolder other{makeFolder(".local/share/Trash/files/deep")};
        EXPECT_EQ(Cleaner::emptyTrash().failures, Problems{});
        EXPECT_TRUE(fs::is_empty(at(".local/share/Trash/files")));
    });
}

TEST_F(CleanerTrashTest, ClearsUpAfterAKilledProcess) {
    const pid_t dead = fork();
    if (dead == 0) {
        _exit(0);
    }
    waitpid(dead, nullptr, 0);
    const auto aside = [&](const std::string& name, pid_t process, const std::string& identity) {
        const std::string path = write(".local/share/Trash/expunged/" + name + "/half");
        const std::string folder = std::filesystem::path{path}.parent_path();
        const std::string own = "brimlo-" + std::to_string(process) + "-" +
                                (identity.empty() ? *Cleaner::identity(folder) : identity);
        std::filesystem::rename(folder, at(".local/share/Trash/expunged/" + own));
        return at(".local/share/Trash/expunged/" + own);
    };
    const auto note = [&](const std::string& name, const std::string& line, double days) {
        write(".local/share/Trash/info/" + name + ".trashinfo", "[Trash Info]\nPath=/x\n" + line);
        age(noteOf(name), days);
        return noteOf(name);
    };
    const std::string own = "X-Brimlo-Entry=0B7C9A52-5D6E-4F70-8192-A3B4C5D6E7F8\n";
    write(".local/share/Trash/files/there");
    const std::pair<std::string, bool> cases[] = {
        {aside("half an item",        dead,     ""),    false},
        {aside("what took its place", dead,     "1:2"), true },
        {aside("being deleted now",   getpid(), ""),    true },
        {note("stray",                own,      2),     false},
        {note("coming",               own,      0),     true },
        {note("foreign",              "",       2),     true },
        {note("there",                own,      2),     true },
    };
    EXPECT_EQ(cleaner_.purgeOwnTrash(1, true).bytes, 0);
    for (const auto& [path, stays] : cases) {
        EXPECT_TRUE(exists(path)) << path << " is gone after a dry run";
    }
    EXPECT_EQ(cleaner_.purgeOwnTrash(1, false).bytes, 0);
    for (const auto& [path, stays] : cases) {
        EXPECT_EQ(exists(path), stays) << path;
    }
}

TEST_F(CleanerTrashTest, EmptiesTheTrashOfAll) {
    EXPECT_EQ(Cleaner::emptyTrash(), TrashReport{.freedBytes = 0});
    EXPECT_FALSE(exists(at(".local")));

    const JournalEntry own = trash(fill("work/own", 10'000));
    trash(link("work/out", makeFolder("kept")));
    write("kept/file");
    write(".local/share/Trash/files/foreign/deep/file", std::string(10'000, 'y'));
    write(".local/share/Trash/files/" + std::string(255, 'n'));
    write(".local/share/Trash/info/orphan.trashinfo");
    mkfifo(inTrash("pipe").c_str(), 0600);
    const std::int64_t size = Cleaner::trashUse().size;
    EXPECT_GE(size, 20'000);
    fs::create_hard_link(inTrash("own"), at("kept/same"));
    const std::int64_t stays = DiskScanner::quickSize(at("kept/same"));
    for (const bool dryRun : {true, false}) {
        EXPECT_EQ(
            Cleaner::emptyTrash(dryRun),
            (TrashReport{.bytes = size, .freedBytes = size - stays, .removed = 5}));
    }
    EXPECT_TRUE(fs::is_empty(at(".local/share/Trash/files")));
    EXPECT_FALSE(exists(noteOf("own")));
    EXPECT_TRUE(exists(noteOf("orphan")));
    EXPECT_TRUE(exists(at("kept/file")));
    // The journal learns of it with the next purge; the history looks.
    EXPECT_EQ(entry(own.id), own);
    EXPECT_EQ(cleaner_.history().value().back().state(), JournalEntry::State::gone);
    EXPECT_EQ(undo(own).error(), "Nothing left to restore from");
}

TEST_F(CleanerTrashTest, UndoesTheNewestAndTellsOfEachThatStayed) {
    const JournalEntry taken = trash(write("taken"));
    const JournalEntry twice = trash(write("twice", "first"));
    const JournalEntry again = trash(write("twice", "second"));
    write("taken", "new");
    const UndoReport report = cleaner_.undo({taken.id, twice.id, again.id, Uuid::random()});
    UndoReport expected;
    expected.restored = {at("twice")};
    expected.failures = {
        {at("twice"), "Something already exists at " + at("twice")},
        {at("taken"), "Something already exists at " + at("taken")}
    };
    EXPECT_EQ(report, expected);
    EXPECT_EQ(contentOf(at("twice")), "second");
    EXPECT_EQ(
        report.sentence(),
        "Restored 1 item(s). 2 could not be restored: Something already exists at " + at("twice") +
            ".");
}

TEST_F(CleanerTrashTest, EmptiesNoFolderThatTheTrashLinksTo) {
    for (const std::string folder : {"Trash", "Trash/files"}) {
        SCOPED_TRACE(folder);
        fs::remove_all(at(".local"));
        write("Documents/files/letter");
        write("Documents/letter");
        link(".local/share/" + folder, at("Documents"));
        EXPECT_EQ(Cleaner::emptyTrash().removed, 0);
        EXPECT_TRUE(exists(at("Documents/letter")));
        EXPECT_TRUE(exists(at("Documents/files/letter")));
    }
}

}  // namespace
}  // namespace Brimlo
