#include "BrimloCore/SuggestionEngine/ProjectArtifactFinder.h"

#include "BrimloCore/Gate/Safety.h"
#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/RulePacks/Catalog.h"
#include "BrimloCore/Support/Dates.h"
#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/Glob.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <ctime>
#include <iterator>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::ProjectArtifactFinder {

namespace {

using Platform::Descriptor;

const std::unordered_set<std::string_view>& skipDirs() {
    static const std::unordered_set<std::string_view> kNames{
        "Library",
        ".Trash",
        "Applications",
        "node_modules",
        ".git",
        "Pods",
        "DerivedData",
        ".cache",
        ".npm",
        ".gradle",
        ".pub-cache",
        ".cargo",
        ".rustup",
        ".nvm",
        ".android",
        ".m2",
        "go",
    };
    return kNames;
}

constexpr std::array<std::string_view, 6> kBundleSuffixes{
    ".app", ".photoslibrary", ".fcpbundle", ".imovielibrary", ".xcarchive", ".lrdata"};

/// The files whose dates tell of work on a project.
constexpr std::array<std::string_view, 12> kManifests{
    "package.json",
    "pubspec.yaml",
    "Cargo.toml",
    "Podfile",
    "Package.swift",
    "build.gradle",
    "build.gradle.kts",
    "pom.xml",
    "pyproject.toml",
    "requirements.txt",
    "mix.exs",
    "go.mod",
};

/// The files that git rewrites during work.
constexpr std::array<std::string_view, 4> kGitFiles{"index", "HEAD", "FETCH_HEAD", "logs/HEAD"};

constexpr const char* kCacheTag = "CACHEDIR.TAG";

/// The first second of the year 1: before the date of any file.
constexpr std::time_t kDistantPast = -62'135'769'600;

bool isManifest(std::string_view name) {
    return std::ranges::find(kManifests, name) != kManifests.end() ||
           name.ends_with(".xcodeproj") || name.ends_with(".uproject");
}

/// The names in a folder, in the order of the directory. They share one buffer, because a walk
/// reads hundreds of thousands of names and keeps almost none.
struct Listing {
    std::string buffer;
    std::vector<std::string_view> names;
    std::vector<std::string_view> folders;

    explicit Listing(int directory) {
        std::vector<std::pair<std::size_t, bool>> starts;
        // After an error the names read so far count.
        Platform::readDirectory(
            directory, Platform::EntryDetail::kind, [&](const Platform::DirectoryEntry& entry) {
                starts.emplace_back(buffer.size(), entry.isDirectory);
                buffer.append(entry.name).push_back('\0');
            });
        names.reserve(starts.size());
        for (const auto& [start, isDirectory] : starts) {
            names.emplace_back(buffer.data() + start);
            if (isDirectory) {
                folders.push_back(names.back());
            }
        }
    }
};

using Names = std::vector<std::string_view>;
using Patterns = std::vector<const ArtifactPattern*>;

/// An open folder with its names. Stays where it is: the names point into it.
struct Folder {
    explicit Folder(Descriptor opened)
        : descriptor(std::move(opened))
        , listing(descriptor.number()) {}

