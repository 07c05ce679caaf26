#pragma once

#include "Support/TempHome.h"

#include <chrono>
#include <functional>

namespace Brimlo::Testing {

/// A home folder of the test's own, under an application object and its event loop.
///
/// The platform is "offscreen" unless the environment names another, so that no display is needed.
class AppTest : public TempHome {
protected:
    /// Runs the event loop until `condition` holds; fails the test after so long.
    static void waitFor(
        const std::function<bool()>& condition,
        std::chrono::milliseconds limit = std::chrono::seconds{20});

    /// Runs the event loop until nothing is waiting in it.
    static void settle();
};

}  // namespace Brimlo::Testing
