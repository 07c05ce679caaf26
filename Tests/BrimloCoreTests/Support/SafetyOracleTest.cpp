#include "BrimloCore/Support/Safety.h"
#include "BrimloCoreTests/Support/Words.h"
#include "Support/TempHome.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <filesystem>
#include <map>
#include <random>
#include <sstream>
#include <utility>

#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

// The gate is compared with a second one that is written to be read, not to be fast: it walks every
// list and asks realpath() for what a link means. Its idea of Unicode is just large enough for the
// letters that the generator uses.

namespace Brimlo {
namespace {

namespace fs = std::filesystem;

using Testing::words;
using Texts = std::vector<std::string>;
using Verdict = std::optional<std::string>;

constexpr const char* kCredentials = "holds credentials, settings or agent memory";

Texts split(const std::string& path) {
    std::istringstream stream{path};
    Texts parts;
    for (std::string part; std::getline(stream, part, '/');) {
        if (!part.empty()) {
            parts.push_back(part);
        }
    }
    return parts;
}

std::string joined(const Texts& parts) {
    std::string path;
    for (const std::string& part : parts) {
        path += "/" + part;
    }
    return path.empty() ? "/" : path;
}

void replaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t i = text.find(from); i != std::string::npos;
         i = text.find(from, i + to.size())) {
        text.replace(i, from.size(), to);
    }
}

/// One spelling for all that a reader takes for the same text.
std::string plain(std::string text) {
    replaceAll(text, "\u00E9", "e\u0301");
    replaceAll(text, "\u00C9", "E\u0301");
    replaceAll(text, "\u212A", "K");
    return text;
}

std::string lower(std::string text) {
    text = plain(std::move(text));
    for (char& c : text) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    }
    return text;
}

bool isIn(const std::string& path, const Texts& places) {
    return std::ranges::any_of(places, [&](const std::string& place) {
        return path == place || path.starts_with(place + "/");
    });
}

bool has(const Texts& texts, const std::string& text) {
    return std::ranges::count(texts, text) > 0;
}

class Oracle {
public:
    explicit Oracle(const std::string& home) {
        // A space in a name is written "_" here.
        const auto add = [&](Texts& list, const char* names) {
            for (std::string name : words(names)) {
                std::ranges::replace(name, '_', ' ');
                const std::string place = name.starts_with('~') ? home + name.substr(1) : name;
                list.push_back(lower(place));
                places_.push_back(place);
            }
        };
        add(exact_,
            R"(/ /System /Library /Users /Applications /usr /bin /sbin /private /var /etc /opt
            /Volumes /cores ~ ~/Library ~/Documents ~/Desktop ~/Downloads ~/Pictures ~/Movies
            ~/Music ~/Public ~/Applications ~/.ssh ~/.gnupg ~/Library/Keychains
            ~/Library/Application_Support ~/Library/Preferences ~/Library/Mobile_Documents
            ~/Library/CloudStorage)");
        add(never_, R"(~/.ssh ~/.gnupg ~/.aws ~/.kube ~/.config/gcloud ~/.azure
            ~/Library/Keychains ~/.claude/projects ~/.claude/CLAUDE.md ~/.claude/agents
            ~/.claude/commands ~/.claude/skills ~/.password-store)");
        add(agents_, "~/.claude ~/.codex ~/.gemini");
        add(caches_, "~/.kube/cache ~/.kube/http-cache ~/.aws/cli/cache");
        roots_ = {plain(home), "/Applications", "/Volumes", "/opt/homebrew", "/usr/local"};
    }

    [[nodiscard]] static std::string canonical(const std::string& path) {
        Texts kept;
        for (const std::string& part :
             split(path.starts_with("/") ? path : fs::current_path().string() + "/" + path)) {
            if (part == ".." && !kept.empty()) {
                kept.pop_back();
            } else if (part != "." && part != "..") {
                kept.push_back(part);
            }
        }
        return joined(kept);
    }

    /// Of the folders above, the longest that realpath() can follow is followed. A link to
    /// nothing is taken for what it names.
    [[nodiscard]] static std::string resolvedParent(const std::string& path) {
        Texts above = split(path);
        Texts rest;
        std::array<char, PATH_MAX> real{};
        do {
            rest.insert(rest.begin(), above.back());
            above.pop_back();
            std::error_code noLink;
            while (realpath(joined(above).c_str(), real.data()) == nullptr && errno == ENOENT) {
                const fs::path target = fs::read_symlink(joined(above), noLink);
                if (noLink) {
                    break;
                }
                above.pop_back();
                above = split((fs::path{joined(above)} / target).string());
            }
        } while (realpath(joined(above).c_str(), real.data()) == nullptr);
        above = split(real.data());
        above.insert(above.end(), rest.begin(), rest.end());
        return joined(above);
    }