    Descriptor descriptor;
    Listing listing;
};

/// Whether a wildcard matches one of the names. A text without special characters is only compared.
bool matchesAny(const std::string& wildcard, const Names& names) {
    if (wildcard.find_first_of("*?[\\") == std::string::npos) {
        return std::ranges::find(names, wildcard) != names.end();
    }
    return std::ranges::any_of(
        names, [&](std::string_view name) { return Glob::matches(std::string{name}, wildcard); });
}

bool matchesAny(const std::vector<std::string>& wildcards, const Names& names) {
    return std::ranges::any_of(
        wildcards, [&](const std::string& wildcard) { return matchesAny(wildcard, names); });
}

/// Whether the file CACHEDIR.TAG in a folder begins as the Cache Directory Tagging Specification
/// demands. Many write that file by hand, so the name alone proves nothing.
bool isSigned(int folder) {
    constexpr std::string_view kSignature = "Signature: 8a477f597d28d172789f06886806bc55";
    // A pipe would block, and a symlink may lead to one.
    const Descriptor tag{openat(folder, kCacheTag, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)};
    struct stat status{};
    std::array<char, kSignature.size()> text{};
    return tag && fstat(tag.number(), &status) == 0 && S_ISREG(status.st_mode) &&
           read(tag.number(), text.data(), text.size()) == std::ssize(text) &&
           std::ranges::equal(text, kSignature);
}

/// Whether what lies in a folder proves that it is the output which `pattern` means.
bool isProvenInside(const ArtifactPattern& pattern, const Folder& folder) {
    const auto proves = [&](const std::string& name) {
        const auto status =
            std::ranges::find(folder.listing.names, name) != folder.listing.names.end()
                ? Platform::entryStatus(folder.descriptor.number(), name.c_str())
                : std::nullopt;
        return status && status->kind != Platform::EntryStatus::Kind::other &&
               (name != kCacheTag || isSigned(folder.descriptor.number()));
    };
    return std::ranges::any_of(pattern.proofs, proves) &&
           !matchesAny(pattern.disproofs, folder.listing.names);
}

bool needsProof(const ArtifactPattern* pattern) {
    return !pattern->proofs.empty();
}

/// The patterns indexed by name: an unknown name costs one lookup.
class Matcher {
public:
    explicit Matcher(const std::vector<ArtifactPattern>& patterns) {
        for (const ArtifactPattern& pattern : patterns) {
            for (const std::string& name : pattern.names) {
                literals_[name].push_back(&pattern);
                if (name.contains('*')) {
                    wildcards_.emplace_back(name, &pattern);
                }
            }
            for (const std::string& suffix : pattern.suffixes) {
                suffixes_.emplace_back(suffix, &pattern);
            }
        }
    }

    /// The patterns that match a folder `name` whose siblings are `siblings`, in their order,
    /// whatever lies in it.
    [[nodiscard]] Patterns matches(std::string_view name, const Names& siblings) const {
        Patterns found = byName(name);
        std::erase_if(found, [&](const ArtifactPattern* pattern) {
            const bool isMarked =
                pattern->markers.empty() || matchesAny(pattern->markers, siblings);
            return !isMarked || matchesAny(pattern->excludes, {name});
        });
        return found;
    }

private:
    [[nodiscard]] Patterns byName(std::string_view name) const {
        Patterns found;
        if (const auto literal = literals_.find(name); literal != literals_.end()) {
            found = literal->second;
        }
        for (const auto& [suffix, pattern] : suffixes_) {
            if (name.ends_with(suffix)) {
                found.push_back(pattern);
            }
        }
        for (const auto& [wildcard, pattern] : wildcards_) {
            if (Glob::matches(std::string{name}, wildcard)) {
                found.push_back(pattern);
            }
        }
        std::ranges::sort(found);
        found.erase(std::ranges::unique(found).begin(), found.end());
        return found;
    }

    std::unordered_map<std::string_view, Patterns> literals_;
    std::vector<std::pair<std::string, const ArtifactPattern*>> wildcards_;
    std::vector<std::pair<std::string_view, const ArtifactPattern*>> suffixes_;
};

/// The git directory that a ".git" file points to.
std::optional<std::string> linkedGitDirectory(const std::string& folder) {
    constexpr std::string_view kKey = "gitdir:";
    constexpr std::string_view kSpace = " \t\r\n\v\f";
    constexpr std::size_t kLongestFile = 65536;
    const auto text = readFile(folder + "/.git", kLongestFile);
    if (!text || !Text::isValid(*text) || !text->starts_with(kKey)) {
        return std::nullopt;
    }
    std::string_view value = std::string_view{*text}.substr(kKey.size());
    value.remove_prefix(std::min(value.find_first_not_of(kSpace), value.size()));
    value = value.substr(0, value.find_last_not_of(kSpace) + 1);
    return value.starts_with('/') ? std::string{value} : folder + "/" + std::string{value};
}

/// The git directory of the repository of `folder`, at most ten levels up and not above the home
/// folder. Follows the ".git" file of worktrees and submodules.
std::optional<std::string> gitDirectory(const std::string& folder) {
    constexpr int kMostLevels = 10;
    const std::string home = StoragePaths::home();
    std::string current = folder;
    for (int level = 0; level < kMostLevels; ++level) {
        std::string git = current + "/.git";
        struct stat status{};
        if (stat(git.c_str(), &status) == 0) {
            if (S_ISDIR(status.st_mode)) {
                return git;
            }
            if (auto linked = linkedGitDirectory(current)) {
                return linked;
            }
        }
        const std::string parent{Path::parent(current)};
        if (parent == current || parent == "/" || current == home) {
            return std::nullopt;
        }
        current = parent;
    }
    return std::nullopt;
}

/// Days since the last change of the project's manifests, found among the names of its entries, and
/// of its repository; without either, of the folder itself.
std::int64_t idleDays(const std::string& project, const std::vector<std::string_view>& siblings) {
    std::vector<std::string> files;
    for (const std::string_view name : siblings) {
        if (isManifest(name)) {
            files.push_back(project + "/" + std::string{name});
        }
    }
    if (const auto git = gitDirectory(project)) {
        for (const std::string_view name : kGitFiles) {
            files.push_back(*git + "/" + std::string{name});
        }
    }
    std::time_t latest = kDistantPast;
    struct stat status{};
    for (const std::string& file : files) {
        if (stat(file.c_str(), &status) == 0) {
            latest = std::max(latest, status.st_mtime);
        }
    }
    if (latest == kDistantPast && stat(project.c_str(), &status) == 0) {
        latest = status.st_mtime;
    }
    return Dates::daysSince(latest, std::time(nullptr));
}

class Walk {
public:
    Walk(int maxDepth, const ScanControl* control)
        : matcher_(Catalog::artifactPatterns())
        , maxDepth_(maxDepth)
        , control_(control) {}

