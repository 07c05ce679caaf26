#pragma once

#include "BrimloCore/DiskScanner/ScanControl.h"

#include <condition_variable>
#include <mutex>
#include <thread>

namespace Brimlo {

/// Shows on a terminal how far a walk is, from a thread of its own, as long as it exists.
class WalkProgress {
public:
    explicit WalkProgress(const ScanControl& control);
    WalkProgress(const WalkProgress&) = delete;
    WalkProgress& operator=(const WalkProgress&) = delete;
    WalkProgress(WalkProgress&&) = delete;
    WalkProgress& operator=(WalkProgress&&) = delete;
    ~WalkProgress();

private:
    void show();

    const ScanControl& control_;
    std::mutex lock_;
    std::condition_variable ended_;
    bool hasEnded_ = false;  // guarded by lock_
    std::thread thread_;
};

}  // namespace Brimlo
