#include "Benchmarks/TreeGenerator.h"

#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/Support/ParallelFor.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <random>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// The tree is a list of parts, each with a share of the entries, a random sequence and a folder of
// its own. So the parts can be made in any order and at once, and still come out the same. A part
// repeats its pattern (a project, a shelf of a cache) until its share is used up, and what is asked
// for after that is silently not made: nothing has to be counted in advance, and the sum is exact.

namespace Brimlo::Benchmarks {

namespace {

using Platform::Descriptor;

/// Where a part stands.
struct Progress {
    std::mt19937_64 random;
    std::int64_t left = 0;
    std::int64_t made = 0;

    /// A number from `low` to `high`. Not a standard distribution, as those differ by library.
    std::int64_t number(std::int64_t low, std::int64_t high) {
        const auto span = static_cast<std::uint64_t>(high - low + 1);
        return low + static_cast<std::int64_t>(random() % span);
    }

    template <typename List>
    const auto& oneOf(const List& list) {
        return list[random() % list.size()];
    }

    std::string hex(std::size_t length) {
        constexpr std::string_view kDigits = "0123456789abcdef";
        std::string text;
        while (text.size() < length) {
            text += kDigits[random() % kDigits.size()];
        }
        return text;
    }

    [[nodiscard]] bool isOver() const { return left <= 0; }
};

/// A folder that is being filled. Entries are made relative to it, which spares the kernel the way
/// from the root.
class Folder {
public:
    /// Makes `name` in the folder open at `parent`.
    Folder(Progress& progress, int parent, const std::string& name)
        : progress_(progress) {
        if (!progress_.isOver()) {
            count(mkdirat(parent, name.c_str(), 0755) == 0);
            descriptor_ = Descriptor{
                openat(parent, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NOFOLLOW)};
        }
    }

    [[nodiscard]] Folder folder(const std::string& name) const {
        return {progress_, descriptor_.number(), name};
    }

    void file(const std::string& name, std::string_view content) const {
        if (progress_.isOver()) {
            return;
        }
        constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
        const Descriptor file{openat(descriptor_.number(), name.c_str(), kFlags, 0644)};
        count(file && Platform::writeBytes(file.number(), content));
    }

    /// A file that says little more than its name, as most of a project's files might.
    void file(const std::string& name) const { file(name, name + "\n"); }

    /// So many files, the name of each made from its number, the highest first.
    void files(std::int64_t count, const std::function<std::string(std::int64_t)>& name) const {
        for (std::int64_t i = count; i > 0; --i) {
            file(name(i));
        }
    }

    /// A second name for a file of this folder.
    void hardLink(const std::string& name, const Folder& other, const std::string& target) const {
        if (!progress_.isOver()) {
            const int from = descriptor_.number();
            const int to = other.descriptor_.number();
            count(linkat(from, name.c_str(), to, target.c_str(), 0) == 0);
        }
    }

    void symbolicLink(const std::string& name, const std::string& target) const {
        if (!progress_.isOver()) {
            count(symlinkat(target.c_str(), descriptor_.number(), name.c_str()) == 0);
        }
    }

private:
    void count(bool wasMade) const {
        --progress_.left;
        progress_.made += wasMade ? 1 : 0;
    }