    void start(const std::string& root) {
        path_ = root;
        Descriptor opened{open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
        if (opened && maxDepth_ >= 0) {
            visit(Folder{std::move(opened)}, 0);
        }
    }

    std::vector<FoundArtifact> found;

private:
    /// Looks through the current folder.
    void visit(const Folder& folder, int depth) {
        if (control_ != nullptr && control_->isCancelled()) {
            return;
        }
        const bool isLast = depth == maxDepth_;
        std::optional<std::int64_t> idle;
        for (const std::string_view child : folder.listing.folders) {
            std::optional<Folder> inside;
            const auto open = [&] {
                if (Descriptor opened = isLast || inside ? Descriptor{} : openIn(folder, child)) {
                    inside.emplace(std::move(opened));
                }
            };
            const Patterns matches = patternsOf(folder, child, inside, open);
            if (!matches.empty() && !idle) {
                idle = idleDays(path_, folder.listing.names);
            }
            for (const ArtifactPattern* pattern : matches) {
                found.push_back({pattern, path_ + "/" + std::string{child}, path_, *idle});
            }
            if (!matches.empty() || isSkipped(child)) {
                continue;
            }
            open();
            if (inside) {
                const std::size_t length = path_.size();
                path_.append("/").append(child);
                visit(*inside, depth + 1);
                path_.resize(length);
            }
        }
    }

    static Descriptor openIn(const Folder& folder, std::string_view child) {
        return Descriptor{openat(
            folder.descriptor.number(),
            child.data(),
            O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NOFOLLOW)};
    }

    /// The patterns of which `child` of the current folder is build output: not hidden directly in
    /// the home, where tools keep their own data, and allowed by the gate. Opens `inside` only if
    /// its contents decide: a pattern that knows the folder by its neighbours needs no proof.
    [[nodiscard]] Patterns patternsOf(
        const Folder& folder,
        std::string_view child,
        const std::optional<Folder>& inside,
        const auto& open) const {
        if (child.starts_with('.') && path_ == home_) {
            return {};
        }
        Patterns matches = matcher_.matches(child, folder.listing.names);
        if (!std::ranges::all_of(matches, needsProof)) {
            std::erase_if(matches, needsProof);
        } else if (!matches.empty()) {
            open();
            std::erase_if(matches, [&](const ArtifactPattern* pattern) {
                return !inside || !isProvenInside(*pattern, *inside);
            });
        }
        if (!matches.empty() &&
            gate_.judge(Path::join(path_, child), Safety::Chosen::byRule).refusal) {
            matches.clear();
        }
        return matches;
    }

    Matcher matcher_;
    Safety::Gate gate_;
    std::string home_ = StoragePaths::home();
    int maxDepth_;
    const ScanControl* control_;
    std::string path_;  ///< The current folder.
};

}  // namespace

bool isSkipped(std::string_view name) {
    const auto endsName = [&](std::string_view suffix) { return name.ends_with(suffix); };
    return name.starts_with('.') || skipDirs().contains(name) ||
           std::ranges::any_of(kBundleSuffixes, endsName);
}

std::vector<FoundArtifact> find(
    const std::vector<std::string>& roots, int maxDepth, const ScanControl* control) {
    Walk walk{maxDepth, control};
    for (const std::string& root : roots) {
        walk.start(root);
    }
    return std::move(walk.found);
}

}  // namespace Brimlo::ProjectArtifactFinder
