#pragma once

/// What Ctrl-C does. Looking can end at any moment; a clean, once begun, is finished, so that its
/// report is told.
namespace Brimlo::Interrupt {

/// From here on Ctrl-C ends the program with exit code 130 and leaves a tidy line behind.
void install();

/// Whether "brimlo undo" takes back what is being done.
enum class Undo { possible, impossible };

/// From here on Ctrl-C is only noted, with a word on standard error, and a closed pipe ignored.
void finishFirst(Undo undo = Undo::possible);

/// Whether Ctrl-C was noted.
[[nodiscard]] bool wasNoted();

}  // namespace Brimlo::Interrupt
