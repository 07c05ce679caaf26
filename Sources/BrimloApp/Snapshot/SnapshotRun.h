#pragma once

#include <QtCore/QString>

namespace Brimlo::SnapshotRun {

/// Makes the process one that has nothing to do with this user or this desktop: a home folder of
/// its own, which goes when the process ends, and fixed language and time zone. To be called before
/// there is an application object.
void isolate();

/// Saves a picture of each scene in `folder`, made if need be, in light and dark and in two sizes:
/// "clean-review-dark-1440x900.png". Answers the process's exit code; what went wrong is told on
/// standard error. Main thread.
[[nodiscard]] int saveAll(const QString& folder);

}  // namespace Brimlo::SnapshotRun
