#pragma once

#include "BrimloCore/Platform/EntryStatus.h"

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <unordered_set>

namespace Brimlo {

/// The hard-linked files that a walk has met, so that it counts each once. Any thread.
class LinkedFiles {
public:
    /// Whether this is the first link of its file that the walk meets. A file with one link is not
    /// remembered.
    [[nodiscard]] bool isFirst(const Platform::EntryStatus& status) {
        if (status.linkCount < 2) {
            return true;
        }
        const std::lock_guard guard{lock_};
        return seen_.insert({status.device, status.fileID}).second;
    }

private:
    struct Key {
        std::uint64_t device = 0;
        std::uint64_t fileID = 0;

        bool operator==(const Key&) const = default;
    };
    struct Hash {
        std::size_t operator()(const Key& key) const {
            constexpr std::uint64_t kOddConstant = 0x9E3779B97F4A7C15;
            return static_cast<std::size_t>((key.device * kOddConstant) ^ key.fileID);
        }
    };

    std::mutex lock_;
    std::unordered_set<Key, Hash> seen_;  // guarded by lock_
};

}  // namespace Brimlo
