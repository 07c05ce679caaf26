#pragma once

/// What Ctrl-C does. Looking can end at any moment; a clean, once begun, is finished, so that its
/// report is told.
namespace Brimlo::Interrupt {

/// From here on Ctrl-C ends the program with exit code 130 and leaves a tidy line behind.
void install();

/// From here on Ctrl-C is only noted, with a word on standard error, and a closed pipe ignored.
void finishFirst();

/// Whether Ctrl-C was noted.
[[nodiscard]] bool wasNoted();

}  // namespace Brimlo::Interrupt
