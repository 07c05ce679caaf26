#pragma once

#include <optional>

#include <spawn.h>

namespace Brimlo::Platform {

/// Makes sure that a program which is started with `actions`, both its output streams redirected
/// there, inherits its standard input and no other file; returns the flags that this takes for
/// `posix_spawnattr_setflags`, or nullopt when it can't be had.
[[nodiscard]] std::optional<short> inheritStreamsOnly(posix_spawn_file_actions_t& actions);

/// The variables that a started program is to have: those of this one.
[[nodiscard]] char** environment();

}  // namespace Brimlo::Platform
