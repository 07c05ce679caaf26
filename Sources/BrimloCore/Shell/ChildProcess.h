#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Runs a program to its end.
namespace Brimlo::ChildProcess {

/// How to treat standard error; it is drained in either case.
enum class StandardError : std::uint8_t { keep, drop };

/// What to run.
struct Command {
    std::string executable;              ///< Absolute; the search path is not consulted.
    std::vector<std::string> arguments;  ///< Handed over as they are, without a shell.
    std::optional<std::string> cwd;      ///< Absent means the caller's.
    double timeoutSeconds = 0;           ///< Time limit.
    StandardError standardError = StandardError::drop;
};

/// Why a program was killed, unless it exited by itself on request.
enum class Cut : std::uint8_t { none, time, output };

/// The program's end, and its output.
struct Ending {
    int code = 0;           ///< Its exit status, or the number of the signal.
    bool bySignal = false;  ///< A signal ended it.
    Cut cut = Cut::none;
    std::string out;
    std::string err;
};

/// Bytes kept of each stream; a program that prints more is killed.
inline constexpr std::size_t kMostOutput = std::size_t{16} << 20U;

/// Runs a program and waits for its end and that of its output, until its time is up or it prints
/// too much. Then it and its descendants, a process group of their own, get SIGTERM and a second
/// later SIGKILL. A descendant that left the group and keeps the output open is waited for one
/// second more. Environment and standard input are the caller's; blocked and ignored signals are
/// reset.
///
/// Nullopt when it could not be started or another part of the process collected its exit status.
/// Blocks; any thread.
[[nodiscard]] std::optional<Ending> run(const Command& command);

}  // namespace Brimlo::ChildProcess
