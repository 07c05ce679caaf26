#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCoreTests/Cleaner/Child.h"
#include "BrimloCoreTests/Cleaner/CleaningHome.h"

#include <chrono>
#include <filesystem>
#include <functional>

#include <fcntl.h>
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

class TrashUpkeepTest : public Testing::CleaningHome {
protected:
    static Error nothingLeft() { return {"Brimlo", 2, "Nothing left to restore from"}; }

    static Error alreadyThere(const std::string& path) {
        return {"Brimlo", 1, "Something already exists at " + path};
    }

    /// Makes the journal say of an item that it was trashed so many seconds ago.
    void setAge(const JournalEntry& entry, std::int64_t seconds) {
        journal_->update(entry.id, [&](JournalEntry& changed) {
            changed.date -= std::chrono::seconds{seconds};
        });
    }

    /// Folders in each other, each with a file, their names as long as can be.
    void makeDeepTree(const std::string& path, int depth) const {
        const std::string name(255, 'd');
        ASSERT_EQ(mkdir(path.c_str(), 0700), 0);
        int folder = open(path.c_str(), O_RDONLY | O_DIRECTORY);
        for (int i = 0; i < depth; ++i) {
            ASSERT_EQ(mkdirat(folder, name.c_str(), 0700), 0);
            close(openat(folder, "file", O_WRONLY | O_CREAT, 0600));
            const int next = openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY);
            close(folder);
            folder = next;
        }
        close(folder);
    }
};

