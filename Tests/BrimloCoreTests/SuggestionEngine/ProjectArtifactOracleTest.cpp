#include "BrimloCore/RulePacks/Catalog.h"
#include "BrimloCore/SuggestionEngine/ProjectArtifactFinder.h"
#include "Support/TempHome.h"

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <iterator>
#include <random>
#include <sstream>

#include <dirent.h>
#include <fnmatch.h>
#include <sys/stat.h>

// The second walk is written to be read: it tries each pattern on each folder and asks the system
// about each path anew.

namespace Brimlo {
namespace {

namespace fs = std::filesystem;

using Texts = std::vector<std::string>;

Texts words(const std::string& text) {
    std::istringstream stream{text};
    return {std::istream_iterator<std::string>{stream}, {}};
}

const Texts kSkipped = words(
    "Library .Trash Applications node_modules .git Pods DerivedData .cache .npm .gradle .pub-cache "
    ".cargo .rustup .nvm .android .m2 go");
const Texts kBundles = words(".app .photoslibrary .fcpbundle .imovielibrary .xcarchive .lrdata");
const Texts kManifests = words(
    "package.json pubspec.yaml Cargo.toml Podfile Package.swift build.gradle build.gradle.kts "
    "pom.xml pyproject.toml requirements.txt mix.exs go.mod");

bool has(const Texts& texts, const std::string& text) {
    return std::ranges::find(texts, text) != texts.end();
}

struct Entry {
    std::string name;
    bool isFolder;
};

std::vector<Entry> entriesOf(const std::string& folder) {
    std::vector<Entry> entries;
    DIR* stream = opendir(folder.c_str());
    while (const dirent* entry = stream != nullptr ? readdir(stream) : nullptr) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..") {
            entries.push_back({name, fs::is_directory(fs::symlink_status(folder + "/" + name))});
        }
    }
    if (stream != nullptr) {
        closedir(stream);
    }
    return entries;
}

bool fits(const std::string& name, const std::string& wildcard) {
    return fnmatch(wildcard.c_str(), name.c_str(), 0) == 0;
}

bool slowlyMatches(
    const ArtifactPattern& pattern, const std::string& name, const std::vector<Entry>& siblings) {
    bool isNamed = false;
    for (const std::string& own : pattern.names) {
        isNamed = isNamed || own == name || (own.contains('*') && fits(name, own));
    }
    for (const std::string& suffix : pattern.suffixes) {
        isNamed = isNamed || name.ends_with(suffix);
    }
    for (const std::string& exclude : pattern.excludes) {
        isNamed = isNamed && !fits(name, exclude);
    }
    bool isProven = pattern.markers.empty();
    for (const std::string& marker : pattern.markers) {
        for (const Entry& sibling : siblings) {
            isProven = isProven || fits(sibling.name, marker);
        }
    }
    return isNamed && isProven;
}

std::optional<std::string> slowGitDirectory(fs::path folder, const fs::path& home) {
    for (int round = 0; round < 10; ++round) {
        const fs::path git = folder / ".git";
        if (fs::is_directory(git)) {
            return git.string();
        }
        const std::string text = Testing::contentOf(git.string());
        if (text.starts_with("gitdir: ") && text.ends_with("\n")) {
            const std::string value = text.substr(8, text.size() - 9);
            return value.front() == '/' ? value : folder.string() + "/" + value;
        }
        if (folder == home || folder.parent_path() == "/") {
            return std::nullopt;
        }
        folder = folder.parent_path();
    }
    return std::nullopt;
}

std::int64_t slowIdleDays(
    const std::string& project, const std::vector<Entry>& siblings, const std::string& home) {
    Texts files;
    for (const Entry& entry : siblings) {
        if (has(kManifests, entry.name) || entry.name.ends_with(".xcodeproj") ||
            entry.name.ends_with(".uproject")) {
            files.push_back(project + "/" + entry.name);
        }
    }
    if (const auto git = slowGitDirectory(project, home)) {
        for (const char* name : {"/index", "/HEAD", "/FETCH_HEAD", "/logs/HEAD"}) {
            files.push_back(*git + name);
        }
    }
    std::optional<std::time_t> latest;
    struct stat status {};
    for (const std::string& file : files) {
        if (stat(file.c_str(), &status) == 0) {
            latest = std::max(latest.value_or(status.st_mtime), status.st_mtime);
        }
    }
    if (!latest && stat(project.c_str(), &status) == 0) {
        latest = status.st_mtime;
    }
    const double days = std::difftime(std::time(nullptr), latest.value_or(0)) / 86'400;
    return std::max<std::int64_t>(0, static_cast<std::int64_t>(days));
}

