#pragma once

#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Cleaner/CleanReport.h"
#include "brimlo/Tool.h"

/// A clean as a user or a script runs it.
namespace Brimlo::CleanRun {

struct Choice {
    bool dryRun = false;
    bool yes = false;     ///< Don't ask. Required without a terminal, except for a dry run.
    bool isFull = false;  ///< Whether to list each item, also the many of one folder.
};

/// Shows the plan, asks, moves the items to the Trash and reports the result.
[[nodiscard]] ExitCode run(const CleanPlan& plan, const Choice& choice, const Tool& tool);

/// Print a plan before the clean, and its result afterwards.
void show(const CleanPlan& plan, bool isFull = false);
void show(const CleanReport& report, const CleanPlan& plan, bool dryRun);

/// Prints what an undo has restored, and returns the exit code.
[[nodiscard]] ExitCode tell(const UndoReport& report, const Tool& tool);

/// The exit code after such a clean.
[[nodiscard]] ExitCode exitCode(const CleanReport& report);

}  // namespace Brimlo::CleanRun
