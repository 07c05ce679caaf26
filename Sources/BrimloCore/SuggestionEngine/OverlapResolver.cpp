#include "BrimloCore/SuggestionEngine/OverlapResolver.h"

#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

// The order decides everything. Shorter paths come first, so a folder is met before what lies in
// it. Each candidate then looks up its own path and those above it, and meets the first that was
// kept, A:
//
//     ~/Library/Caches/Foo        review    kept
//     ~/Library/Caches/Foo/blobs  safe      safer than A: A goes, this is kept
//     ~/Library/Caches/Foo/more   review    its A has gone, so this is kept as well
//
// What had been dropped in favour of A before A went is not brought back: giving up a part of a
// broad, risky folder offers less, never more.

namespace Brimlo::SuggestionEngine {

namespace {

/// The kept candidates, by place, in the order of their acceptance.
class Kept {
public:
    /// The kept candidate at the place `path` or the nearest above it, or nullptr.
    [[nodiscard]] const Candidate* covering(std::string_view path) const {
        while (!path.empty() && path != "/") {
            if (const auto found = places_.find(path); found != places_.end()) {
                return &accepted_[found->second];
            }
            const std::size_t slash = path.rfind('/');
            path = path.substr(0, slash == std::string_view::npos ? 0 : slash);
        }
        return nullptr;
    }

    void accept(const Candidate& candidate) {
        places_.emplace(candidate.place, accepted_.size());
        accepted_.push_back(candidate);
    }

    void evict(const Candidate& candidate) {
        const auto place = places_.find(candidate.place);
        const std::size_t index = place->second;
        places_.erase(place);
        evicted_.resize(accepted_.size());
        evicted_[index] = true;
    }

    [[nodiscard]] std::vector<Candidate> result() && {
        evicted_.resize(accepted_.size());
        std::size_t index = 0;
        std::erase_if(accepted_, [&](const Candidate&) { return evicted_[index++]; });
        return std::move(accepted_);
    }

private:
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };
    std::unordered_map<std::string, std::size_t, Hash, std::equal_to<>> places_;
    std::vector<Candidate> accepted_;
    std::vector<bool> evicted_;
};

std::vector<Candidate> sorted(std::vector<Candidate> candidates, const std::vector<Meta>& metas) {
    using Key = std::tuple<std::size_t, bool, Risk>;
    std::vector<std::pair<Key, std::size_t>> keys;
    keys.reserve(candidates.size());
    for (const Candidate& candidate : candidates) {
        const Meta& meta = metas[candidate.meta];
        const Key key{Text::characterCount(candidate.place), meta.catchAll, meta.risk};
        keys.emplace_back(key, keys.size());
    }
    std::ranges::sort(keys);  // The place is part of the key, so this keeps ties in order.
    std::vector<Candidate> result;
    result.reserve(candidates.size());
    for (const auto& [key, place] : keys) {
        result.push_back(std::move(candidates[place]));
    }
    return result;
}

}  // namespace

std::vector<Candidate> resolveOverlaps(
    std::vector<Candidate> candidates, const std::vector<Meta>& metas) {
    Kept kept;
    for (const Candidate& candidate : sorted(std::move(candidates), metas)) {
        const Meta& meta = metas[candidate.meta];
        const Candidate* broader = kept.covering(candidate.place);
        if (broader == nullptr) {
            kept.accept(candidate);
        } else if (!meta.catchAll && meta.risk < metas[broader->meta].risk) {
            kept.evict(*broader);
            kept.accept(candidate);
        }
    }
    return std::move(kept).result();
}

}  // namespace Brimlo::SuggestionEngine
