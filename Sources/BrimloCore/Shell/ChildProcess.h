#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// A program run to its end.
namespace Brimlo::ChildProcess {

/// What becomes of standard error; it is drained in either case.
enum class StandardError : std::uint8_t { keep, drop };

/// What to run.
struct Command {
    std::string executable;              ///< Absolute; the search path is not consulted.
    std::vector<std::string> arguments;  ///< Handed over as they are, without a shell.
    std::optional<std::string> cwd;      ///< Absent means the caller's.
    double timeoutSeconds = 0;           ///< When the program is made to end.
    StandardError standardError = StandardError::drop;
};

/// What a program was made to end for, unless it exited by itself when it was asked to.
enum class Cut : std::uint8_t { none, time, output };

/// How the program ended, and the bytes that it printed.
struct Ending {
    int code = 0;           ///< Its exit status, or the number of the signal.
    bool bySignal = false;  ///< A signal ended it.
    Cut cut = Cut::none;
    std::string out;
    std::string err;
};

/// So much of each stream is kept; a program that prints more is made to end.
inline constexpr std::size_t kMostOutput = std::size_t{16} << 20U;

/// Runs a program and waits for its end and for the end of all that it printed, at most until its
/// time is up or it prints too much. Then it and its descendants, a process group of their own, are
/// asked to end (SIGTERM) and a second later made to (SIGKILL). A descendant that left the group
/// and holds the output open is waited for a second more, then no longer. Environment and standard
/// input are the caller's; blocked and ignored signals are not.
///
/// Nullopt when it could not be started or another part of the process took its ending away.
/// Blocks; any thread.
[[nodiscard]] std::optional<Ending> run(const Command& command);

}  // namespace Brimlo::ChildProcess
