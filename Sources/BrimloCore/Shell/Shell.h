#pragma once

#include <optional>
#include <string>
#include <vector>

/// Command line tools, run and read.
namespace Brimlo::Shell {

/// How a tool ended by itself, and what it printed.
struct Result {
    int status = 0;
    std::string out;  ///< All of standard output; what is no UTF-8 is replaced by U+FFFD.

    bool operator==(const Result&) const = default;
};

/// Runs the tool at the absolute path `executable`, with the arguments as they are and in the
/// folder `cwd`, and waits for its end and the end of its output. Standard error is dropped.
///
/// Nullopt when it could not be started, a signal ended it, or it was made to end, because
/// `timeoutSeconds` were over or it printed too much. Blocks; never call it on the thread that
/// draws.
[[nodiscard]] std::optional<Result> run(
    const std::string& executable,
    const std::vector<std::string>& arguments,
    const std::optional<std::string>& cwd,
    double timeoutSeconds);

}  // namespace Brimlo::Shell
