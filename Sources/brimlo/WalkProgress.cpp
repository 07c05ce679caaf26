#include "brimlo/WalkProgress.h"

#include "BrimloCore/Platform/Fmt.h"
#include "brimlo/Console.h"

#include <chrono>
#include <string>

namespace Brimlo {

namespace {

constexpr std::chrono::milliseconds kPause{150};

}  // namespace

WalkProgress::WalkProgress(const ScanControl& control)
    : control_{control}
    , thread_{[this] { show(); }} {}

WalkProgress::~WalkProgress() {
    {
        const std::lock_guard guard{lock_};
        hasEnded_ = true;
    }
    ended_.notify_all();
    thread_.join();
}

void WalkProgress::show() {
    Console::Progress line;
    std::unique_lock guard{lock_};
    while (!ended_.wait_for(guard, kPause, [this] { return hasEnded_; })) {
        const ScanControl::Progress progress = control_.progress();
        line.show(
            std::to_string(progress.files) + " files, " + Fmt::bytes(progress.bytes) + "  " +
            Console::shortPath(progress.path));
    }
    line.clear();
}

}  // namespace Brimlo
