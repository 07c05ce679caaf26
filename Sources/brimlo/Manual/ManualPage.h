#pragma once

#include "brimlo/Manual/CommandDescription.h"

namespace Brimlo::ManualPage {

/// The commands below `program` in the language of the mdoc macros, by their groups.
[[nodiscard]] std::string commands(const CommandDescription& program);

}  // namespace Brimlo::ManualPage
