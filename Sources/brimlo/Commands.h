#pragma once

#include "brimlo/Tool.h"

namespace Brimlo {

/// Adds everything that a command line of `brimlo` may hold to a nameless `app`. `tool` keeps what
/// was parsed, and must outlive `app`.
void addCommands(CLI::App& app, Tool& tool);

/// The groups of the commands in the help.
inline constexpr const char* kLookGroup = "Look";
inline constexpr const char* kCleanGroup = "Clean and take back";
inline constexpr const char* kSetUpGroup = "Set up";

/// Each adds one command to `app`.
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
void addSystemCommand(CLI::App& app, Tool& tool);
void addAccountCommand(CLI::App& app, Tool& tool);
void addSafetyCommand(CLI::App& app, Tool& tool);
void addRulesCommand(CLI::App& app, Tool& tool);
void addBackupCommand(CLI::App& app, Tool& tool);
void addCoverageCommand(CLI::App& app, Tool& tool);
void addConfigCommand(CLI::App& app, Tool& tool);

/// Adds the commands of `brimlo rules` that read or write a file of rules.
void addRuleFileCommands(CLI::App& rules, Tool& tool);

}  // namespace Brimlo
