#include "BrimloCore/SuggestionEngine/OverlapResolver.h"

#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

// The order decides everything. Shorter places come first, so a folder comes before its contents.
// Each candidate then looks up its own place and those above it, and meets the nearest that was
// kept, A:
//
//     ~/Library/Caches/Foo        review    kept
//     ~/Library/Caches/Foo/blobs  safe      safer than A: A is evicted, this one is kept
//     ~/Library/Caches/Foo/more   review    A is gone, so this one is kept as well
//
// A candidate dropped in favour of A does not come back when A is evicted: giving up a part of a
// broad, risky folder offers less, never more.

namespace Brimlo::SuggestionEngine {

namespace {

/// Gives each place on disk one name, whichever path leads to it: a folder has the name under which
/// it was first met, any other entry that of its folder and its own. So a file with two hard links
/// is two entries.
class PlaceNames {
public:
    /// The name of the entry of a candidate: a symlink's own, not its target's.
    std::string of(const Candidate& candidate) {
        return of(candidate.item.path, candidate.isFolder);
    }

    std::string of(std::string_view entry, bool mayBeFolder) {
        const std::string standard = Path::standardized(entry);
        const std::string_view parent = Path::parent(standard);
        auto folder = realFolders_.find(parent);
        if (folder == realFolders_.end()) {
            folder = realFolders_.emplace(parent, Path::resolved(parent)).first;
        }
        const std::string& real = folder->second;
        const std::string_view name = Path::name(standard);
        const std::string path = Path::join(real, name);
        return mayBeFolder && isFolder(path) ? folderName(path)
                                             : Path::join(folderName(real), name);
    }

private:
    static bool isFolder(const std::string& path) {
        const auto status = Platform::entryStatus(path.c_str());
        return status && status->kind == Platform::EntryStatus::Kind::directory;
    }

    /// `path` is without symlinks.
    const std::string& folderName(const std::string& path) {
        if (const auto known = names_.find(path); known != names_.end()) {
            return known->second;
        }
        std::string name =
            path == "/" ? path
                        : Path::join(folderName(std::string{Path::parent(path)}), Path::name(path));
        if (const auto identity = Platform::FileIdentity::of(path)) {
            name = byIdentity_.try_emplace(*identity, std::move(name)).first->second;
        }
        return names_.emplace(path, std::move(name)).first->second;
    }

    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };
    using Texts = std::unordered_map<std::string, std::string, Hash, std::equal_to<>>;
    Texts names_;        ///< Of folders, by path without symlinks.
    Texts realFolders_;  ///< Paths without symlinks, by path.
    std::unordered_map<Platform::FileIdentity, std::string> byIdentity_;  ///< First names.
};

struct Placed {
    std::string place;
    Candidate candidate;
};

/// The kept candidates, by place, in the order of their acceptance.
class Kept {
public:
    explicit Kept(std::size_t mostCount) {
        places_.reserve(mostCount);
        accepted_.reserve(mostCount);
    }

    /// The kept candidate at the place `path` or the nearest above it, or nullptr.
    [[nodiscard]] const Placed* covering(std::string_view path) const {
        while (!path.empty() && path != "/") {
            if (const auto found = places_.find(path); found != places_.end()) {
                return &accepted_[found->second];
            }
            const std::size_t slash = path.rfind('/');
            path = path.substr(0, slash == std::string_view::npos ? 0 : slash);
        }
        return nullptr;
    }

    void accept(Placed placed) {
        places_.emplace(placed.place, accepted_.size());
        accepted_.push_back(std::move(placed));
        isEvicted_.push_back(false);
    }

    void evict(const Placed& placed) {
        const auto place = places_.find(placed.place);
        isEvicted_[place->second] = true;
        places_.erase(place);
    }

    /// Those that stayed and that `isOffered` wants.
    [[nodiscard]] std::vector<Candidate> result(const auto& isOffered) && {
        std::vector<Candidate> result;
        for (std::size_t i = 0; i < accepted_.size(); ++i) {
            if (!isEvicted_[i] && isOffered(accepted_[i])) {
                result.push_back(std::move(accepted_[i].candidate));
            }
        }
        return result;
    }

private:
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };
    std::unordered_map<std::string, std::size_t, Hash, std::equal_to<>> places_;
    std::vector<Placed> accepted_;
    std::vector<bool> isEvicted_;
};

/// Places that touch some paths: those of the paths, what lies in them and what holds them.
class Surroundings {
public:
    Surroundings(const std::vector<std::string>& paths, PlaceNames& names) {
        for (const std::string& path : paths) {
            add(names.of(path, true));
            add(names.of(Path::resolved(path), true));  // A symlink stands for its target, too.
        }
    }

    [[nodiscard]] bool touch(std::string_view place) const {
        if (above_.contains(place)) {
            return true;
        }
        while (!place.empty() && !places_.contains(place)) {
            place = withoutName(place);
        }
        return !place.empty();
    }

private:
    static std::string_view withoutName(std::string_view place) {
        const std::size_t slash = place.rfind('/');
        return place.substr(0, slash == std::string_view::npos ? 0 : slash);
    }

    void add(const std::string& place) {
        for (auto up = withoutName(place); !up.empty(); up = withoutName(up)) {
            above_.emplace(up);
        }
        places_.insert(place);
    }

    std::set<std::string, std::less<>> places_;
    std::set<std::string, std::less<>> above_;
};

/// The candidates at their places: shorter places first, then specific rules, then safer ones.
std::vector<Placed> sorted(
    std::vector<Candidate> candidates,
    const std::vector<PendingSuggestion>& pending,
    PlaceNames& names) {
    // The index is part of the key, so equal candidates keep their order.
    using Key = std::tuple<std::size_t, bool, Risk, std::size_t>;
    std::vector<Key> keys;
    keys.reserve(candidates.size());
    std::vector<std::string> places;
    places.reserve(candidates.size());
    for (const Candidate& candidate : candidates) {
        places.push_back(names.of(candidate));
        const PendingSuggestion& owner = pending[candidate.suggestion];
        keys.emplace_back(
            Text::characterCount(places.back()),
            owner.isCatchAll,
            owner.suggestion.risk,
            keys.size());
    }
    std::ranges::sort(keys);
    std::vector<Placed> result;
    result.reserve(keys.size());
    for (const Key& key : keys) {
        const std::size_t index = std::get<3>(key);
        result.push_back({std::move(places[index]), std::move(candidates[index])});
    }
    return result;
}

}  // namespace

std::vector<Candidate> resolveOverlaps(
    std::vector<Candidate> candidates,
    const std::vector<PendingSuggestion>& pending,
    const Spared& spared) {
    PlaceNames names;
    const auto riskOf = [&](const Placed& placed) {
        return pending[placed.candidate.suggestion].suggestion.risk;
    };
    Kept kept{candidates.size()};
    for (Placed& placed : sorted(std::move(candidates), pending, names)) {
        const Placed* broader = kept.covering(placed.place);
        if (broader == nullptr) {
            kept.accept(std::move(placed));
        } else if (
            !pending[placed.candidate.suggestion].isCatchAll && riskOf(placed) < riskOf(*broader)) {
            kept.evict(*broader);
            kept.accept(std::move(placed));
        }
    }
    const Surroundings always{spared.always, names};
    const Surroundings fromCatchAlls{spared.fromCatchAlls, names};
    return std::move(kept).result([&](const Placed& placed) {
        const bool yields = pending[placed.candidate.suggestion].isCatchAll;
        return !always.touch(placed.place) && !(yields && fromCatchAlls.touch(placed.place));
    });
}

}  // namespace Brimlo::SuggestionEngine
