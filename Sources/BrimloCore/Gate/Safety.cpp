#include "BrimloCore/Gate/Safety.h"

#include "BrimloCore/Gate/SafetyTables.h"
#include "BrimloCore/Platform/Posix/Stat.h"
#include "BrimloCore/Platform/SystemPaths.h"
#include "BrimloCore/Platform/Volume.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <climits>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <sys/stat.h>

namespace Brimlo::Safety {

namespace {

using Platform::FileIdentity;
using Landmark = SafetyTables::Landmark;

constexpr std::string_view kOutside = "outside user-owned locations";
constexpr std::string_view kWholeVolume = "whole volume";
constexpr std::string_view kLinked = "reached through a link into a protected location";

/// Whether the path is short enough for a system call. A longer one is judged by its text.
bool canBeLookedUp(std::string_view path) {
    return path.size() < PATH_MAX;
}

/// The identity of the entry at `path`, symlinks followed.
std::optional<FileIdentity> targetIdentity(std::string_view path) {
    struct stat status{};
    if (!canBeLookedUp(path) || stat(std::string{path}.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return Platform::identityOf(status);
}

std::optional<FileIdentity> identityOf(const std::optional<Platform::EntryStatus>& entry) {
    return entry ? std::optional{entry->identity} : std::nullopt;
}

/// The identity of the entry at `path` as spelled. Without its trailing slash, which would make the
/// system follow a symlink.
std::optional<FileIdentity> identityAsGiven(std::string_view path) {
    return FileIdentity::of(std::string{path.substr(0, path.find_last_not_of('/') + 1)});
}

}  // namespace

/// The tables, and the places of the tables that exist on disk, which are looked up when first
/// needed.
class Gate::Look {
public:
    /// A protected place, which a folder is under another name.
    struct Alias {
        std::size_t length = 0;  ///< Of the folder's path.
        const Landmark* landmark = nullptr;
    };

    /// A folder that paths to judge are in.
    struct Folder {
        std::string resolved;        ///< Its path without symlinks.
        std::vector<Alias> aliases;  ///< What it and those above it are, the nearest first.
    };

    [[nodiscard]] Folder look(std::string_view canonical) {
        Folder folder{.resolved = Path::resolved(canonical), .aliases = {}};
        folder.aliases = aliasesOf(folder.resolved);
        return folder;
    }

    /// As it was when it was first asked for.
    [[nodiscard]] const Folder& remembered(const std::string& canonical) {
        const auto known = folders_.find(canonical);
        return known != folders_.end() ? known->second
                                       : folders_.emplace(canonical, look(canonical)).first->second;
    }

    /// The verdict on `path`, which is `canonical` in that form and lies in `folder`.
    [[nodiscard]] Verdict judge(
        std::string_view path, std::string canonical, const Folder& folder, Chosen chosen) {
        Verdict verdict;
        verdict.canonical = std::move(canonical);
        verdict.resolved = verdict.canonical == "/"
                               ? verdict.canonical
                               : Path::join(folder.resolved, Path::name(verdict.canonical));
        const auto entry = Platform::entryStatus(verdict.resolved.c_str());
        const auto item = identityOf(entry);
        if (path == verdict.canonical || identityAsGiven(path) == item) {
            verdict.entry = entry;
        }
        verdict.refusal = refusal(verdict, folder, item);
        if (!verdict.refusal && chosen == Chosen::byRule) {
            verdict.refusal = linkRefusal(verdict);
        }
        return verdict;
    }

private:
    [[nodiscard]] std::optional<std::string> refusal(
        const Verdict& verdict, const Folder& folder, const std::optional<FileIdentity>& item) {
        auto reason = tables_.checkAsAWhole(verdict.canonical);
        if (!reason && verdict.resolved != verdict.canonical) {
            reason = tables_.checkAsAWhole(verdict.resolved);
        }
        reason = reason ? reason : aliasRefusal(verdict.resolved, item, folder.aliases);
        reason = reason ? reason : mountRefusal(verdict.resolved, item);
        return reason ? reason : holdsRefusal(verdict.resolved);
    }

    /// The reason to refuse a rule's path because symlinks lead it to a folder that the rule's
    /// author did not mean.
    [[nodiscard]] std::optional<std::string> linkRefusal(const Verdict& verdict) {
        const std::string_view named = Path::parent(verdict.canonical);
        const std::string_view reached = Path::parent(verdict.resolved);
        if (reached == named || reached == inRealHome(named)) {
            return std::nullopt;
        }
        const auto reason = tables_.check(reached);
        const bool isNoRoot = (reason && reason != kWholeVolume) || holdsOthers(reached, named);
        return isNoRoot ? std::optional{std::string{kLinked}} : std::nullopt;
    }

    /// The verdict on the other names of `path`: when `path` or a folder above it is a protected
    /// place under another name (a bind mount, a linked `~/.ssh`), judges the path by the name it
    /// has there.
    ///
    /// `item` is the identity of the entry at `path`: a second lookup could find another entry. Its
    /// own last component is not followed, even when it is a symlink. `above` are the aliases of
    /// its folder.
    [[nodiscard]] std::optional<std::string> aliasRefusal(
        const std::string& path,
        const std::optional<FileIdentity>& item,
        const std::vector<Alias>& above) {
        std::vector<Alias> aliases;
        addAliases(path, item, aliases);
        aliases.insert(aliases.end(), above.begin(), above.end());
        for (const auto& [length, landmark] : aliases) {
            auto reason =
                tables_.checkAsAWhole(Path::standardized(landmark->path + path.substr(length)));
            // When "/home" is also called "/Users", the home still belongs to the user.
            const std::string_view ancestor = std::string_view{path}.substr(0, length);
            const bool isHomesOwn = reason == kOutside && isAtOrAboveHome(ancestor);
            if (reason && !isHomesOwn) {
                return reason;
            }
        }
        return std::nullopt;
    }

    /// Adds the landmarks that the entry at `path` is under another name.
    void addAliases(
        std::string_view path,
        const std::optional<FileIdentity>& identity,
        std::vector<Alias>& aliases) {
        for (const Landmark& landmark : landmarks()) {
            if (identity == landmark.identity && path != landmark.path) {
                aliases.push_back({.length = path.size(), .landmark = &landmark});
            }
        }
    }

    /// Those of a folder and of the folders above it.
    [[nodiscard]] std::vector<Alias> aliasesOf(std::string_view folder) {
        std::vector<Alias> aliases;
        for (; folder != "/"; folder = Path::parent(folder)) {
            addAliases(folder, targetIdentity(folder), aliases);
        }
        return aliases;
    }

    /// The verdict on the names of `path` on other mounts of its volume: when only a part of a
    /// protected place is mounted elsewhere, no folder above it has that place's identity. A name
    /// outside user-owned locations is no reason: a home folder may be mounted from there.
    [[nodiscard]] std::optional<std::string> mountRefusal(
        const std::string& path, const std::optional<FileIdentity>& item) {
        for (const std::string& name : mounts().of(path)) {
            auto reason = tables_.checkAsAWhole(name);
            reason = reason ? reason : aliasRefusal(name, item, aliasesOf(Path::parent(name)));
            if (reason && reason != kOutside && reason != kWholeVolume) {
                return reason;
            }
        }
        return std::nullopt;
    }

    /// The verdict on a folder that contains the target of a protected place which is a symlink or
    /// a mount.
    [[nodiscard]] std::optional<std::string> holdsRefusal(const std::string& path) {
        const std::string folder = Text::folded(path);
        landmarks();
        for (const auto& [place, reason] : elsewhere_) {
            if (Path::below(folder, place)) {
                return std::string{reason};
            }
        }
        return std::nullopt;
    }

    const Platform::OtherNames& mounts() { return mounts_ ? *mounts_ : mounts_.emplace(); }

    const std::vector<Landmark>& landmarks() {
        if (landmarks_.empty()) {
            landmarks_ = tables_.landmarks();
            for (const Landmark& landmark : landmarks_) {
                if (landmark.isBehindALink) {
                    elsewhere_.emplace_back(Text::folded(landmark.real), landmark.reason);
                }
                for (const std::string& name : mounts().of(landmark.real)) {
                    elsewhere_.emplace_back(Text::folded(name), landmark.reason);
                }
            }
        }
        return landmarks_;
    }

    [[nodiscard]] bool isAtOrAboveHome(std::string_view path) const {
        return std::ranges::any_of(tables_.homes(), [&](const std::string& home) {
            return Path::below(path, home).has_value();
        });
    }

    /// `path` with the home's symlinks resolved, if it is at or below the home.
    [[nodiscard]] std::string inRealHome(std::string_view path) const {
        const auto rest = Path::below(tables_.homes().front(), path);
        return rest ? Path::standardized(tables_.homes().back() + "/" + std::string{*rest})
                    : std::string{path};
    }

    /// Whether `folder`, whose symlinks are resolved, is or holds a protected place. Places at or
    /// below `named` don't count: the rule names them.
    [[nodiscard]] bool holdsOthers(std::string_view folder, std::string_view named) {
        const std::string here = tables_.place(folder);
        const std::string known = tables_.place(named);
        const auto identity = targetIdentity(folder);
        return std::ranges::any_of(landmarks(), [&](const Landmark& landmark) {
            return !Path::below(known, tables_.place(landmark.path)) &&
                   (Path::below(here, tables_.place(landmark.real)) ||
                    identity == landmark.identity);
        });
    }

    SafetyTables tables_;
    std::optional<Platform::OtherNames> mounts_;
    std::vector<Landmark> landmarks_;
    /// The other names of the landmarks, in lower case, each with the landmark's reason.
    std::vector<std::pair<std::string, std::string_view>> elsewhere_;
    std::unordered_map<std::string, Folder> folders_;  ///< By canonical path.
};

std::string canonical(std::string_view path) {
    return Platform::withoutPrivatePrefix(Path::standardized(path));
}

Verdict judge(std::string_view path, Chosen chosen) {
    return Gate{}.judge(path, chosen);
}

Gate::Gate()
    : look_{std::make_unique<Look>()} {}

Gate::Gate(Gate&&) noexcept = default;
Gate& Gate::operator=(Gate&&) noexcept = default;
Gate::~Gate() = default;

Verdict Gate::judge(std::string_view path, Chosen chosen) const {
    std::string whole = canonical(path);
    const Look::Folder& folder = look_->remembered(std::string{Path::parent(whole)});
    return look_->judge(path, std::move(whole), folder, chosen);
}

Verdict Gate::judgeAnew(std::string_view path, Chosen chosen) const {
    std::string whole = canonical(path);
    const Look::Folder folder = look_->look(Path::parent(whole));
    return look_->judge(path, std::move(whole), folder, chosen);
}

}  // namespace Brimlo::Safety
