#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Runs command line tools to their end.
///
/// The one place where a child process gets a time limit. Every call blocks; never make one on the
/// main thread.
namespace Brimlo::Shell {

/// How to treat standard error; it is drained in either case.
enum class StandardError : std::uint8_t { keep, drop };

/// What to run.
struct Command {
    std::string executable;              ///< Absolute; the search path is not consulted.
    std::vector<std::string> arguments;  ///< Passed unchanged, without a shell.
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

/// Runs a program and waits for its end and that of its output, until its time is up or it prints
/// more than 16 MiB to a stream that is kept. Then it and its descendants, a process group of their
/// own, get SIGTERM and a second later SIGKILL. A descendant that left the group and keeps the
/// output open is waited for one second more. Environment and standard input are the caller's;
/// blocked and ignored signals are reset.
///
/// Nullopt when it could not be started or another part of the process collected its exit status.
[[nodiscard]] std::optional<Ending> run(const Command& command);

/// A tool's exit status and output.
struct Result {
    int status = 0;
    std::string out;  ///< Standard output; invalid UTF-8 becomes U+FFFD.

    bool operator==(const Result&) const = default;
};

/// Runs a tool as above and drops its standard error. Nullopt also when a signal ended it or it was
/// killed.
[[nodiscard]] std::optional<Result> run(
    const std::string& executable,
    const std::vector<std::string>& arguments,
    const std::optional<std::string>& cwd,
    double timeoutSeconds);

}  // namespace Brimlo::Shell
