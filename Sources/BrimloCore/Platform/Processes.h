#pragma once

#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <optional>
#include <string>
#include <vector>

#include <spawn.h>

/// This process, the programs it starts, and the running applications.
namespace Brimlo::Platform {

/// Resets what this process inherited: raises the limit of open files as far as the system allows,
/// and keeps the exit status of children until asked for. Call it first.
void prepareProcess();

/// The two ends of a pipe.
struct Pipe {
    Descriptor readEnd;
    Descriptor writeEnd;
};

/// A new pipe, or nullopt when the system has no descriptors left. Not inherited by programs that
/// other threads start at the same moment.
[[nodiscard]] std::optional<Pipe> openPipe();

/// Makes a program started with `actions`, both its output streams redirected there, inherit
/// standard input and no other file; returns the flags for `posix_spawnattr_setflags`, or nullopt
/// when that is not possible.
[[nodiscard]] std::optional<short> inheritStreamsOnly(posix_spawn_file_actions_t& actions);

/// The environment for a started program: this process's.
[[nodiscard]] char** environment();

/// The names of the user's running applications, as the desktop shows them.
[[nodiscard]] std::vector<std::string> runningAppNames();

}  // namespace Brimlo::Platform
