#pragma once

class QWindow;

namespace Brimlo::Platform {

/// Makes the frame of a window one with what it shows, as far as the system draws the frame and
/// lets it be changed. The window has been shown. Main thread.
void joinFrame(QWindow& window);

}  // namespace Brimlo::Platform
