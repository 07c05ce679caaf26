#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace Brimlo {

/// What a command takes: an option, or an argument without one.
struct ArgumentDescription {
    std::vector<std::string> names;    ///< "-h", "--help"; none for an argument without an option.
    std::string value;                 ///< What the help calls its value, "PATH"; empty for a flag.
    std::vector<std::string> choices;  ///< All values it takes, where these are few.
    std::string text;
    bool isRequired = false;
    bool isRepeatable = false;
};

/// One command, as a reader and a shell need to know it.
struct CommandDescription {
    std::string path;   ///< "brimlo trash purge"
    std::string group;  ///< The heading under which the help lists it.
    std::string text;
    std::string footer;  ///< Lines below the help; empty when they are those of every command.
    std::vector<ArgumentDescription> options;
    std::vector<ArgumentDescription> operands;  ///< In the order in which they are given.
    std::vector<CommandDescription> commands;

    [[nodiscard]] std::string name() const { return path.substr(path.rfind(' ') + 1); }

    [[nodiscard]] static CommandDescription of(const CLI::App& app);

    /// The command and all those below it, one after the other.
    [[nodiscard]] std::vector<const CommandDescription*> all() const;
};

}  // namespace Brimlo
