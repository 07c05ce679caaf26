#include "BrimloCore/SuggestionEngine/ProjectArtifactFinder.h"
#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"
#include "Support/TempHome.h"

#include <set>

#include <sys/stat.h>

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
             "p/.env/pyvenv.cfg",
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
        "p/.env",
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

}  // namespace
}  // namespace Brimlo
