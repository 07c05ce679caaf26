#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The folders that environment variables move away from their usual places in the home, as the
/// documentation of each tool says.
namespace Brimlo::MovedFolders {

struct Move {
    std::string_view variable;  ///< The variable that names the folder.
    std::string_view usual;     ///< Where the folder is without it, in tilde form.
    std::string folder;         ///< Where it is now, in tilde form.
};

/// What the environment of this process moves to another place in the home, in the order of the
/// table. A value that is no absolute path below the home, or that holds a wildcard, is ignored.
///
/// A program started by the desktop or by the system has the variables of the login, not those that
/// only a shell sets.
[[nodiscard]] std::vector<Move> ofEnvironment();

/// The path patterns, in tilde form, and behind them those that are elsewhere by a move, each once.
///
/// A variable may name a folder that also holds other things. So where the moved folder itself is
/// the place, it counts only if its name tells what it is for: the usual name, or one with "cache".
[[nodiscard]] std::vector<std::string> withMoved(
    std::vector<std::string> paths, const std::vector<Move>& moves);

}  // namespace Brimlo::MovedFolders
