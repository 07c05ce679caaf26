#pragma once

namespace Brimlo::Platform {

/// Whether drawing by OpenGL would be done by the processor, which is slower than drawing without
/// it. Asks the system's OpenGL; the application object must be there, and no window yet.
[[nodiscard]] bool drawsInSoftware();

}  // namespace Brimlo::Platform
