#include "BrimloCore/DisabledRules/DisabledRules.h"
#include "BrimloCore/SuggestionEngine/ProjectArtifactFinder.h"
#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"
#include "Support/TempHome.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <set>

#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo {
namespace {

using Texts = std::vector<std::string>;

/// The rows that know a folder by what lies in it or beside it, not by its name.
class SuggestionEngineProvenTest : public Testing::TempHome {
protected:
    Texts foundFolders() const {
        std::set<std::string> paths;
        for (const FoundArtifact& found : ProjectArtifactFinder::find({home()}, 3)) {
            paths.insert(found.path.substr(home().size() + 1));
        }
        return {paths.begin(), paths.end()};
    }

    /// What a rule matches, below the home.
    Texts matches(const CleanupRule& rule) const {
        Texts paths;
        for (const SuggestionEngine::Target& target : SuggestionEngine::targets(rule)) {
            paths.push_back(target.item.path.substr(home().size() + 1));
        }
        std::ranges::sort(paths);
        return paths;
    }

    Texts offered() const {
        std::set<std::string> paths;
        for (const Suggestion& suggestion : SuggestionEngine::generate({.includeDocker = false})) {
            for (const SuggestionItem& item : suggestion.items) {
                paths.insert(item.path.substr(home().size() + 1));
            }
        }
        return {paths.begin(), paths.end()};
    }
};

TEST_F(SuggestionEngineProvenTest, TakesBuildOutputByWhatLiesInIt) {
    const std::string signature = "Signature: 8a477f597d28d172789f06886806bc55";
    for (const char* proof : {
             "p/build-release/CMakeCache.txt",
             "p/out/build/CMakeCache.txt",
             "p/builddir/meson-info/x",
             "p/env312/pyvenv.cfg",
             "p/.env312/pyvenv.cfg",
             "p/compiled/.rustc_info.json",
             "p/node_modules/CMakeCache.txt",  // Whatever its name.
             "Documents/CMakeCache.txt",       // The gate keeps it.
             ".tool/pyvenv.cfg",               // A tool's own.
             "1/2/3/4/CMakeCache.txt",         // Too deep.
             "p/build/notes.txt",
             "p/in-source/CMakeCache.txt",
             "p/in-source/CMakeLists.txt",
             "p/cloned/.git/HEAD",
         }) {
        write(proof);
    }
    write("p/tagged/CACHEDIR.TAG", signature);
    write("p/commented/CACHEDIR.TAG", signature + "\n# Made by a program.\n");
    write("p/cloned/CACHEDIR.TAG", signature);
    write("p/.hidden/CACHEDIR.TAG", signature);
    write("p/unsigned/CACHEDIR.TAG", "signature: 8a477f597d28d172789f06886806bc55");
    write("p/short/CACHEDIR.TAG", signature.substr(1));
    link("p/linked/CACHEDIR.TAG", "../tagged/CACHEDIR.TAG");
    link("p/linked-cache/CMakeCache.txt", "../build-release/CMakeCache.txt");
    link("p/link", "build-release");
    makeFolder("p/a-folder/CACHEDIR.TAG");
    for (const char* pipe : {"p/pipe/CACHEDIR.TAG", "p/pipe/CMakeCache.txt"}) {
        makeFolder("p/pipe");
        ASSERT_EQ(mkfifo(at(pipe).c_str(), 0600), 0);
    }
    chmod(write("p/secret/CACHEDIR.TAG", signature).c_str(), geteuid() == 0 ? 0600 : 0);
    Texts expected{
        "p/.env312",
        "p/build-release",
        "p/builddir",
        "p/commented",
        "p/compiled",
        "p/env312",
        "p/node_modules",
        "p/out/build",
        "p/tagged",
    };
    if (geteuid() == 0) {
        expected.insert(expected.end() - 1, "p/secret");  // Nothing is unreadable for root.
    }
    EXPECT_EQ(foundFolders(), expected);
}

TEST_F(SuggestionEngineProvenTest, LooksWhereVariablesMoveTheFoldersOfTools) {
    setenv("XDG_CACHE_HOME", at("xdg/cache").c_str(), 1);
    setenv("CARGO_HOME", at("xdg/cache/cargo").c_str(), 1);
    setenv("CCACHE_DIR", at("Projects").c_str(), 1);
    setenv("UV_CACHE_DIR", home().c_str(), 1);
    setenv("PIP_CACHE_DIR", "xdg/pip", 1);
    setenv("XDG_STATE_HOME", at("Documents").c_str(), 1);
    for (const char* file : {
             "xdg/cache/sccache/x",    // What a rule knows,
             "xdg/cache/viewer/x",     // what none knows,
             "xdg/cache/keyring/x",    // and what must stay.
             "xdg/cache/cargo/bin/x",  // Installed.
             "xdg/cache/cargo/registry/cache/x",
             ".cache/sccache/x",
             "Projects/mine/x",
             "xdg/pip/x",
             "Documents/x",
         }) {
        write(file);
    }
    EXPECT_EQ(
        offered(),
        (Texts{
            ".cache/sccache",
            "xdg/cache/cargo/registry/cache",
            "xdg/cache/sccache",
            "xdg/cache/viewer",
        }));
}

TEST_F(SuggestionEngineProvenTest, KnowsTheProfileOfABrowserEngineByItsShape) {
    for (const std::string app : {".config/notes", ".config/Vendor/board", ".config/Slack"}) {
        write(app + "/Preferences");
        write(app + "/Local Storage/x");
        write(app + "/Code Cache/x");
        write(app + "/Local Cache/x");
    }
    write(".config/writer/Preferences");
    write(".config/writer/Cache/draft");
    write(".config/linked/Local Storage");
    link(".config/linked/Preferences", "../notes/Preferences");
    write(".config/linked/Cache/x");
    for (const std::string profile : {".fox/ab.default", ".mozilla/other/cd.default"}) {
        write(profile + "/prefs.js");
        write(profile + "/times.json");
        write(profile + "/cache2/x");
    }
    write(".archive/old/cache2/letter");
    Texts expected{
        ".config/Slack/Code Cache",
        ".config/Vendor/board/Code Cache",
        ".config/notes/Code Cache",
        ".fox/ab.default/cache2",
        ".mozilla/other/cd.default/cache2",
    };
    EXPECT_EQ(offered(), expected);
    ASSERT_TRUE(DisabledRules::set("app.slack", true));
    expected.erase(expected.begin());
    EXPECT_EQ(offered(), expected) << "a rule that is off keeps what it knows";
}

TEST_F(SuggestionEngineProvenTest, OffersWhatIsLeftOfAProgramThatIsGone) {
    for (const char* data : {"data/gone/x", "data/here/x", "data/there/x"}) {
        write(data);
    }
    const CleanupRule rule{.paths = {"~/data/*"}, .conditions = {.owners = {"~/a", "~/b"}}};
    EXPECT_EQ(matches(rule), Texts{}) << "no list of programs";
    makeFolder("a/here");
    EXPECT_EQ(matches(rule), (Texts{"data/gone", "data/there"}));
    write("b/there");
    EXPECT_EQ(matches(rule), Texts{"data/gone"});
    std::remove(at("b/there").c_str());
    std::remove(at("b").c_str());
    write("b");
    EXPECT_EQ(matches(rule), Texts{}) << "an unreadable list";

    const CleanupRule told{.paths = {"~/data/*"}, .conditions = {.ownerFiles = {"~/in/*/.home"}}};
    EXPECT_EQ(matches(told), Texts{}) << "no file";
    write("in/gone/.home", at("programs/gone"));
    write("in/here/.home", at("data") + "\n");
    write("in/there/.home", "programs/there");
    EXPECT_EQ(matches(told), Texts{"data/gone"});
}

TEST_F(SuggestionEngineProvenTest, LeavesABroadRulesRefusedPlaces) {
    write(".ssh/key");
    EXPECT_EQ(
        matches({
            .paths = {"~/.ssh", "~/.ssh/*"},
              .isCatchAll = true
    }),
        Texts{});
}

}  // namespace
}  // namespace Brimlo
