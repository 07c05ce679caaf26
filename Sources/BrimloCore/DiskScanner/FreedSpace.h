#pragma once

#include "BrimloCore/Models/Suggestion.h"
#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/Platform/UnsureBlocks.h"

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Brimlo {

/// A hard-linked file of which some names lie in a measured place and others outside.
struct SharedFile {
    Platform::FileIdentity identity;
    std::int64_t bytes = 0;              ///< Allocated.
    std::uint32_t here = 1;              ///< Names in the place.
    std::uint32_t names = 0;             ///< Names in all.
    Platform::UnsureBlocks unsure = {};  ///< What of it may stay when all names are gone.
};

/// What of a place may stay taken when the place goes.
struct SharedSpace {
    std::vector<SharedFile> files;
    Platform::UnsureBlocks unsure = {};  ///< Of its other files. No two ranges touch.
};

/// The space of a place: what it takes, and what of that may stay when only the place goes.
struct SpaceUse {
    std::int64_t size = 0;  ///< Allocated bytes; a file with several names counts once.
    SharedFiles shared = nullptr;

    /// The space of a file, symlink or other entry with this status that is no folder.
    [[nodiscard]] static SpaceUse of(const std::string& path, const Platform::EntryStatus& status);
};

/// The bytes that are free once a set of places is gone, places inside each other excepted: at
/// least and at most. A hard-linked file counts when all its names are in the set. Blocks that
/// several files share count at most once, and not for sure: a file or a snapshot outside may share
/// them, too. Each step takes as long as the place has such files and pieces.
class FreedSpace {
public:
    /// The space freed by all items; each has a size and what of it is shared.
    template <typename Items>
    [[nodiscard]] static FreedSpace of(const Items& items) {
        FreedSpace freed;
        for (const auto& item : items) {
            freed.add(item);
        }
        return freed;
    }
    /// The space freed by this item alone.
    template <typename Item>
    [[nodiscard]] static FreedSpace alone(const Item& item) {
        FreedSpace freed;
        freed.add(item);
        return freed;
    }

    template <typename Item>
    void add(const Item& item) {
        step({.size = item.size, .shared = item.shared}, 1);
    }
    /// Takes back an `add`.
    template <typename Item>
    void remove(const Item& item) {
        step({.size = item.size, .shared = item.shared}, -1);
    }

    [[nodiscard]] std::int64_t atLeast() const;
    [[nodiscard]] std::int64_t atMost() const;

    /// "frees 3 MB" where the set takes more than that, "frees at least 3 MB" or "may free nothing"
    /// where it may free more; empty where all of it is freed.
    [[nodiscard]] std::string words() const;

    /// Why, where `words` is not empty: "the rest has other names that stay", "the rest may share
    /// its blocks with other files, or be compressed", or both.
    [[nodiscard]] std::string reason() const;

    bool operator==(const FreedSpace&) const = default;

private:
    void step(const SpaceUse& use, int sign);
    void count(const Platform::UnsureBlocks& unsure, int sign);
    void count(const Platform::BlockRange& range, int sign);

    std::int64_t taken_ = 0;
    std::int64_t named_ = 0;     ///< Of `taken_`, the files with names outside.
    std::int64_t unsure_ = 0;    ///< Of `taken_`, what may stay although all names go.
    std::int64_t unplaced_ = 0;  ///< Of `unsure_`, what may be freed and has no known place.
    std::int64_t covered_ = 0;   ///< The bytes of all ranges, each once.
    std::unordered_map<Platform::FileIdentity, std::uint32_t> names_;  ///< In the set; none is 0.
    /// From each device and position on, how many places hold the blocks. No two in a row are
    /// equal.
    std::map<std::pair<std::uint64_t, std::uint64_t>, int> holders_;
};

}  // namespace Brimlo
