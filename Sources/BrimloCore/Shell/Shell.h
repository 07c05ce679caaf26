#pragma once

#include <optional>
#include <string>
#include <vector>

/// Runs command line tools and reads their output.
namespace Brimlo::Shell {

/// A tool's exit status and output.
struct Result {
    int status = 0;
    std::string out;  ///< Standard output; invalid UTF-8 becomes U+FFFD.

    bool operator==(const Result&) const = default;
};

/// Runs the tool at the absolute path `executable` in the folder `cwd`, the arguments passed
/// unchanged, and waits for its end and that of its output. Standard error is dropped.
///
/// Nullopt when it could not be started, a signal ended it, or it was killed because
/// `timeoutSeconds` were over or it printed too much. Blocks; never call it on the main thread.
[[nodiscard]] std::optional<Result> run(
    const std::string& executable,
    const std::vector<std::string>& arguments,
    const std::optional<std::string>& cwd,
    double timeoutSeconds);

}  // namespace Brimlo::Shell
