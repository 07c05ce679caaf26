#pragma once

#include <optional>

#include <spawn.h>

namespace Brimlo::Platform {

/// Makes a program started with `actions`, both its output streams redirected there, inherit
/// standard input and no other file; returns the flags for `posix_spawnattr_setflags`, or nullopt
/// when that is not possible.
[[nodiscard]] std::optional<short> inheritStreamsOnly(posix_spawn_file_actions_t& actions);

/// The environment for a started program: this process's.
[[nodiscard]] char** environment();

}  // namespace Brimlo::Platform
