#pragma once

#include "BrimloCore/Support/Json.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

namespace Brimlo {

/// The exit codes.
enum class ExitCode { done = 0, problems = 1, wrongUsage = 2, interrupted = 130 };

/// What the commands share: how they answer and how they end.
class Tool {
public:
    using Run = std::function<ExitCode()>;

    /// Adds a command with a `--json` flag to `parent`. `run` is called by `run()` if the command
    /// was parsed.
    CLI::App* add(
        CLI::App& parent, const std::string& name, const std::string& description, Run run);

    /// Adds a command with one text argument, named `argument` in the help.
    CLI::App* addTaking(
        const std::string& argument,
        CLI::App& parent,
        const std::string& name,
        const std::string& description,
        const std::function<ExitCode(const std::string&, const Tool&)>& run);

    /// Whether the answer is one JSON document.
    [[nodiscard]] bool isJson() const { return json_; }

    /// Runs the command that was parsed.
    [[nodiscard]] ExitCode run() const;

    /// From here on Ctrl-C ends the program with exit code 130, on a new line, and a closed pipe
    /// ends it, too.
    static void endOnInterrupt();

    /// From here on Ctrl-C is only noted, with these words on standard error, and a closed pipe is
    /// ignored: what changes files ends at a point of its own and is reported.
    static void noteInterrupts(std::string_view words);
    static constexpr std::string_view kFinishesFirst = "what has begun is finished first";
    /// Whether Ctrl-C was noted.
    [[nodiscard]] static bool wasInterrupted();

private:
    bool json_ = false;
    Run run_;
};

/// Prints a JSON document on standard output.
void print(const Json::Value& document);

/// Prints a sentence on standard error, after "brimlo: " and with a period at the end.
void complain(std::string_view sentence);

/// Adds an argument of one path, or of several. An empty path, which names nothing, is wrong usage.
CLI::Option* addPath(CLI::App& command, std::string& path, const std::string& description);
CLI::Option* addPaths(
    CLI::App& command, std::vector<std::string>& paths, const std::string& description);

/// The absolute path of a path argument.
[[nodiscard]] std::string meantPath(const std::string& typed);

/// Accepts whole numbers from 0 to the largest of 64 bits.
[[nodiscard]] CLI::Validator wholeNumber();

}  // namespace Brimlo
