#include "BrimloCore/Shell/CoverageChecker.h"

#include "BrimloCore/Shell/Shell.h"
#include "Support/TempHome.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>

#include <sys/stat.h>

namespace Brimlo {
namespace {

using Testing::exists;
using Time = std::optional<std::chrono::sys_seconds>;

/// In New York.
const Time kNoon = std::chrono::sys_days{std::chrono::May / 1 / 2024} + std::chrono::hours{16};

class CoverageCheckerTest : public Testing::TempHome {
protected:
    /// Runs commands of a shell in the home folder, which must succeed.
    void run(const std::string& commands) const {
        const auto ended = Shell::run("/bin/sh", {"-ec", commands}, home(), 60);
        ASSERT_TRUE(ended && ended->status == 0) << commands;
    }

    /// A repository "repo", clean and pushed to "remote.git" beside it, with files "a" and "sub/b".
    void makeRepository() const {
        setenv("GIT_CONFIG_NOSYSTEM", "1", 1);
        run("git init -q --bare -b main remote.git; git init -q -b main repo; cd repo;"
            "git config --global user.name T; git config --global user.email t@example.org;"
            "mkdir sub; echo a >a; echo b >sub/b; printf 'out\\n*.o\\n' >.gitignore;"
            "git add .; git commit -qm first; git remote add origin ../remote.git;"
            "git push -qu origin main");
    }

