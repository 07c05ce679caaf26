#pragma once

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
    double timeoutSeconds = 0;           ///< When the program is asked to end (SIGTERM), once.
    StandardError standardError = StandardError::drop;
};

/// How the program ended, and the bytes that it printed.
struct Ending {
    int code = 0;           ///< Its exit status, or the number of the signal.
    bool bySignal = false;  ///< A signal ended it.
    std::string out;
    std::string err;
};

/// Runs a program and waits for its end and for the end of all that it printed: a descendant that
/// holds its output open keeps the call waiting, even past the time limit. Environment and standard
/// input are the caller's; blocked and ignored signals are not.
///
/// Nullopt when it could not be started or another part of the process took its ending away.
/// Blocks; any thread.
[[nodiscard]] std::optional<Ending> run(const Command& command);

}  // namespace Brimlo::ChildProcess
