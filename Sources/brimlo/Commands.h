#pragma once

#include "brimlo/Tool.h"

namespace Brimlo {

/// Gives a nameless `app` all that a command line of `brimlo` may hold. What is parsed of it lies
/// in `tool`, which must outlive it.
void addCommands(CLI::App& app, Tool& tool);

}  // namespace Brimlo
