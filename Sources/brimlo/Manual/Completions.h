#pragma once

#include "brimlo/Manual/CommandDescription.h"

/// What the scripts of the shells have to know of the commands, each in its shell's language.
namespace Brimlo::Completions {

/// The commands below each command, one a line: "brimlo trash size".
[[nodiscard]] std::string paths(const CommandDescription& program);

/// For bash: what values an option takes, and what may follow a command; two lists of cases.
[[nodiscard]] std::string bashValues(const CommandDescription& program);
[[nodiscard]] std::string bashWords(const CommandDescription& program);

/// For zsh: a function for each command.
[[nodiscard]] std::string zshFunctions(const CommandDescription& program);

/// For fish: a line for each word that may follow.
[[nodiscard]] std::string fishLines(const CommandDescription& program);

}  // namespace Brimlo::Completions