    [[nodiscard]] Verdict check(const std::string& path) const {
        const std::string text = lower(path);
        const std::string folder = text.substr(0, text.rfind('/'));
        const std::string name = text.substr(folder.size() + 1);
        const auto begins = [&](const char* beginning) { return name.starts_with(beginning); };
        if (has(exact_, text)) {
            return "protected location";
        }
        if (!isIn(text, caches_) && isIn(text, never_)) {
            return kCredentials;
        }
        if (has(agents_, folder) && (begins("settings") || begins("auth") || begins("oauth"))) {
            return "agent settings or credentials";
        }
        const Texts secrets =
            words(".env credentials credentials.json auth.json .netrc .npmrc .pypirc token.json");
        if (has(secrets, name) || name.ends_with(".p12") || name.ends_with(".keychain-db") ||
            begins("id_")) {
            return "looks like a secret";
        }
        if (!isIn(plain(path), roots_)) {
            return "outside user-owned locations";
        }
        const Texts parts = split(path);
        return parts.size() < 3 && path.starts_with("/Volumes/") ? Verdict{"whole volume"}
                                                                 : std::nullopt;
    }

    /// What is said of the other names of a place: each folder above `path`, or `path` itself, that
    /// is the very same one as a protected place is replaced by that place's name.
    [[nodiscard]] Texts aliasReasons(const std::string& path) const {
        Texts reasons;
        std::string rest;
        for (Texts above = split(path); !above.empty(); above.pop_back()) {
            struct stat here {};
            struct stat there {};
            if ((rest.empty() ? lstat : stat)(joined(above).c_str(), &here) == 0) {
                for (const std::string& place : places_) {
                    if (stat(place.c_str(), &there) == 0 && here.st_dev == there.st_dev &&
                        here.st_ino == there.st_ino) {
                        reasons.push_back(check(place + rest).value_or("passes"));
                    }
                }
            }
            rest = "/" + above.back() + rest;
        }
        return reasons;
    }

    /// All of the tables, as they stand.
    [[nodiscard]] const Texts& places() const { return places_; }

private:
    Texts exact_, never_, agents_, caches_;  ///< In lower case.
    Texts roots_;
    Texts places_;
};

/// A home whose own name has an accent, full of links, and paths that wander through it.
class SafetyOracleTest : public Testing::TempHome {
protected:
    SafetyOracleTest() {
        setenv("HOME", home_.c_str(), 1);
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

    ~SafetyOracleTest() override { static_cast<void>(chdir("/")); }

    bool oneIn(std::size_t n) { return random_() % n == 0; }
    const std::string& oneOf(const Texts& texts) { return texts[random_() % texts.size()]; }

    /// Starts at a place of note and goes down through what is there, or is not.
    std::string wander() {
        static const Texts kElsewhere =
            words("/opt/homebrew /usr/local /Volumes/Backup /Volumes/Backup/x /Users/x /tmp");
        static const Texts kNames = words(R"(x .. .SSH .env Settings.json auth oauth_x ID_rsa a.p12
            p12 login.keychain-db Credentials.JSON token.json cache http-cache ... ~ .Kube
            projects CLAUDE.md é Preferences itself)");
        static const Texts kFavourites{"", "/code", "/.claude"};
        std::string path =
            oneIn(2) ? home_ + oneOf(kFavourites) : oneOf(oneIn(5) ? kElsewhere : oracle_.places());
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

    std::string home_ = at("Jos\u00E9");
    Oracle oracle_{home_};
    std::mt19937 random_{20'260'301};
};

TEST_F(SafetyOracleTest, AgreesOnHostileSpellings) {
    std::map<std::string, int> seen;
    for (int i = 0; i < 10'000; ++i) {
        const std::string path = respelled(wander());
        SCOPED_TRACE(path);
        const std::string canonical = Oracle::canonical(path);
        ASSERT_EQ(Safety::canonical(path), canonical);
        const std::string resolved = canonical == "/" ? "/" : Oracle::resolvedParent(canonical);
        if (canonical != "/") {  // The root has no parent.
            ASSERT_EQ(Safety::resolvedParent(canonical), resolved);
        }
        const Verdict first = oracle_.check(canonical);
        ASSERT_EQ(Safety::check(canonical), first);
        const Verdict expected = first ? first : oracle_.check(resolved);
        const Verdict verdict = Safety::refusal(path);
        ++seen[verdict.value_or("passes")];
        if (expected) {
            ASSERT_EQ(verdict, expected);
            continue;
        }
        // The tables let it pass; only its identity with a protected place may still stop it, and
        // what lies in a credentials folder under another name has to be stopped.
        const Texts reasons = oracle_.aliasReasons(resolved);
        if (verdict || has(reasons, kCredentials)) {
            ++seen["alias"];
            ASSERT_TRUE(has(reasons, verdict.value_or("passes, though an alias")));
        }
    }
    // The walk is worth its time only if it comes by every verdict: six, a pass, and the aliases.
    EXPECT_EQ(seen.size(), 8U);
    for (const auto& [verdict, count] : seen) {
        EXPECT_GE(count, 20) << verdict;
    }
}

}  // namespace
}  // namespace Brimlo
