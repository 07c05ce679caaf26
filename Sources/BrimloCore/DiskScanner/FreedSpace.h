#pragma once

#include "BrimloCore/Models/Suggestion.h"
#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Platform/FileIdentity.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace Brimlo {

/// A hard-linked file of which some names lie in a measured place and others outside.
struct SharedFile {
    Platform::FileIdentity identity;
    std::int64_t bytes = 0;   ///< Allocated.
    std::uint32_t here = 1;   ///< Names in the place.
    std::uint32_t names = 0;  ///< Names in all.
};

/// The space of a place: what it takes, and what of that stays when only the place goes.
struct SpaceUse {
    std::int64_t bytes = 0;  ///< Allocated; a file with several names counts once.
    SharedFiles shared = nullptr;

    /// The space of one file, symlink or other entry that is no folder.
    [[nodiscard]] static SpaceUse of(const Platform::EntryStatus& status);

    /// The bytes that are free once the place alone is gone.
    [[nodiscard]] std::int64_t freedAlone() const;
};

/// The space of an item, which has a size and what of it is shared.
template <typename Item>
[[nodiscard]] SpaceUse useOf(const Item& item) {
    return {.bytes = item.size, .shared = item.shared};
}

/// The bytes that are free once a set of places is gone, places inside each other excepted: a
/// hard-linked file counts when all its names are in the set. Exact for hard links; extents that
/// files share (clones) and snapshots are not looked at. Each step takes as long as the place has
/// shared files.
class FreedSpace {
public:
    /// The space freed by all items.
    template <typename Items>
    [[nodiscard]] static FreedSpace of(const Items& items) {
        FreedSpace freed;
        for (const auto& item : items) {
            freed.add(useOf(item));
        }
        return freed;
    }

    void add(const SpaceUse& use);
    /// Takes back an `add`.
    void remove(const SpaceUse& use);

    [[nodiscard]] std::int64_t bytes() const { return bytes_; }

    bool operator==(const FreedSpace&) const = default;

private:
    std::int64_t bytes_ = 0;
    std::unordered_map<Platform::FileIdentity, std::uint32_t> names_;  ///< In the set; none is 0.
};

/// "frees 3 MB" for what takes more than that; empty where all of it is freed.
[[nodiscard]] std::string freesWords(std::int64_t taken, std::int64_t freed);

}  // namespace Brimlo