void slowWalk(
    const std::string& folder,
    int depth,
    const std::string& home,
    std::vector<FoundArtifact>& found) {
    const std::vector<Entry> entries = depth > 8 ? std::vector<Entry>{} : entriesOf(folder);
    for (const auto& [name, isFolder] : entries) {
        if (!isFolder) {
            continue;
        }
        bool matched = false;
        for (const ArtifactPattern& pattern : ArtifactCatalog::all()) {
            if (slowlyMatches(pattern, name, entries)) {
                matched = true;
                found.push_back(
                    {pattern.id, folder + "/" + name, folder, slowIdleDays(folder, entries, home)});
            }
        }
        const bool isBundle = std::ranges::any_of(
            kBundles, [&](const std::string& suffix) { return name.ends_with(suffix); });
        if (!matched && !has(kSkipped, name) && !isBundle && name.front() != '.') {
            slowWalk(folder + "/" + name, depth + 1, home, found);
        }
    }
}

class GeneratedProjectsTest : public Testing::TempHome {
protected:
    GeneratedProjectsTest() {
        std::ranges::copy(kSkipped, std::back_inserter(names_));
        for (const std::string& suffix : kBundles) {
            names_.push_back("x" + suffix);
        }
        names_.emplace_back("1 Previews.lrdata");
    }

    /// Makes a tree of projects, real and nearly real, and returns its root.
    std::string grow(const std::string& name) {
        constexpr int kEntries = 100;
        Texts folders{name};
        makeFolder(name);
        for (int i = 0; i < kEntries; ++i) {
            const std::size_t recent = std::min(folders.size(), std::size_t{12});
            const std::string parent = folders[folders.size() - 1 - below(recent)];
            addEntry(parent, folders);
        }
        for (const std::string& folder : folders) {
            age(at(folder), someDays());
        }
        return at(name);
    }

private:
    static std::string withoutStars(std::string name) {
        std::ranges::replace(name, '*', '1');
        return name;
    }

    std::size_t below(std::size_t limit) { return random_() % limit; }
    double someDays() { return static_cast<double>(below(300)) + 0.5; }

    template <typename T>
    const T& pick(const std::vector<T>& list) {
        return list[below(list.size())];
    }

    void addFile(const std::string& path, const std::string& content) {
        if (!Testing::exists(at(path))) {
            age(write(path, content), someDays());
        }
    }

    void addFolder(const std::string& path, Texts& folders) {
        std::error_code ignored;
        if (fs::create_directory(at(path), ignored)) {
            folders.push_back(path);
        }
    }

    /// What a pattern looks for, sometimes without its proof or with a file of its name.
    void addOutput(const std::string& parent, Texts& folders) {
        const ArtifactPattern& pattern = pick(ArtifactCatalog::all());
        const bool isFolder = below(8) != 0;
        const std::size_t before = folders.size();
        for (const std::string& name : pattern.names) {
            const std::string path = parent + "/" + withoutStars(name);
            isFolder ? addFolder(path, folders) : addFile(path, "content");
        }
        if (below(4) != 0) {
            folders.resize(before);  // Little grows in what is not entered.
        }
        if (!pattern.markers.empty() && below(4) != 0) {
            addFile(parent + "/" + withoutStars(pick(pattern.markers)), "content");
        }
    }

    void addEntry(const std::string& parent, Texts& folders) {
        std::error_code ignored;
        switch (below(10)) {
            case 0:
                fs::create_symlink(at(pick(folders)), at(parent + "/" + pick(names_)), ignored);
                break;
            case 1:
                if (!Testing::exists(at(parent) + "/.git")) {
                    addFile(parent + "/.git/" + (below(2) == 0 ? "HEAD" : "logs/HEAD"), "ref");
                }
                break;
            case 2:
                addFile(parent + "/.git", below(2) == 0 ? "gitdir: ../.git\n" : "something else\n");
                break;
            case 3:
            case 4:
            case 5:
            case 6:
                addOutput(parent, folders);
                break;
            default:
                addFolder(parent + "/" + pick(names_), folders);
        }
    }

    std::mt19937 random_{7};
    Texts names_ = words("a b c d e f g a b c d e f g a b c d e f g golang x.App .hidden \xff");
};

TEST_F(GeneratedProjectsTest, AreFoundAsByASlowerWalk) {
    constexpr int kTrees = 25;
    std::size_t total = 0;
    for (int tree = 0; tree < kTrees; ++tree) {
        SCOPED_TRACE(tree);
        const std::string root = grow("t" + std::to_string(tree));
        std::vector<FoundArtifact> expected;
        slowWalk(root, 0, home(), expected);
        auto actual = ProjectArtifactFinder::find({root}, 8);
        std::ranges::stable_sort(expected, {}, &FoundArtifact::path);
        std::ranges::stable_sort(actual, {}, &FoundArtifact::path);
        ASSERT_EQ(actual, expected);
        total += actual.size();
    }
    EXPECT_GT(total, 100U) << "the trees hold something to find";
}

}  // namespace
}  // namespace Brimlo
