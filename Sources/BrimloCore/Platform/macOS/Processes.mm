#include "BrimloCore/Platform/Processes.h"

#include "BrimloCore/Platform/macOS/Cocoa.h"

#include <array>

#import <AppKit/AppKit.h>
#include <crt_externs.h>
#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

namespace Brimlo::Platform {

std::optional<Pipe> openPipe() {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        return std::nullopt;
    }
    Pipe made{.readEnd = Descriptor{ends[0]}, .writeEnd = Descriptor{ends[1]}};
    // No call does both at once. `inheritStreamsOnly` closes what a program started in between
    // inherits.
    if (fcntl(ends[0], F_SETFD, FD_CLOEXEC) != 0 || fcntl(ends[1], F_SETFD, FD_CLOEXEC) != 0) {
        return std::nullopt;
    }
    return made;
}

std::optional<short> inheritStreamsOnly(posix_spawn_file_actions_t& actions) {
    // Redirected streams stay open anyway; standard input must be named.
    if (posix_spawn_file_actions_addinherit_np(&actions, STDIN_FILENO) != 0) {
        return std::nullopt;
    }
    return static_cast<short>(POSIX_SPAWN_CLOEXEC_DEFAULT);
}

char** environment() {
    return *_NSGetEnviron();
}

std::vector<std::string> runningAppNames() {
    @autoreleasepool {
        std::vector<std::string> names;
        for (NSRunningApplication* const app in NSWorkspace.sharedWorkspace.runningApplications) {
            if (app.localizedName != nil) {
                names.push_back(text(app.localizedName));
            }
        }
        return names;
    }
}

}  // namespace Brimlo::Platform
