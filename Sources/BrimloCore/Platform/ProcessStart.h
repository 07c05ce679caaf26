#pragma once

namespace Brimlo::Platform {

/// Makes this process independent of what its parent left it: as many open files as a walk may
/// want, as far as the system allows, and endings of children that are kept until asked for.
/// Called first of all.
void prepareProcess();

}  // namespace Brimlo::Platform
