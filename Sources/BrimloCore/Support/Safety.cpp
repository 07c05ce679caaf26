#include "BrimloCore/Support/Safety.h"

#include "BrimloCore/Platform/OtherNames.h"
#include "BrimloCore/Platform/Posix/IdentityOf.h"
#include "BrimloCore/Platform/PrivatePrefix.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>
#include <string>
#include <unordered_set>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Safety {

namespace {

using Platform::FileIdentity;

// In the tables "~" stands for the home folder as it is at the moment of the check.

constexpr std::array<std::string_view, 31> kProtectedExact{
    "/",
    "/System",
    "/Library",
    "/Users",
    "/Applications",
    "/usr",
    "/bin",
    "/sbin",
    "/private",
    "/var",
    "/etc",
    "/opt",
    "/Volumes",
    "/cores",
    "~",
    "~/Library",
    "~/Documents",
    "~/Desktop",
    "~/Downloads",
    "~/Pictures",
    "~/Movies",
    "~/Music",
    "~/Public",
    "~/Applications",
    "~/.ssh",
    "~/.gnupg",
    "~/Library/Keychains",
    "~/Library/Application Support",
    "~/Library/Preferences",
    "~/Library/Mobile Documents",
    "~/Library/CloudStorage",
};

constexpr std::array<std::string_view, 13> kNeverTouchPrefixes{
    "~/.ssh",
    "~/.gnupg",
    "~/.aws",
    "~/.kube",
    "~/.config/gcloud",
    "~/.azure",
    "~/Library/Keychains",
    "~/.claude/projects",
    "~/.claude/CLAUDE.md",
    "~/.claude/agents",
    "~/.claude/commands",
    "~/.claude/skills",
    "~/.password-store",
};

/// Caches that rules may clean although their parents hold credentials.
constexpr std::array<std::string_view, 3> kCarveOuts{
    "~/.kube/cache",
    "~/.kube/http-cache",
    "~/.aws/cli/cache",
};

constexpr std::array<std::string_view, 3> kAgentFolders{"~/.claude", "~/.codex", "~/.gemini"};

constexpr std::array<std::string_view, 3> kAgentFileBeginnings{"settings", "auth", "oauth"};

constexpr std::array<std::string_view, 5> kUserOwnedRoots{
    "~",
    "/Applications",
    "/Volumes",
    "/opt/homebrew",
    "/usr/local",
};

const std::unordered_set<std::string_view>& secretNames() {
    static const std::unordered_set<std::string_view> kNames{
        ".env",
        "credentials",
        "credentials.json",
        "auth.json",
        ".netrc",
        ".npmrc",
        ".pypirc",
        "token.json",
    };
    return kNames;
}

/// Answers for the rows of the tables, with the home folder in place of "~".
///
/// All texts are decomposed, so that equality and prefixes are those of Unicode text: composed
/// and decomposed spellings of a character are the same.
class Tables {
public:
    explicit Tables(const std::string& home)
        : home_(Text::decomposed(home))
        , lowerHome_(Text::lowered(home)) {}

    /// Whether `lower` is the row, lower-cased.
    [[nodiscard]] bool isRow(std::string_view row, std::string_view lower) const {
        return rest(row, lower, Letters::lower) == "";
    }

    /// Whether `lower` is the row or lies below it, lower-cased.
    [[nodiscard]] bool isAtOrBelow(std::string_view row, std::string_view lower) const {
        return rest(row, lower, Letters::lower).has_value();
    }

    /// What follows the row, lower-cased, and its slash in `lower`, if it lies below it.
    [[nodiscard]] std::optional<std::string_view> below(
        std::string_view row, std::string_view lower) const {
        const auto rest = this->rest(row, lower, Letters::lower);
        return rest == "" ? std::nullopt : rest;
    }

    /// Whether `exact` is the row or lies below it, in the letters as they stand.
    [[nodiscard]] bool isExactlyAtOrBelow(std::string_view row, std::string_view exact) const {
        return rest(row, exact, Letters::asTheyAre).has_value();
    }

private:
    enum class Letters { asTheyAre, lower };

