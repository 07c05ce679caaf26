#pragma once

#include "BrimloCore/Support/Json.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

namespace Brimlo {

/// How the tool ends, as scripts read it.
enum class ExitCode { done = 0, problems = 1, wrongUsage = 2, interrupted = 130 };

/// What the commands share: how they answer and how they end.
class Tool {
public:
    using Run = std::function<ExitCode()>;

    /// Adds a command with its `--json` to `parent`; once it is parsed, `run` is what `main` does.
    CLI::App* add(
        CLI::App& parent, const std::string& name, const std::string& description, Run run);

    /// The same for a command that takes one text; the help calls it `argument`.
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

private:
    bool json_ = false;
    Run run_;
};

/// Prints a JSON document on standard output.
void print(const Json::Value& document);

/// Prints a sentence on standard error, "brimlo: " before it and a period behind it.
void complain(std::string_view sentence);

/// Lets a command take one path or several. One that names nothing, as an empty one does, is wrong
/// usage.
CLI::Option* addPath(CLI::App& command, std::string& path, const std::string& description);
CLI::Option* addPaths(
    CLI::App& command, std::vector<std::string>& paths, const std::string& description);

/// The path that the system means by one that a command took: absolute.
[[nodiscard]] std::string meantPath(const std::string& typed);

/// Takes whole numbers, 0 or more, that fit into 64 bits.
[[nodiscard]] CLI::Validator wholeNumber();

/// The group under which the help lists the commands that change nothing, and so on.
inline constexpr const char* kLookGroup = "Look";
inline constexpr const char* kCleanGroup = "Clean and take back";
inline constexpr const char* kSetUpGroup = "Set up";

/// Each adds one command.
void addSuggestCommand(CLI::App& app, Tool& tool);
void addCleanCommand(CLI::App& app, Tool& tool);
void addAutocleanCommand(CLI::App& app, Tool& tool);
void addScanCommand(CLI::App& app, Tool& tool);
void addSizeCommand(CLI::App& app, Tool& tool);
void addLargeCommand(CLI::App& app, Tool& tool);
void addDuplicatesCommand(CLI::App& app, Tool& tool);
void addHistoryCommand(CLI::App& app, Tool& tool);
void addUndoCommand(CLI::App& app, Tool& tool);
void addTrashCommand(CLI::App& app, Tool& tool);
void addDockerCommand(CLI::App& app, Tool& tool);
void addSafetyCommand(CLI::App& app, Tool& tool);
void addRulesCommand(CLI::App& app, Tool& tool);
void addBackupCommand(CLI::App& app, Tool& tool);
void addCoverageCommand(CLI::App& app, Tool& tool);
void addConfigCommand(CLI::App& app, Tool& tool);

}  // namespace Brimlo
