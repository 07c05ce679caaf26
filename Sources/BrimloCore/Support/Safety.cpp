#include "BrimloCore/Support/Safety.h"

#include "BrimloCore/Platform/OtherNames.h"
#include "BrimloCore/Platform/Posix/IdentityOf.h"
#include "BrimloCore/Platform/PrivatePrefix.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/RealPath.h"
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

namespace Brimlo::Safety {

namespace {

using Platform::FileIdentity;
using Texts = std::vector<std::string>;

// In the tables "~" stands for the home folder as it is at the moment of the check, as it is
// spelled and with its links resolved: on some systems "/home" itself is a link.

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

constexpr std::string_view kOutside = "outside user-owned locations";
constexpr std::string_view kWholeVolume = "whole volume";
constexpr std::string_view kLinked = "reached through a link into a protected location";

bool looksLikeASecret(std::string_view lowerName) {
    return secretNames().contains(lowerName) || lowerName.ends_with(".p12") ||
           lowerName.ends_with(".keychain-db") || lowerName.starts_with("id_");
}

bool isWholeVolume(std::string_view path) {
    constexpr std::string_view kVolumes = "/Volumes/";
    return path.starts_with(kVolumes) && !path.substr(kVolumes.size()).contains('/');
}

/// Whether the system would look at a path of this length. A longer one is judged by its text.
bool canBeLookedUp(std::string_view path) {
    return path.size() < PATH_MAX;
}

/// That of what a path leads to, links followed.
std::optional<FileIdentity> targetIdentity(std::string_view path) {
    struct stat status {};
    if (!canBeLookedUp(path) || stat(std::string{path}.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return Platform::identityOf(status);
}

/// That of what the system finds by `path` itself: behind a trailing slash it would follow a link.
std::optional<FileIdentity> identityAsGiven(std::string_view path) {
    return FileIdentity::of(std::string{path.substr(0, path.find_last_not_of('/') + 1)});
}

/// `path`, in canonical form, with the links of its parent resolved as far as they exist.
std::string resolvedParent(const std::string& path) {
    return path == "/" ? path : Path::join(RealPath::of(Path::parent(path)), Path::name(path));
}

bool isIn(const Texts& places, std::string_view path) {
    return std::ranges::any_of(
        places, [&](const std::string& place) { return Path::below(place, path).has_value(); });
}

/// The tables with the home folder of one moment in the place of "~".
///
/// All texts are decomposed, so that equality and prefixes are those of Unicode text: composed
/// and decomposed spellings of a character are the same.
class Gate {
public:
    Gate() {
        homes_.push_back(StoragePaths::home());
        if (std::string real = RealPath::of(homes_.front()); real != homes_.front()) {
            homes_.push_back(std::move(real));
        }
        protectedExact_ = lowered(kProtectedExact);
        neverTouch_ = lowered(kNeverTouchPrefixes);
        carveOuts_ = lowered(kCarveOuts);
        agentFolders_ = lowered(kAgentFolders);
        const std::array own{StoragePaths::kSupport};
        ownData_ = lowered(own);
        ownData_.push_back(Text::lowered(RealPath::of(StoragePaths::expandTilde(own.front()))));
        for (const std::string& root : expanded(kUserOwnedRoots)) {
            if (root != "/") {  // A home that is the whole disk makes nobody its owner.
                userOwned_.push_back(Text::decomposed(root));
            }
        }
        const auto add = [&](const auto& rows) {
            for (const std::string_view row : rows) {
                places_.push_back(StoragePaths::expandTilde(row));
            }
        };
        add(kProtectedExact);
        add(kNeverTouchPrefixes);
        add(kAgentFolders);
        add(own);
        std::ranges::sort(places_);
        places_.erase(std::ranges::unique(places_).begin(), places_.end());
    }

    [[nodiscard]] std::optional<std::string> refusal(
        const Verdict& verdict, const std::optional<FileIdentity>& item) const {
        auto reason = check(verdict.canonical);
        if (!reason && verdict.resolved != verdict.canonical) {
            reason = check(verdict.resolved);
        }
        reason = reason ? reason : aliasRefusal(verdict.resolved, item);
        return reason ? reason : mountRefusal(verdict.resolved, item);
    }

    /// What is to be said of a rule that names `verdict.canonical` where links lead to another
    /// folder than the one that the rule's author had in mind.
    [[nodiscard]] std::optional<std::string> linkRefusal(const Verdict& verdict) const {
        const std::string_view named = Path::parent(verdict.canonical);
        const std::string_view reached = Path::parent(verdict.resolved);
        if (reached == named || reached == inRealHome(named)) {
            return std::nullopt;
        }
        const auto reason = check(reached);
        const bool isNoRoot = (reason && reason != kWholeVolume) || holdsOthers(reached, named);
        return isNoRoot ? std::optional{std::string{kLinked}} : std::nullopt;
    }

private:
    /// The rows with the home in place of "~", in each spelling it has.
    template <typename Rows>
    [[nodiscard]] Texts expanded(const Rows& rows) const {
        Texts result;
        for (const std::string_view row : rows) {
            if (!row.starts_with('~')) {
                result.emplace_back(row);
                continue;
            }
            for (const std::string& home : homes_) {
                result.push_back(home + std::string{row.substr(1)});
            }
        }
        return result;
    }

    template <typename Rows>
    [[nodiscard]] Texts lowered(const Rows& rows) const {
        Texts result = expanded(rows);
        std::ranges::transform(result, result.begin(), Text::lowered);
        return result;
    }

    /// What the tables say of a text in canonical form, without a look at the disk.
    [[nodiscard]] std::optional<std::string> check(std::string_view path) const {
        const std::string exact = Text::decomposed(path);
        const std::string lower = Text::lowered(path);
        const std::string_view name = Path::name(lower);
        if (std::ranges::find(protectedExact_, lower) != protectedExact_.end()) {
            return "protected location";
        }
        if (!isIn(carveOuts_, lower) && isIn(neverTouch_, lower)) {
            return "holds credentials, settings or agent memory";
        }
        for (const std::string& folder : agentFolders_) {
            const std::optional<std::string_view> rest = Path::below(folder, lower);
            const auto startsName = [&](std::string_view text) { return name.starts_with(text); };
            if (rest && !rest->empty() && !rest->contains('/') &&
                std::ranges::any_of(kAgentFileBeginnings, startsName)) {
                return "agent settings or credentials";
            }
        }
        if (looksLikeASecret(name)) {
            return "looks like a secret";
        }
        // The system would cut a path at a NUL and so act on another one.
        if (!Path::isUsable(path) || !isIn(userOwned_, exact)) {
            return std::string{kOutside};
        }
        if (isWholeVolume(exact)) {
            return std::string{kWholeVolume};
        }
        const auto isBelow = [&](const std::string& own) {
            return Path::below(lower, own).has_value();
        };
        if (isIn(ownData_, lower) || std::ranges::any_of(ownData_, isBelow)) {
            return "holds Brimlo's own data";
        }
        return std::nullopt;
    }

    /// The verdict on the other names of `path`: where one of the folders above it, or itself, is
    /// the same folder as a protected place under another name (a bind mount, a linked `~/.ssh`),
    /// the path is judged by the name that it has there.
    ///
    /// `item` is what `path` itself is: on a second look something else could stand there.
    [[nodiscard]] std::optional<std::string> aliasRefusal(
        const std::string& path, const std::optional<FileIdentity>& item) const {
        struct Ancestor {
            std::string_view path;
            FileIdentity identity;
        };
        std::vector<Ancestor> ancestors;
        for (std::string_view ancestor = path; ancestor != "/"; ancestor = Path::parent(ancestor)) {
            // The last component of the item itself is judged as it stands, link or not.
            const bool isItem = ancestor.size() == path.size();
            if (const auto found = isItem ? item : targetIdentity(ancestor)) {
                ancestors.push_back({ancestor, *found});
            }
        }
        for (const std::string& place : places_) {
            const std::optional<FileIdentity> placeIdentity = targetIdentity(place);
            for (const Ancestor& ancestor : ancestors) {
                if (placeIdentity != ancestor.identity || ancestor.path == place) {
                    continue;
                }
                const std::string_view rest = std::string_view{path}.substr(ancestor.path.size());
                auto reason = check(Path::standardized(place + std::string{rest}));
                // That "/home" is also called "/Users" makes nothing in the home a stranger's.
                const bool isHomesOwn = reason == kOutside && isAtOrAboveHome(ancestor.path);
                if (reason && !isHomesOwn) {
                    return reason;
                }
            }
        }
        return std::nullopt;
    }

    /// The verdict on the names that `path` has on other mounts of its volume: where only something
    /// inside a protected place is mounted elsewhere, no folder above it is that place. A name that
    /// the tables merely don't own says nothing: a home folder may well be mounted from such a one.
    [[nodiscard]] std::optional<std::string> mountRefusal(
        const std::string& path, const std::optional<FileIdentity>& item) const {
        for (const std::string& name : Platform::otherNames(path)) {
            auto reason = check(name);
            reason = reason ? reason : aliasRefusal(name, item);
            if (reason && reason != kOutside && reason != kWholeVolume) {
                return reason;
            }
        }
        return std::nullopt;
    }

    [[nodiscard]] bool isAtOrAboveHome(std::string_view path) const {
        return std::ranges::any_of(
            homes_, [&](const std::string& home) { return Path::below(path, home).has_value(); });
    }

    /// `path` with the home's links resolved, if it lies at or below the home.
    [[nodiscard]] std::string inRealHome(std::string_view path) const {
        const auto rest = Path::below(homes_.front(), path);
        return rest ? Path::standardized(homes_.back() + "/" + std::string{*rest})
                    : std::string{path};
    }

    /// Whether `folder` is or holds a protected place, by its name, by its links, or by being the
    /// same folder. Those at or below `named` don't count: who names them knows of them.
    [[nodiscard]] bool holdsOthers(std::string_view folder, std::string_view named) const {
        const Texts here{Text::lowered(folder)};
        const Texts known{Text::lowered(named)};
        const auto identity = targetIdentity(folder);
        return std::ranges::any_of(places_, [&](const std::string& place) {
            const std::string name = Text::lowered(place);
            return !isIn(known, name) &&
                   (isIn(here, name) || isIn(here, Text::lowered(RealPath::of(place))) ||
                    (identity && identity == targetIdentity(place)));
        });
    }

    Texts homes_;  ///< As it is spelled, and resolved where that differs.
    // Lower-cased.
    Texts protectedExact_;
    Texts neverTouch_;
    Texts carveOuts_;
    Texts agentFolders_;
    Texts ownData_;
    Texts userOwned_;  ///< In the letters as they stand.
    /// All places that the tables protect with what lies in them or around them, without repeats.
    Texts places_;
};

}  // namespace

std::string canonical(std::string_view path) {
    return Platform::withoutPrivatePrefix(Path::standardized(path));
}

Verdict judge(std::string_view path, Chosen chosen) {
    const Gate gate;
    Verdict verdict;
    verdict.canonical = canonical(path);
    verdict.resolved = resolvedParent(verdict.canonical);
    const auto item = FileIdentity::of(verdict.resolved);
    if (path == verdict.canonical || identityAsGiven(path) == item) {
        verdict.identity = item;
    }
    verdict.refusal = gate.refusal(verdict, item);
    if (!verdict.refusal && chosen == Chosen::byRule) {
        verdict.refusal = gate.linkRefusal(verdict);
    }
    return verdict;
}

}  // namespace Brimlo::Safety
