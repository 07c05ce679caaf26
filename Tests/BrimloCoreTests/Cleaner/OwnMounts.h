#pragma once

#include "BrimloCoreTests/Cleaner/Child.h"

#include <functional>

#include <sched.h>
#include <sys/mount.h>

namespace Brimlo::Testing {

/// Runs the rest of a test where mounts can be made that nobody else sees. They end with the child
/// process, so that nothing is mounted any more when the home folder is removed.
inline void withOwnMounts(const std::function<void()>& body) {
    inChild([&] {
        if (unshare(CLONE_NEWNS) != 0 ||
            mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
            GTEST_SKIP() << "a mount namespace of its own is not permitted here";
        }
        body();
    });
}

}  // namespace Brimlo::Testing
