#include "BrimloCore/DisabledRules/DisabledRules.h"
#include "BrimloCore/SuggestionEngine/ProjectArtifactFinder.h"
#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"
#include "BrimloCoreTests/Support/Words.h"
#include "Support/TempHome.h"

#include <cstdlib>
#include <set>

#include <sys/stat.h>

namespace Brimlo {
namespace {

using Testing::words;
using Texts = std::vector<std::string>;

/// The rows that know a folder by what lies in it or beside it, not by its name.
class SuggestionEngineProvenTest : public Testing::TempHome {
protected:
    void writeAll(const std::string& files) const {
        for (const std::string& file : words(files)) {
            write(file);
        }
    }

    /// Below the home, sorted.
    Texts sorted(const Texts& paths) const {
        std::set<std::string> relative;
        for (const std::string& path : paths) {
            relative.insert(path.substr(home().size() + 1));
        }
        return {relative.begin(), relative.end()};
    }

    Texts matches(const CleanupRule& rule) const {
        Texts paths;
        for (const SuggestionEngine::Target& target : SuggestionEngine::targets(rule)) {
            paths.push_back(target.item.path);
        }
        return sorted(paths);
    }

    Texts offered() const {
        Texts paths;
        for (const Suggestion& suggestion : SuggestionEngine::generate({.includeDocker = false})) {
            for (const SuggestionItem& item : suggestion.items) {
                paths.push_back(item.path);
            }
        }
        return sorted(paths);
    }
};

TEST_F(SuggestionEngineProvenTest, TakesBuildOutputByWhatLiesInIt) {
    const std::string signature = "Signature: 8a477f597d28d172789f06886806bc55";
    writeAll(R"(p/build-release/CMakeCache.txt p/out/build/CMakeCache.txt p/builddir/meson-info/x
        p/env312/pyvenv.cfg p/.env312/pyvenv.cfg p/compiled/.rustc_info.json
        p/node_modules/CMakeCache.txt Documents/CMakeCache.txt .tool/pyvenv.cfg p/build/notes.txt
        p/in-source/CMakeCache.txt p/in-source/CMakeLists.txt p/cloned/.git/HEAD
        1/2/3/4/CMakeCache.txt)");
    for (const char* folder : {"p/tagged", "p/cloned", "p/.hidden"}) {
        write(std::string{folder} + "/CACHEDIR.TAG", signature + "\n# Made by a program.\n");
    }
    write("p/unsigned/CACHEDIR.TAG", "signature: 8a477f597d28d172789f06886806bc55");
    write("p/short/CACHEDIR.TAG", signature.substr(0, signature.size() - 1));
    link("p/linked/CACHEDIR.TAG", "../tagged/CACHEDIR.TAG");
    link("p/linked-cache/CMakeCache.txt", "../build-release/CMakeCache.txt");
    makeFolder("p/a-folder/CACHEDIR.TAG");
    makeFolder("p/pipe");
    ASSERT_EQ(mkfifo(at("p/pipe/CACHEDIR.TAG").c_str(), 0600), 0);
    Texts found;
    for (const FoundArtifact& artifact : ProjectArtifactFinder::find({home()}, 3)) {
        found.push_back(artifact.path);
    }
    EXPECT_EQ(sorted(found), words(R"(p/.env312 p/build-release p/builddir p/compiled p/env312
        p/node_modules p/out/build p/tagged)"));
}

TEST_F(SuggestionEngineProvenTest, LooksWhereVariablesMoveTheFoldersOfTools) {
    const std::pair<const char*, std::string> values[] = {
        {"XDG_CACHE_HOME", at("xdg/cache")      },
        {"CARGO_HOME",     at("xdg/cache/cargo")},
        {"CCACHE_DIR",     at("Projects")       },
        {"UV_CACHE_DIR",   home()               },
        {"PIP_CACHE_DIR",  "xdg/pip"            },
    };
    for (const auto& [variable, value] : values) {
        setenv(variable, value.c_str(), 1);
    }
    writeAll(R"(xdg/cache/sccache/x xdg/cache/viewer/x xdg/cache/keyring/x xdg/cache/cargo/bin/x
        xdg/cache/cargo/registry/cache/x .cache/sccache/x Projects/mine/x xdg/pip/x)");
    EXPECT_EQ(offered(), words(R"(.cache/sccache xdg/cache/cargo/registry/cache xdg/cache/sccache
        xdg/cache/viewer)"));
}

TEST_F(SuggestionEngineProvenTest, KnowsTheProfileOfABrowserEngineByItsShape) {
    for (const std::string app : {".config/notes", ".config/Vendor/board", ".config/Slack"}) {
        writeAll(app + "/Preferences " + app + "/GPUCache/x " + app + "/OwnCache/x");
        write(app + "/Local Storage/x");
    }
    makeFolder(".ssh");
    write(".config/linked/Local Storage");
    link(".config/linked/Preferences", "../notes/Preferences");
    writeAll(R"(.config/linked/Cache/x .config/writer/Preferences .config/writer/Cache/draft
        .fox/ab/prefs.js .fox/ab/times.json .fox/ab/cache2/x .archive/old/cache2/letter)");
    Texts expected = words(
        ".config/Slack/GPUCache .config/Vendor/board/GPUCache .config/notes/GPUCache "
        ".fox/ab/cache2");
    EXPECT_EQ(offered(), expected);
    for (const char* const id : {"app.slack", "office.slack.cache"}) {
        ASSERT_TRUE(DisabledRules::set(id, true));
    }
    expected.erase(expected.begin());
    EXPECT_EQ(offered(), expected) << "rules that are off keep what they know";
    EXPECT_EQ(matches({.paths = {"~/.ssh"}, .isCatchAll = true}), Texts{}) << "the gate's";
}

TEST_F(SuggestionEngineProvenTest, OffersWhatIsLeftOfAProgramThatIsGone) {
    writeAll("data/gone/x data/here/x data/there/x");
    CleanupRule rule{.paths = {"~/data/*"}, .conditions = {.owners = {"~/a", "~/b"}}};
    EXPECT_EQ(matches(rule), Texts{}) << "no list of programs";
    writeAll("a/here/x b");
    EXPECT_EQ(matches(rule), Texts{}) << "an unreadable list";
    rule.conditions.owners = {"~/a", "~/missing"};
    EXPECT_EQ(matches(rule), words("data/gone data/there"));

    rule.conditions = {.ownerFiles = {"~/in/*/.home"}};
    EXPECT_EQ(matches(rule), Texts{}) << "no file";
    write("in/gone/.home", at("programs/gone"));
    write("in/here/.home", at("data") + "\n");
    write("in/there/.home", "programs/there");
    EXPECT_EQ(matches(rule), Texts{"data/gone"});
}

}  // namespace
}  // namespace Brimlo
