#pragma once

#include "brimlo/Tool.h"

namespace Brimlo {

/// Adds the commands of `brimlo rules` that read or write a file of rules.
void addRuleFileCommands(CLI::App& rules, Tool& tool);

}  // namespace Brimlo
