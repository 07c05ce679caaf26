#pragma once

#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>

#include <functional>
#include <string>
#include <vector>

namespace Brimlo::Platform {

/// Shows entries in the file manager, each selected in its folder, and returns at once. None of
/// them is opened itself, whatever it is. `paths` are absolute and standardized. Main thread.
///
/// When no file manager has answered within three seconds, the folders that the entries lie in are
/// opened by `open`, a few at most. When none could be opened either, `failed` is called.
void reveal(
    const std::vector<std::string>& paths,
    const std::function<void()>& failed,
    const std::function<bool(const QUrl& folder)>& open = QDesktopServices::openUrl);

}  // namespace Brimlo::Platform
