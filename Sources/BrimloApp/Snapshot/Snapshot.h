#pragma once

#include <QtCore/QString>

namespace Brimlo::Snapshot {

/// Isolates the process from the user and the desktop: a temporary home folder, which is removed at
/// exit, and a fixed language and time zone. Call it before there is an application object.
void isolate();

/// Saves pictures of each scene in `folder`, which is created if needed, in light and dark and in
/// two sizes: "clean-review-dark-1440x900.png". Returns the process's exit code; errors go to
/// standard error. Main thread.
[[nodiscard]] int saveAll(const QString& folder);

}  // namespace Brimlo::Snapshot
