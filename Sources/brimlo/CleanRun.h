#pragma once

#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Cleaner/CleanReport.h"
#include "brimlo/Tool.h"

/// A clean as a person or a script goes through it.
namespace Brimlo::CleanRun {

struct Choice {
    bool dryRun = false;
    bool yes = false;  ///< Don't ask. Has to be so, or a dry run, where nobody can be asked.
};

/// Shows the plan, asks, moves the items to the Trash and tells what came of it.
[[nodiscard]] ExitCode run(const CleanPlan& plan, const Choice& choice, const Tool& tool);

/// Shows what is about to go, or what came of it.
void show(const CleanPlan& plan);
void show(const CleanReport& report, const CleanPlan& plan, bool dryRun);

/// How the tool ends after such a clean.
[[nodiscard]] ExitCode exitCode(const CleanReport& report);

}  // namespace Brimlo::CleanRun
