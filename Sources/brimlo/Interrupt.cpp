#include "brimlo/Interrupt.h"

#include "brimlo/Tool.h"

#include <atomic>
#include <csignal>
#include <string_view>

#include <unistd.h>

namespace Brimlo::Interrupt {

namespace {

// The handler may only touch lock-free atomics and call what signal-safety(7) lists.
std::atomic<bool> isFinishing = false;
std::atomic<bool> isNoted = false;
std::atomic<bool> isUndoable = false;
static_assert(std::atomic<bool>::is_always_lock_free);

void say(std::string_view text) {
    static_cast<void>(!write(STDERR_FILENO, text.data(), text.size()));
}

void handle(int) {
    if (isFinishing) {
        isNoted = true;
        say("\nbrimlo: what has begun is finished first");
        say(isUndoable ? "; \"brimlo undo --last\" takes it back.\n" : ".\n");
        return;
    }
    say("\n");
    _exit(static_cast<int>(ExitCode::interrupted));
}

}  // namespace

void install() {
    struct sigaction action {};
    action.sa_handler = handle;
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
}

void finishFirst(Undo undo) {
    // A reader of standard output who has gone away is no reason to stop either.
    std::signal(SIGPIPE, SIG_IGN);
    isUndoable = undo == Undo::possible;
    isFinishing = true;
}

bool wasNoted() {
    return isNoted;
}

}  // namespace Brimlo::Interrupt