    Progress& progress_;
    Descriptor descriptor_;
};

using Fill = void (*)(const Folder&, Progress&);

std::string numbered(std::string_view word, std::int64_t number) {
    return std::string{word} + "-" + std::to_string(number);
}

constexpr std::array<std::string_view, 8> kModules{
    "index", "parser", "server", "client", "format", "store", "network", "helpers"};

/// `count` source files, a folder for every dozen.
void addSources(
    const Folder& project, Progress& progress, std::string_view suffix, std::int64_t count) {
    const Folder sources = project.folder("src");
    for (std::int64_t made = 0; made < count && !progress.isOver();) {
        const Folder module = sources.folder(numbered(progress.oneOf(kModules), made));
        for (std::int64_t end = std::min(made + 12, count); made < end; ++made) {
            module.file(numbered(progress.oneOf(kModules), made).append(suffix));
        }
    }
}

void addRepository(const Folder& project, Progress& progress, std::int64_t objects) {
    const Folder git = project.folder(".git");
    git.file("HEAD", "ref: refs/heads/main\n");
    git.file("index");
    git.file("config");
    git.folder("logs").file("HEAD");
    git.folder("refs").folder("heads").file("main");
    const Folder store = git.folder("objects");
    // Objects share 256 folders by the first two digits of their names.
    constexpr int kMostFolders = 256;
    const std::int64_t folders = std::min<std::int64_t>(objects, kMostFolders);
    for (std::int64_t i = 0; i < folders && !progress.isOver(); ++i) {
        constexpr std::string_view kDigits = "0123456789abcdef";
        const auto high = static_cast<std::size_t>(i) / kDigits.size();
        const auto low = static_cast<std::size_t>(i) % kDigits.size();
        const Folder shelf = store.folder({kDigits[high], kDigits[low]});
        shelf.files(objects / folders, [&](auto) { return progress.hex(38); });
    }
}

void addPackage(const Folder& modules, Progress& progress, const std::string& name, int depth) {
    const Folder package = modules.folder(name);
    package.file("package.json", "{}\n");
    package.file("README.md");
    package.file("LICENSE");
    for (const char* part : {"lib", "dist"}) {
        package.folder(part).files(progress.number(2, 16), [&](auto i) {
            return numbered(progress.oneOf(kModules), i).append(".js");
        });
    }
    // One package in ten brings its own version of some others.
    if (depth < 2 && progress.number(0, 9) == 0) {
        const Folder nested = package.folder("node_modules");
        for (std::int64_t i = progress.number(1, 4); i > 0; --i) {
            addPackage(nested, progress, numbered("nested", i), depth + 1);
        }
    }
}

void addNodeProject(const Folder& project, Progress& progress) {
    project.file("package.json", "{}\n");
    project.file("package-lock.json");
    addSources(project, progress, ".ts", progress.number(20, 120));
    const Folder modules = project.folder("node_modules");
    const Folder commands = modules.folder(".bin");
    for (std::int64_t i = progress.number(40, 220); i > 0 && !progress.isOver(); --i) {
        const std::string name = numbered(progress.oneOf(kModules), i);
        addPackage(modules, progress, name, 0);
        if (i % 6 == 0) {
            commands.symbolicLink(name, "../" + name + "/lib/index-1.js");
        }
    }
    project.folder("dist").files(
        progress.number(5, 60), [](auto i) { return numbered("chunk", i).append(".js"); });
}

void addRustProject(const Folder& project, Progress& progress) {
    project.file("Cargo.toml", "[package]\n");
    project.file("Cargo.lock");
    addSources(project, progress, ".rs", progress.number(10, 80));
    const Folder profile = project.folder("target").folder("debug");
    const Folder dependencies = profile.folder("deps");
    dependencies.files(progress.number(100, 700), [&](auto i) {
        return "lib" + numbered("crate", i) + "-" + progress.hex(16) + ".rlib";
    });
    // The compiler links its results to their place rather than copying them.
    dependencies.file("program-0");
    dependencies.hardLink("program-0", profile, "program");
    const Folder incremental = profile.folder("incremental");
    for (std::int64_t i = progress.number(5, 40); i > 0; --i) {
        const Folder unit = incremental.folder(numbered("crate", i)).folder(progress.hex(13));
        unit.files(progress.number(5, 25), [&](auto) { return progress.hex(16).append(".o"); });
    }
}

void addPythonProject(const Folder& project, Progress& progress) {
    project.file("pyproject.toml", "[project]\n");
    addSources(project, progress, ".py", progress.number(10, 100));
    const Folder packages =
        project.folder(".venv").folder("lib").folder("python3.11").folder("site-packages");
    for (std::int64_t i = progress.number(20, 90); i > 0 && !progress.isOver(); --i) {
        const Folder package = packages.folder(numbered("package", i));
        package.file("__init__.py", "");
        const Folder compiled = package.folder("__pycache__");
        for (std::int64_t k = progress.number(3, 30); k > 0; --k) {
            const std::string name = numbered(progress.oneOf(kModules), k);
            package.file(name + ".py");
            compiled.file(name + ".cpython-311.pyc");
        }
    }
    project.folder("__pycache__").files(progress.number(3, 20), [](auto i) {
        return numbered("module", i).append(".pyc");
    });
}

/// A project that nothing can be cleaned of: the walk has to look at all its folders.
void addPlainProject(const Folder& project, Progress& progress) {
    project.file("Makefile");
    addSources(project, progress, ".c", progress.number(100, 900));
    project.folder("doc").files(
        progress.number(3, 30), [](auto i) { return numbered("page", i).append(".md"); });
}

void addProjects(const Folder& folder, Progress& progress) {
    constexpr std::array<Fill, 6> kKinds{
        addNodeProject,
        addNodeProject,
        addRustProject,
        addPythonProject,
        addPlainProject,
        addPlainProject};
    for (std::int64_t i = 1; !progress.isOver(); ++i) {
        const Folder project = folder.folder(numbered("project", i));
        progress.oneOf(kKinds)(project, progress);
        addRepository(project, progress, progress.number(40, 600));
    }
}

/// A cache that spreads its files over folders named by the first digits.
void addShelves(const Folder& folder, Progress& progress) {
    for (std::int64_t i = 0; !progress.isOver(); ++i) {
        const Folder shelf = folder.folder(numbered("shelf", i)).folder(progress.hex(2));
        shelf.files(progress.number(5, 60), [&](auto) { return progress.hex(32); });
    }
}

/// A cache of one long folder, as browsers keep it, a few of its files large.
void addPile(const Folder& folder, Progress& progress) {
    for (std::int64_t i = 1; i <= 2; ++i) {
        const auto megabytes = static_cast<std::size_t>(progress.number(4, 12));
        folder.file(numbered("data", i), std::string(megabytes << 20U, 'b'));
    }
    while (!progress.isOver()) {
        folder.file(progress.hex(16).append("_0"));
    }
}

/// Items of one cache side by side, each of them an item of its own to clean.
void addModels(const Folder& folder, Progress& progress) {
    for (std::int64_t i = 1; !progress.isOver(); ++i) {
        const Folder model = folder.folder("models--somebody--" + numbered("model", i));
        const Folder blobs = model.folder("blobs");
        const Folder snapshot = model.folder("snapshots").folder(progress.hex(40));
        for (std::int64_t k = progress.number(4, 20); k > 0; --k) {
            const std::string blob = progress.hex(64);
            blobs.file(blob);
            snapshot.symbolicLink(numbered("weights", k), "../../blobs/" + blob);
        }
    }
}

void addDocuments(const Folder& folder, Progress& progress) {
    for (std::int64_t year = 2010; !progress.isOver(); ++year) {
        const Folder shelf = folder.folder(numbered("year", year));
        for (std::int64_t i = 1; i <= 24 && !progress.isOver(); ++i) {
            shelf.folder(numbered("occasion", i)).files(progress.number(5, 90), [](auto k) {
                return numbered("document", k).append(".odt");
            });
        }
    }
}

/// Where something lies, what it is, and its share of the tree in thousandths.
struct Part {
    std::string_view path;
    Fill fill;
    std::int64_t share;
};

// Several parts of a kind, so that two cores can be busy until the end.
constexpr std::array<Part, 21> kParts{
    {
     {"Projects/first", addProjects, 95},
     {"Projects/second", addProjects, 95},
     {"Projects/third", addProjects, 95},
     {"Projects/fourth", addProjects, 95},
     {"work/company", addProjects, 95},
     {"work/archive/old", addProjects, 95},
     {".cache/pip", addShelves, 35},
     {".cache/go-build", addShelves, 15},
     {".cache/yarn", addShelves, 30},
     {".cache/thumbnails", addPile, 20},
     {".cache/google-chrome/Default/Cache", addPile, 30},
     {".cache/mozilla/firefox/a1b2.default/cache2", addPile, 25},
     {".cache/huggingface/hub", addModels, 20},
     {".cache/ccache", addShelves, 20},
     {".npm/_cacache", addShelves, 40},
     {".cargo/registry/src", addShelves, 40},
     {".config/Code/CachedData", addShelves, 10},
     {".local/share/applications", addDocuments, 15},
     {"Documents", addDocuments, 60},
     {"Pictures", addDocuments, 50},
     {"Downloads", addDocuments, 20},
     }
};

}  // namespace

std::int64_t makeHomeTree(const std::string& root, const TreePlan& plan) {
    const Descriptor top{open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (!top) {
        return 0;
    }
    std::vector<Progress> progresses(kParts.size());
    std::int64_t given = 0;
    std::int64_t givenShares = 0;
    for (std::size_t i = 0; i < kParts.size(); ++i) {
        givenShares += kParts[i].share;
        const std::int64_t end = plan.entries * givenShares / 1000;
        progresses[i].random.seed(plan.seed * kParts.size() + i);
        progresses[i].left = end - given;
        given = end;
        // The folders above a part belong to its share, or to that of an earlier part.
        const std::string path{kParts[i].path};
        for (std::size_t slash = path.find('/'); slash != std::string::npos;
             slash = path.find('/', slash + 1)) {
            if (!progresses[i].isOver() &&
                mkdirat(top.number(), path.substr(0, slash).c_str(), 0755) == 0) {
                --progresses[i].left;
                ++progresses[i].made;
            }
        }
    }
    parallelFor(kParts.size(), [&](std::size_t i) {
        const Folder folder{progresses[i], top.number(), std::string{kParts[i].path}};
        kParts[i].fill(folder, progresses[i]);
    });
    std::int64_t made = 0;
    for (const Progress& progress : progresses) {
        made += progress.made;
    }
    return made;
}

}  // namespace Brimlo::Benchmarks
