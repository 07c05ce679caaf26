#include "BrimloCoreTests/Gate/SafetyOracle.h"

#include "BrimloCore/Gate/Safety.h"
#include "Support/Proof.h"
#include "Support/TempHome.h"

#include <climits>
#include <cstdlib>
#include <map>
#include <random>
#include <system_error>

#include <unistd.h>

// The gate is compared with a second one, on hostile spellings in one crowded home and on many
// small trees of links.

namespace Brimlo {
namespace {

namespace fs = std::filesystem;

using Testing::Oracle;
using Testing::replaceAll;
using Testing::Texts;
using Testing::words;

/// A home whose own name has an accent, full of links, and paths that wander through it.
class SafetyOracleTest : public Testing::TempHome {
protected:
    SafetyOracleTest() {
        for (const std::string& file : words(R"(.ssh/config .ssh/keys/deep/x .kube/config
                 .kube/cache/x .aws/cli/cache/y .claude/projects/p .claude/settings.json
                 .codex/sub/x Library/Keychains/k Library/Caches/é/x Documents/old code/.env
                 code/a/b/c/file code/id_stuff/x dotfiles/gnupg/private/x)")) {
            write("Jos\u00E9/" + file);
        }
        const std::pair<const char*, std::string> links[] = {
            {"Caches",        ".ssh"                      },
            {"code/toSsh",    "../.ssh"                   },
            {"code/twice",    "toSsh"                     },
            {"code/absolute", home_ + "/.ssh/keys"        },
            {"code/up",       ".."                        },
            {"code/crooked",  "a/b/../../up/code/../.kube"},
            {"code/toCache",  "../.kube/cache"            },
            {"code/system",   "/usr"                      },
            {"code/itself",   "itself"                    },
            {"code/dangling", "nowhere/x"                 },
            {".aws/out",      "../Documents"              },
            {".gnupg",        "dotfiles/gnupg"            },
            {".azure",        "code/a/b"                  },
        };
        for (const auto& [name, target] : links) {
            link(std::string{"Jos\u00E9/"} + name, target);
        }
        EXPECT_EQ(chdir(home_.c_str()), 0);
    }

    ~SafetyOracleTest() override { [[maybe_unused]] const int left = chdir("/"); }

    bool oneIn(std::size_t n) { return random_() % n == 0; }
    const std::string& oneOf(const Texts& texts) { return texts[random_() % texts.size()]; }

    /// Starts at a place of note and goes down through what is there, or is not.
    std::string wander() {
        static const Texts kElsewhere =
            words("/opt/homebrew /usr/local /Volumes/Backup /Volumes/Backup/x /Users/x /tmp");
        static const Texts kNames = words(R"(x .. .SSH .env Settings.json auth oauth_x ID_rsa a.p12
            p12 login.keychain-db Credentials.JSON token.json cache http-cache ... ~ .Kube
            projects CLAUDE.md é Preferences itself)");
        static const Texts kFavourites{
            "", "/code", "/.claude", "/.var", "/Library/Application Support/Brimlo"};
        const Texts& places = oneIn(2) ? oracle_.places() : common_;
        std::string path =
            oneIn(2) ? home_ + oneOf(kFavourites) : oneOf(oneIn(5) ? kElsewhere : places);
        const bool isOurs = path.starts_with(home_);
        for (std::size_t steps = random_() % 6; steps > 0; --steps) {
            Texts names;
            std::error_code ignored;
            for (const auto& entry :
                 fs::directory_iterator{isOurs && !oneIn(3) ? path : "", ignored}) {
                names.push_back(entry.path().filename().string());
            }
            std::ranges::sort(names);
            path += "/" + oneOf(names.empty() ? kNames : names);
        }
        return path;
    }

    /// Another spelling, or one that only looks like it.
    std::string respelled(std::string path) {
        static const Texts kSlashes{"//", "/./", "/x/../", "///.//", "/x/y/../../", "/../"};
        if (oneIn(4)) {
            replaceAll(path, "\u00E9", oneIn(2) ? "e\u0301" : "\u00C9");
        }
        if (oneIn(10)) {
            replaceAll(path, "k", "\u212A");
        }
        for (std::size_t flips = oneIn(3) ? 2 : 0; flips > 0; --flips) {
            char& c = path[random_() % path.size()];
            c = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ? static_cast<char>(c ^ 32) : c;
        }
        for (std::size_t edits = oneIn(2) ? 3 : 0; edits > 0; --edits) {
            const std::size_t slash = path.find('/', random_() % path.size());
            if (slash != std::string::npos) {
                path.replace(slash, 1, oneOf(kSlashes));
            }
        }
        while (oneIn(100) || (path.size() > 500 && path.size() <= PATH_MAX)) {
            path += "/" + std::string(NAME_MAX, 'n');
        }
        if (oneIn(8) && path.starts_with(home_ + "/")) {
            path.erase(0, home_.size() + 1);
        }
        return path + (oneIn(5) ? "/" : "");
    }