TEST_F(TrashUpkeepTest, UndoRestoresATreeExactly) {
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
    EXPECT_EQ(cleaner_.undo(entry), tree);
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

TEST_F(TrashUpkeepTest, UndoRestoresOnlyTheItemAndOverwritesNothing) {
    using Change = std::function<void(JournalEntry & entry)>;
    const std::string path = at("work/item");
    const auto rewriteNote = [&](const std::string& line) {
        write(".local/share/Trash/info/item.trashinfo", "[Trash Info]\nPath=/x\n" + line);
    };
    const auto otherDevice = [](JournalEntry& entry) {
        entry.trashID = "77:" + entry.trashID->substr(entry.trashID->find(':') + 1);
    };
    struct Case {
        const char* name;
        Change change;
        std::expected<std::string, Error> result;
    };
    const std::unexpected gone{nothingLeft()};
    const std::unexpected taken{alreadyThere(path)};
    const Case cases[] = {
        {"untouched",                     [](JournalEntry&) {},                                path                                       },
        {"emptied",                       [&](JournalEntry&) { fs::remove(inTrash("item")); }, gone                                       },
        {"other inode",                   [](JournalEntry& entry) { entry.trashID = "1:1"; },  gone                                       },
        {"reused inode",
         [&](JournalEntry&) { rewriteNote("X-Brimlo-Entry=" + Uuid{}.text() + "\n"); },
         gone                                                                                                                             },
        {"device renumbered",             otherDevice,                                         path                                       },
        {"device renumbered and no note",
         [&](JournalEntry& entry) { otherDevice(entry), fs::remove(noteOf("item")); },
         gone                                                                                                                             },
        {"note of another program",       [&](JournalEntry&) { rewriteNote(""); },             path                                       },
        {"no identity",                   [](JournalEntry& entry) { entry.trashID = {}; },     path                                       },
        {"file in its place",             [&](JournalEntry&) { write("work/item", "new"); },   taken                                      },
        {"dangling link in its place",    [&](JournalEntry&) { link("work/item", "none"); },   taken                                      },
        {"Trash behind a link",
         [&](JournalEntry&) {
             fs::rename(at(".local/share/Trash/files"), at("elsewhere"));
             link(".local/share/Trash/files", at("elsewhere"));
         },                                                                                    std::unexpected{Error::fromSystem(ENOTDIR)}},
        {"a file where its folder was",
         [&](JournalEntry&) {
             fs::remove_all(at("work"));
             write("work");
         },                                                                                    std::unexpected{Error::fromSystem(ENOTDIR)}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        for (const char* folder : {"work", ".local", "elsewhere"}) {
            fs::remove_all(at(folder));
        }
        const JournalEntry entry = trash(write("work/item", "the item"));
        JournalEntry seen = entry;
        c.change(seen);
        const auto content = [&] { return fs::is_regular_file(path) ? contentOf(path) : ""; };
        const std::string before = content();
        EXPECT_EQ(cleaner_.undo(seen), c.result);
        EXPECT_EQ(this->entry(entry.id).undone, c.result.has_value());
        EXPECT_EQ(content(), c.result ? "the item" : before);
        EXPECT_EQ(exists(inTrash("item")), !c.result && std::string_view{c.name} != "emptied");
    }
}

TEST_F(TrashUpkeepTest, PurgeTakesOnlyOwnOldItems) {
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
    struct Case {
        const char* name;
        Change change;
        std::int64_t bytes;
        bool isMarked;
        bool isDeleted;  ///< What lies at the entry's path in the Trash.
        bool isMarkedInDryRun = false;
    };
    const Case cases[] = {
        {"old",                    aged(10 * kDay + 5),                                   kItemSize,        true,                                                         true                                                               },
        {"younger than the limit", aged(10 * kDay - 60),                                  0,                false,                                                        false                                                              },
        {"undone",                 old([](JournalEntry& entry) { entry.undone = true; }), 0,                false,                                                        false                                                              },
        {"vanished",               old(removed),                                          0,                true,                                                         true,                                                                true},
        {"without identity",                        old([](JournalEntry& entry) { entry.trashID = {}; }),                                                            0, false, false                                                              },
        {"another object",                        old(replaced),                                                              0,                                          true,                                        false,true},
        {"in another Trash",                    old(elsewhere),                                                                         0,                                                                        false,                                                                                                   false                                                                                             },
        {"by way of dots",                   old(dotted),                                                                        0,                                                                         false,      false},
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
            journal_->update(changed.id, [&](JournalEntry& entry) { entry = changed; });
            EXPECT_EQ(cleaner_.purgeOwnTrash(10, dryRun), c.bytes);
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

TEST_F(TrashUpkeepTest, PurgeDeletesWhatForbidsItsChange) {
    asOrdinaryUser([&] {
        write("work/tree/a/b/file");
        write("work/tree/shut/file");
        link("work/tree/a/link", makeFolder("kept"));
        write("kept/file");
        setAge(trash(at("work/tree")), 10);
        for (const char* folder : {"tree/a/b", "tree/a", "tree/shut", "tree"}) {
            chmod(inTrash(folder).c_str(), std::string_view{folder} == "tree/shut" ? 0 : 0555);
        }
        EXPECT_EQ(cleaner_.purgeOwnTrash(0, false), kItemSize);
        EXPECT_TRUE(fs::is_empty(at(".local/share/Trash/files")));
        EXPECT_TRUE(fs::is_empty(at(".local/share/Trash/info")));
        EXPECT_TRUE(fs::is_empty(at(".local/share/Trash/expunged")));
        EXPECT_TRUE(exists(at("kept/file")));
    });
}

TEST_F(TrashUpkeepTest, DeletesDeepTreesWithFewDescriptors) {
    inChild([&] {
        constexpr int kDepth = 3'000;
        makeDeepTree(at("deep"), kDepth);
        setAge(trash(at("deep")), 10);
        const rlimit limit{.rlim_cur = 64, .rlim_max = 64};
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
        EXPECT_EQ(cleaner_.purgeOwnTrash(0, false), kItemSize);
        EXPECT_TRUE(fs::is_empty(at(".local/share/Trash/files")));
        makeDeepTree(inTrash("deep"), kDepth / 10);
        EXPECT_TRUE(Cleaner::emptyTrash());
        EXPECT_TRUE(fs::is_empty(at(".local/share/Trash/files")));
    });
}

TEST_F(TrashUpkeepTest, ClearsUpAfterAKilledProcess) {
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
    EXPECT_EQ(cleaner_.purgeOwnTrash(1, true), 0);
    for (const auto& [path, stays] : cases) {
        EXPECT_TRUE(exists(path)) << path << " is gone after a dry run";
    }
    EXPECT_EQ(cleaner_.purgeOwnTrash(1, false), 0);
    for (const auto& [path, stays] : cases) {
        EXPECT_EQ(exists(path), stays) << path;
    }
}

TEST_F(TrashUpkeepTest, EmptiesTheTrashOfAll) {
    EXPECT_EQ(Cleaner::emptyTrash(), 0);
    EXPECT_FALSE(exists(at(".local")));

    const JournalEntry own = trash(write("work/own", std::string(10'000, 'x')));
    trash(link("work/out", makeFolder("kept")));
    write("kept/file");
    write(".local/share/Trash/files/foreign/deep/file", std::string(10'000, 'y'));
    write(".local/share/Trash/files/" + std::string(255, 'n'));
    write(".local/share/Trash/info/orphan.trashinfo");
    mkfifo(inTrash("pipe").c_str(), 0600);
    const std::int64_t size = Cleaner::trashSize();
    EXPECT_GE(size, 20'000);
    EXPECT_EQ(Cleaner::emptyTrash(), size);
    EXPECT_TRUE(fs::is_empty(at(".local/share/Trash/files")));
    EXPECT_FALSE(exists(noteOf("own")));
    EXPECT_TRUE(exists(noteOf("orphan")));
    EXPECT_TRUE(exists(at("kept/file")));
    // The journal learns of it with the next purge.
    EXPECT_EQ(entry(own.id), own);
    EXPECT_EQ(cleaner_.undo(own), std::unexpected{nothingLeft()});
}

TEST_F(TrashUpkeepTest, EmptiesNoFolderThatTheTrashLinksTo) {
    for (const std::string folder : {"Trash", "Trash/files"}) {
        SCOPED_TRACE(folder);
        fs::remove_all(at(".local"));
        write("Documents/files/letter");
        write("Documents/letter");
        link(".local/share/" + folder, at("Documents"));
        EXPECT_FALSE(Cleaner::emptyTrash());
        EXPECT_TRUE(exists(at("Documents/letter")));
        EXPECT_TRUE(exists(at("Documents/files/letter")));
    }
}

}  // namespace
}  // namespace Brimlo