    [[nodiscard]] std::optional<std::string_view> rest(
        std::string_view row, std::string_view path, Letters letters) const {
        if (row.starts_with('~')) {
            const std::string& home = letters == Letters::lower ? lowerHome_ : home_;
            if (!path.starts_with(home)) {
                return std::nullopt;
            }
            path.remove_prefix(home.size());
            row.remove_prefix(1);
        }
        return letters == Letters::lower ? Path::below(Text::lowered(row), path)
                                         : Path::below(row, path);
    }

    std::string home_;
    std::string lowerHome_;
};

constexpr std::string_view kOutside = "outside user-owned locations";
constexpr std::string_view kWholeVolume = "whole volume";

bool looksLikeASecret(std::string_view lowerName) {
    return secretNames().contains(lowerName) || lowerName.ends_with(".p12") ||
           lowerName.ends_with(".keychain-db") || lowerName.starts_with("id_");
}

bool isWholeVolume(std::string_view path) {
    constexpr std::string_view kVolumes = "/Volumes/";
    return path.starts_with(kVolumes) && !path.substr(kVolumes.size()).contains('/');
}

/// What the tables say of a text in canonical form, without a look at the disk.
std::optional<std::string> check(std::string_view path) {
    const Tables tables{StoragePaths::home()};
    const std::string exact = Text::decomposed(path);
    const std::string lower = Text::lowered(path);
    const std::string_view name = Path::name(lower);
    const auto isRow = [&](std::string_view row) { return tables.isRow(row, lower); };
    const auto isAtOrBelow = [&](std::string_view row) { return tables.isAtOrBelow(row, lower); };

    if (std::ranges::any_of(kProtectedExact, isRow)) {
        return "protected location";
    }
    if (!std::ranges::any_of(kCarveOuts, isAtOrBelow) &&
        std::ranges::any_of(kNeverTouchPrefixes, isAtOrBelow)) {
        return "holds credentials, settings or agent memory";
    }
    for (const std::string_view folder : kAgentFolders) {
        const std::optional<std::string_view> rest = tables.below(folder, lower);
        const auto startsName = [&](std::string_view text) { return name.starts_with(text); };
        if (rest && !rest->contains('/') && std::ranges::any_of(kAgentFileBeginnings, startsName)) {
            return "agent settings or credentials";
        }
    }
    if (looksLikeASecret(name)) {
        return "looks like a secret";
    }
    const auto owns = [&](std::string_view root) { return tables.isExactlyAtOrBelow(root, exact); };
    // The system would cut a path at a NUL and so act on another one.
    if (!Path::isUsable(path) || std::ranges::none_of(kUserOwnedRoots, owns)) {
        return std::string{kOutside};
    }
    if (isWholeVolume(exact)) {
        return std::string{kWholeVolume};
    }
    return std::nullopt;
}

/// `path`, in canonical form, with the links of its parent resolved as far as they exist.
std::string resolvedParent(const std::string& path) {
    constexpr int kMostLinks = 64;
    if (path == "/") {
        return path;
    }
    // Components still to walk, the next one last. A link puts its target's in its own place.
    std::vector<std::string> pending;
    const auto push = [&](std::string_view text) {
        while (!text.empty()) {
            const std::size_t slash = text.rfind('/');
            const std::size_t start = slash == std::string_view::npos ? 0 : slash + 1;
            if (start < text.size()) {
                pending.emplace_back(text.substr(start));
            }
            text = text.substr(0, slash == std::string_view::npos ? 0 : slash);
        }
    };
    push(Path::parent(path));

    std::string resolved = "/";
    int links = 0;
    while (!pending.empty()) {
        const std::string component = std::move(pending.back());
        pending.pop_back();
        if (component == ".") {
            continue;
        }
        if (component == "..") {
            resolved = Path::parent(resolved);
            continue;
        }
        const std::string next = Path::join(resolved, component);
        std::array<char, PATH_MAX> target{};
        const ssize_t length = readlink(next.c_str(), target.data(), target.size());
        // What is no link, is missing or turns in circles stays as it is spelled.
        if (length <= 0 || ++links > kMostLinks) {
            resolved = next;
            continue;
        }
        const std::string_view text{target.data(), static_cast<std::size_t>(length)};
        if (text.starts_with('/')) {
            resolved = "/";
        }
        push(text);
    }
    return Path::join(Platform::withoutPrivatePrefix(resolved), Path::name(path));
}

/// That of what a path leads to, links followed.
std::optional<FileIdentity> targetIdentity(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return Platform::identityOf(status);
}

/// All places that the tables protect with what lies in them or around them, without repeats.
std::vector<std::string> protectedPlaces() {
    std::vector<std::string> places;
    const auto add = [&](std::string_view row) {
        places.push_back(StoragePaths::expandTilde(row));
    };
    std::ranges::for_each(kProtectedExact, add);
    std::ranges::for_each(kNeverTouchPrefixes, add);
    std::ranges::for_each(kAgentFolders, add);
    std::ranges::sort(places);
    places.erase(std::ranges::unique(places).begin(), places.end());
    return places;
}

/// The verdict on the other names of `path`: where one of the folders above it, or itself, is the
/// same folder as a protected place under another name (a bind mount, a linked `~/.ssh`), the
/// path is judged by the name that it has there.
///
/// `item` is what `path` itself is: on a second look something else could stand there.
std::optional<std::string> aliasRefusal(
    const std::string& path, const std::optional<FileIdentity>& item) {
    struct Ancestor {
        std::string_view path;
        FileIdentity identity;
    };
    std::vector<Ancestor> ancestors;
    for (std::string_view ancestor = path; ancestor != "/"; ancestor = Path::parent(ancestor)) {
        // The last component of the item itself is judged as it stands, link or not.
        const bool isItem = ancestor.size() == path.size();
        const auto found = isItem ? item : targetIdentity(std::string{ancestor});
        if (found) {
            ancestors.push_back({ancestor, *found});
        }
    }
    for (const std::string& place : protectedPlaces()) {
        const std::optional<FileIdentity> placeIdentity = targetIdentity(place);
        for (const Ancestor& ancestor : ancestors) {
            if (placeIdentity != ancestor.identity || ancestor.path == place) {
                continue;
            }
            const std::string_view rest = std::string_view{path}.substr(ancestor.path.size());
            if (auto reason = check(Path::standardized(place + std::string{rest}))) {
                return reason;
            }
        }
    }
    return std::nullopt;
}

/// The verdict on the names that `path` has on other mounts of its volume: where only something
/// inside a protected place is mounted elsewhere, no folder above it is that place. A name that the
/// tables merely don't own says nothing: a home folder may well be mounted from such a one.
std::optional<std::string> mountRefusal(
    const std::string& path, const std::optional<FileIdentity>& item) {
    for (const std::string& name : Platform::otherNames(path)) {
        auto reason = check(name);
        reason = reason ? reason : aliasRefusal(name, item);
        if (reason && reason != kOutside && reason != kWholeVolume) {
            return reason;
        }
    }
    return std::nullopt;
}

/// That of what the system finds by `path` itself: behind a trailing slash it would follow a link.
std::optional<FileIdentity> identityAsGiven(std::string_view path) {
    return FileIdentity::of(std::string{path.substr(0, path.find_last_not_of('/') + 1)});
}

std::optional<std::string> refusalOf(
    const Verdict& verdict, const std::optional<FileIdentity>& item) {
    if (auto reason = check(verdict.canonical)) {
        return reason;
    }
    if (verdict.resolved != verdict.canonical) {
        if (auto reason = check(verdict.resolved)) {
            return reason;
        }
    }
    auto reason = aliasRefusal(verdict.resolved, item);
    return reason ? reason : mountRefusal(verdict.resolved, item);
}

}  // namespace

std::string canonical(std::string_view path) {
    return Platform::withoutPrivatePrefix(Path::standardized(path));
}

Verdict judge(std::string_view path) {
    Verdict verdict;
    verdict.canonical = canonical(path);
    verdict.resolved = resolvedParent(verdict.canonical);
    const auto item = FileIdentity::of(verdict.resolved);
    if (path == verdict.canonical || identityAsGiven(path) == item) {
        verdict.identity = item;
    }
    verdict.refusal = refusalOf(verdict, item);
    return verdict;
}

}  // namespace Brimlo::Safety
