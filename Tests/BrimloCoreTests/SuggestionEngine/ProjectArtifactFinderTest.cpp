#include "BrimloCore/SuggestionEngine/ProjectArtifactFinder.h"

#include "Support/TempHome.h"

#include <filesystem>
#include <set>
#include <tuple>

namespace Brimlo {
namespace {

namespace fs = std::filesystem;

using Texts = std::vector<std::string>;

class ProjectArtifactFinderTest : public Testing::TempHome {
protected:
    static constexpr int kDepth = 8;

    /// The paths of what is found, each once.
    Texts foundPaths() const {
        std::set<std::string> paths;
        for (const FoundArtifact& artifact : ProjectArtifactFinder::find({home()}, kDepth)) {
            paths.insert(artifact.path.substr(home().size() + 1));
        }
        return {paths.begin(), paths.end()};
    }

    /// The idle days of a project in a folder that is 200 days old.
    std::int64_t idleDays(const std::string& folder) const {
        makeFolder(folder + "/__pycache__");
        age(at(folder), 200.5);
        return ProjectArtifactFinder::find({at(folder)}, 0).at(0).idleDays;
    }

    void writeAged(const std::string& relative, double days) const { age(write(relative), days); }
};

TEST_F(ProjectArtifactFinderTest, KnowsBuildOutputByItsNameAndNeighbours) {
    const auto project = [&](const std::string& folder, const Texts& files, const Texts& folders) {
        for (const std::string& name : folders) {
            makeFolder(folder + "/" + name);
        }
        for (const std::string& name : files) {
            write(folder + "/" + name);
        }
    };
    project("node", {"package.json"}, {"node_modules/inner/node_modules", ".next"});
    write("node/node_modules/inner/package.json");
    project("bare", {"other.json"}, {"node_modules/inner/__pycache__", "target/in/__pycache__"});
    project("infra", {"main.tf"}, {".terraform"});
    project("wild", {"CMakeLists.txt"}, {"cmake-build-debug", "cmake-build", "Xcmake-build-x"});
    project("marker-folder", {}, {"pom.xml", "target"});
    project("case", {"Package.json"}, {"node_modules", "Node_Modules"});
    project("not-a-folder", {"package.json", "node_modules"}, {});
    write("linked/package.json");
    link("linked/node_modules", "../node/node_modules");
    link("linked/more", "../infra");
    for (const char* skipped : {"Library", "go", ".hidden", "X.app", "X.lrdata", "Pods"}) {
        makeFolder(std::string{skipped} + "/in/__pycache__");
    }
    for (const char* entered : {"library", "X.App", "app", "golang", "build"}) {
        makeFolder(std::string{entered} + "/in/__pycache__");
    }
    const Texts expected{
        "X.App/in/__pycache__",
        "app/in/__pycache__",
        "bare/target/in/__pycache__",
        "build/in/__pycache__",
        "golang/in/__pycache__",
        "infra/.terraform",
        "library/in/__pycache__",
        "marker-folder/target",
        "node/.next",
        "node/node_modules",
        "wild/cmake-build-debug",
    };
    EXPECT_EQ(foundPaths(), expected);
}

TEST_F(ProjectArtifactFinderTest, TakesNoToolsOwnFolderInTheHomeForOutput) {
    for (const char* file : {"build.gradle", "app.json", "package.json", "ProjectSettings/x"}) {
        write(file);
    }
    for (const char* folder : {".gradle", ".expo", "Library", "Build", "node_modules", "p/.expo"}) {
        makeFolder(std::string{folder} + "/in/__pycache__");
    }
    write("p/app.json");
    write(".config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=$HOME/Build");
    const Texts expected{"Build/in/__pycache__", "node_modules", "p/.expo"};
    EXPECT_EQ(foundPaths(), expected);
}

TEST_F(ProjectArtifactFinderTest, ReadsFoldersDownToTheLastDepth) {
    makeFolder("1/2/3/4/5/6/7/8/__pycache__");
    makeFolder("1/2/3/4/5/6/7/8/9/__pycache__");
    EXPECT_EQ(foundPaths(), Texts{"1/2/3/4/5/6/7/8/__pycache__"});
    EXPECT_TRUE(ProjectArtifactFinder::find({home()}, 7).empty());
    ScanControl control;
    control.cancel();
    EXPECT_EQ(
        ProjectArtifactFinder::find({home()}, kDepth, &control), std::vector<FoundArtifact>{});
}

TEST_F(ProjectArtifactFinderTest, MeasuresTheActivityOfAProject) {
    using Ages = std::vector<std::pair<std::string, double>>;
    const std::tuple<const char*, Ages, std::int64_t> cases[] = {
        {"neither manifest nor repository", {{"main.c", 3.5}},                             200},
        {"the latest manifest",             {{"pom.xml", 9.5}, {"go.mod", 8.5}},           8  },
        {"a manifest of tomorrow",          {{"mix.exs", -1}},                             0  },
        {"the repository's files",          {{".git/logs/HEAD", 4.5}, {".git/config", 1}}, 4  },
        {"fetching is work",                {{".git/FETCH_HEAD", 3.5}, {".git/index", 4}}, 3  },
    };
    for (const auto& [name, ages, expected] : cases) {
        for (const auto& [file, days] : ages) {
            writeAged("p/" + file, days);
        }
        EXPECT_EQ(idleDays("p"), expected) << name;
        fs::remove_all(at("p"));
    }
}

TEST_F(ProjectArtifactFinderTest, ReadsTheActivityOfTheRepositoryAroundAProject) {
    const std::string deep = "plain/a/b/c/d/e/f/g/h/i";
    writeAged("plain/.git/HEAD", 5.5);
    writeAged("git dirs/x/HEAD", 6.5);
    link("dangling/.git", "nowhere");
    write("relative/.git", "gitdir: ../git dirs/x\n");
    write("absolute/.git", "gitdir:\t" + at("git dirs/x") + " \r\n\n");
    write("garbage/.git", "gitdir " + at("git dirs/x"));
    write("bytes/.git", "gitdir: " + at("git dirs/x") + "\n\xff");
    write("plain/a/garbage/.git", "none");
    age(link("dangling/pom.xml", "nowhere"), 1.5);
    const std::pair<std::string, std::int64_t> cases[] = {
        {"plain/a",         5  },
        {deep,              5  },
        {deep + "/j",       200},
        {"plain/a/garbage", 5  },
        {"dangling",        200},
        {"relative",        6  },
        {"absolute",        6  },
        {"garbage",         200},
        {"bytes",           200},
    };
    for (const auto& [folder, days] : cases) {
        EXPECT_EQ(idleDays(folder), days) << folder;
    }
    setenv("HOME", at("plain/a").c_str(), 1);
    EXPECT_EQ(idleDays("plain/a"), 200) << "nothing above the home folder";
    setenv("HOME", at("plain").c_str(), 1);
    EXPECT_EQ(idleDays("plain/a/b"), 5) << "the home folder itself may be a repository";
}

}  // namespace
}  // namespace Brimlo
