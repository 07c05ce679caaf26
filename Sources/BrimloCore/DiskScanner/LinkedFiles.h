#pragma once

#include "BrimloCore/Platform/DirectoryEntry.h"

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
        return seen_.insert(status.identity).second;
    }

private:
    std::mutex lock_;
    std::unordered_set<Platform::FileIdentity> seen_;  // guarded by lock_
};

}  // namespace Brimlo
