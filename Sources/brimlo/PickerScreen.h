#pragma once

#include "brimlo/ItemPicker.h"

/// The list to tick, on a terminal.
namespace Brimlo::PickerScreen {

/// Whether standard input and output are a terminal that can show it.
[[nodiscard]] bool isPossible();

/// How a person left the list.
enum class End { accepted, left, interrupted, impossible };

/// Shows the list until a person leaves it. Arrows move, Space ticks, Enter accepts what is ticked,
/// Esc and "q" leave, and so does Ctrl-C. Afterwards the terminal is as it was.
[[nodiscard]] End run(ItemPicker& picker);

}  // namespace Brimlo::PickerScreen