    /// A stand-in for tmutil that prints a text.
    std::string makeTmutil(const std::string& answer) const {
        const std::string tool = write("tmutil", "#!/bin/sh\nprintf %s '" + answer + "'\n");
        chmod(tool.c_str(), 0700);
        return tool;
    }
};

TEST_F(CoverageCheckerTest, ClaimsOnlyWhatIsCleanAndPushed) {
    const std::string pushed = "git: clean and pushed to origin/main";
    const std::string untold = "git config status.showUntrackedFiles no; echo x >sub/c";
    const std::string pattern =
        "mkdir ':(top)sub'; echo x >':(top)sub/c'; echo ':(top)*' >.git/info/exclude";
    const std::string within = "git clone -q ../remote.git n";
    const std::string asSub = within + "; git add n; git commit -qm n; git push -q";
    const struct {
        const char* name;
        std::string change;  ///< Commands, run in the repository.
        std::string path;
        std::string sentence;
    } cases[] = {
        {"the root",             "",                                                  "repo",           pushed},
        {"a folder",             "",                                                  "repo/sub",       pushed},
        {"touched, not changed", "touch -d 2001-01-01 a",                             "repo",           pushed},
        {"a worktree",           "git worktree add -q ../w -b x origin/main",         "w",              pushed},
        {"a change elsewhere",   "echo x >>a; echo y >new",                           "repo/sub",       pushed},
        {"not there",            "",                                                  "repo/none",      ""    },
        {"no upstream",          "git branch --unset-upstream",                       "repo",           ""    },
        {"not pushed",           "git commit -qm x --allow-empty",                    "repo/sub",       ""    },
        {"changed",              "echo x >>sub/b",                                    "repo/sub",       ""    },
        {"one untracked",        "echo x >sub/c",                                     "repo",           ""    },
        {"untracked, not told",  untold,                                              "repo/sub",       ""    },
        {"one ignored",          "echo x >sub/c.o",                                   "repo/sub",       ""    },
        {"a pattern's name",     pattern,                                             "repo/:(top)sub", ""    },
        {"a repository within",  within,                                              "repo",           ""    },
        {"a submodule within",   asSub,                                               "repo",           ""    },
        {"upstream of its own",  "git branch b; git branch -u b",                     "repo",           ""    },
        {"not looked at",        "git update-index --skip-worktree a; echo x >>a",    "repo",           ""    },
        {"taken as unchanged",   "git update-index --assume-unchanged a; echo x >>a", "repo",           ""    },
        {"a stash",              "echo x >>a; git stash -q",                          "repo",           ""    },
        {"a stash, elsewhere",   "echo x >>a; git stash -q",                          "repo/sub",       pushed},
        {"another branch",
         "git checkout -qb b; git commit -qm x --allow-empty; git checkout -q main",  "repo",
         ""                                                                                                   },
        {"broken",               "echo x >.git/config",                               "repo",           ""    },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        makeRepository();
        run("cd repo;" + c.change);
        EXPECT_EQ(CoverageChecker::gitCoverage(at(c.path)).value_or(""), c.sentence);
        run("rm -rf repo remote.git w");
    }
}

TEST_F(CoverageCheckerTest, RunsNothingThatARepositoryBrings) {
    const std::string evil = write("evil", "#!/bin/sh\necho run >>\"" + at("proof") + "\"\n");
    chmod(evil.c_str(), 0700);
    setenv("EVIL", evil.c_str(), 1);
    const std::string moved = "mkdir h; git config core.hooksPath h; cp $EVIL h/post-index-change;";
    const std::string filter =
        "echo '* filter=f=' >.git/info/attributes; touch -d 2001-01-01 a sub/b; git config ";
    const std::string worktree = "extensions.worktreeConfig true; git config --worktree ";
    const std::string submodule =
        "git clone -q ../remote.git m; git add m; git commit -qm m; git push -q; cd m;";
    const std::string partial =
        "git config extensions.partialClone origin; git config core.repositoryformatversion 1;"
        "git config remote.origin.promisor true; rm -rf .git/objects/??;"
        "git config protocol.ext.allow always; git config remote.origin.";
    const std::pair<const char*, std::string> cases[] = {
        {"monitor",              "git config core.fsmonitor $EVIL"                                    },
        {"hook",                 "cp $EVIL .git/hooks/post-index-change; touch a"                     },
        {"hook elsewhere",       moved + "touch a"                                                    },
        {"filter",               filter + "filter.f=.clean $EVIL"                                     },
        {"filter, included",     filter + "include.path c; git config -f .git/c filter.f=.clean $EVIL"},
        {"filter, worktree",     filter + worktree + "filter.f=.clean $EVIL"                          },
        {"filter, submodule",    submodule + filter + "filter.f=.clean $EVIL"                         },
        {"fetch from a program", partial + "url \"ext::$EVIL\""                                       },
        {"fetch by a program",   partial + "uploadpack $EVIL"                                         },
    };
    for (const auto& [name, change] : cases) {
        SCOPED_TRACE(name);
        makeRepository();
        run("cd repo;" + change + " 2>/dev/null");
        std::filesystem::remove(at("proof"));
        static_cast<void>(CoverageChecker::covered(at("repo")));
        EXPECT_FALSE(exists(at("proof")));
        // The trap works: an unguarded look runs it.
        run("cd repo; (git rev-list --objects HEAD; git status; git add a) >/dev/null 2>&1 || "
            "true");
        EXPECT_TRUE(exists(at("proof")));
        run("rm -rf repo remote.git h");
    }
}

TEST_F(CoverageCheckerTest, ReadsTheTimeOfTheLatestBackup) {
    setenv("TZ", "America/New_York", 1);
    const std::pair<std::string, Time> cases[] = {
        {"/Volumes/B/2024-05-01-120000.backup\n",                     kNoon       },
        {"/B/2024-05-01-120000.backup/2024-05-01-120000.previous/\n", kNoon       },
        {"/Volumes/B/2024-13-01-120000.backup",                       std::nullopt},
        {"",                                                          std::nullopt},
    };
    for (const auto& [printed, time] : cases) {
        EXPECT_EQ(CoverageChecker::latestBackup(makeTmutil(printed)), time) << printed;
    }
    EXPECT_EQ(CoverageChecker::latestBackup(at("missing")), std::nullopt);
}

TEST_F(CoverageCheckerTest, ClaimsABackupOfWhatIsOlderAndIncluded) {
    setenv("TZ", "America/New_York", 1);
    setenv("LC_ALL", "de_DE.UTF-8", 1);
    const std::string path = link("a b", "missing");
    const std::string sentence = "Time Machine backup from 01.05.2024, 12:00";
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"11:59:59", "[Included]    a\n", sentence},
        {"12:00:00", "[Included]    a\n", ""      },
        {"11:59:59", "[Excluded]    a\n", ""      },
    };
    for (const auto& [time, answer, expected] : cases) {
        run("touch -hd '2024-05-01 " + time + "' 'a b'");
        EXPECT_EQ(
            CoverageChecker::timeMachineCoverage(makeTmutil(answer), path, *kNoon).value_or(""),
            expected);
    }
}

TEST_F(CoverageCheckerTest, WarnsOfSyncedFolders) {
    const std::vector<std::string> warning{"synced folder: deleting also removes the cloud copy"};
    for (const char* path : {"Library/Mobile Documents/x", "Dropbox", "Dropbox/x", "OneDrive/a"}) {
        EXPECT_EQ(CoverageChecker::warnings(at(path)), warning) << path;
    }
    for (const char* path : {"Dropbox2/x", "dropbox/x", "x/Dropbox", "Library/Mobile", ""}) {
        EXPECT_THAT(CoverageChecker::warnings(at(path)), testing::IsEmpty()) << path;
    }
}

}  // namespace
}  // namespace Brimlo