    static std::string entered(const std::string& home) {
        setenv("HOME", home.c_str(), 1);
        return home;
    }

    std::string home_ = entered(at("Jos\u00E9"));
    Oracle oracle_{home_};
    Texts common_ = oracle_.commonPlaces();
    std::mt19937 random_{20'260'301};
};

TEST_F(SafetyOracleTest, AgreesOnHostileSpellings) {
    std::map<std::string, int> seen;
    for (int i = 0; i < 10'000; ++i) {
        const std::string path = respelled(wander());
        SCOPED_TRACE(path);
        const std::string canonical = Oracle::canonical(path);
        const Safety::Verdict judged = Safety::judge(path);
        ASSERT_EQ(judged.canonical, canonical);
        ASSERT_EQ(judged.resolved, Oracle::resolvedParent(canonical));
        const Oracle::Opinion opinion = oracle_.opinion(canonical);
        const std::string said = judged.refusal.value_or("passes");
        ASSERT_TRUE(opinion.allows(judged.refusal)) << said;
        ++seen[said];
        seen["alias"] += judged.refusal && !opinion.byTables ? 1 : 0;
    }
    // The walk is worth its time only if it comes by every verdict: eight, a pass, and the aliases.
    EXPECT_EQ(seen.size(), 10U);
    for (const auto& [verdict, count] : seen) {
        EXPECT_GE(count, 20) << verdict;
    }
}

/// Small homes in which links lead anywhere, one after the other.
TEST_F(SafetyOracleTest, AgreesOnRandomTreesOfLinks) {
    static const Texts kFolders = words(
        ".ssh .ssh/a .kube .kube/cache .aws/cli/cache .claude .gnupg/x Documents x x/y x/y/z");
    static const Texts kNames =
        words("x x/l x/y/m .ssh/n .azure .kube/o l m .gnupg .claude/agents");
    static const Texts kEnds = words("k config cache/k settings.json l/k y ../k");
    const std::int64_t trees = Testing::rounds("BRIMLO_TREES", 1'000);
    std::int64_t broken = 0;
    for (std::int64_t i = 0; i < trees; ++i) {
        // Every second home is reached through a link.
        const std::string home = i % 2 == 0 ? makeFolder("tree") : link("way", makeFolder("tree"));
        setenv("HOME", home.c_str(), 1);
        for (int folders = 0; folders < 4; ++folders) {
            makeFolder("tree/" + oneOf(kFolders));
        }
        for (int links = 0; links < 5; ++links) {
            const std::string name = oneOf(kNames);
            const std::string up = std::ranges::count(name, '/') > 0 ? "../" : "";
            const std::string target = oneOf(oneIn(2) ? kFolders : kNames);
            std::error_code isTaken;
            fs::create_directories(fs::path{at("tree/" + name)}.parent_path(), isTaken);
            fs::create_symlink((oneIn(2) ? home + "/" : up) + target, at("tree/" + name), isTaken);
        }
        const Oracle oracle{home};
        for (int paths = 0; paths < 4; ++paths) {
            const std::string path = home + "/" + oneOf(kNames) + "/" + oneOf(kEnds);
            const std::string canonical = Oracle::canonical(path);
            std::error_code error;
            static_cast<void>(fs::status(fs::path{canonical}.parent_path(), error));
            if (error == std::errc::too_many_symbolic_link_levels) {
                continue;  // A circle leads nowhere, and each gate gives up at another point of it.
            }
            const Oracle::Opinion opinion = oracle.opinion(canonical);
            const Safety::Verdict judged = Safety::judge(path);
            const bool isRight = opinion.allows(judged.refusal);
            EXPECT_TRUE(isRight) << path << ": " << judged.refusal.value_or("passes") << ", not "
                                 << opinion.byTables.value_or("passes");
            broken += isRight && judged.resolved == Oracle::resolvedParent(canonical) ? 0 : 1;
        }
        fs::remove_all(at("tree"));
        fs::remove(at("way"));
    }
    EXPECT_EQ(broken, 0);
    Testing::told("random trees of links against a second gate", trees, broken);
}

}  // namespace
}  // namespace Brimlo
