#pragma once

namespace Brimlo::Platform {

/// Resets what this process inherited: raises the limit of open files as far as the system allows,
/// and keeps the exit status of children until asked for. Call it first.
void prepareProcess();

}  // namespace Brimlo::Platform
