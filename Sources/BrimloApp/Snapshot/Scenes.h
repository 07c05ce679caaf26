#pragma once

#include <QtCore/QString>

#include <functional>
#include <vector>

namespace Brimlo {

class Stage;

}  // namespace Brimlo

namespace Brimlo::Snapshot {

/// One state that the window can be in.
struct Scene {
    QString name;  ///< Also the start of the names of its pictures.
    /// Brings a new stage to the scene; false if a control that this needs is missing.
    std::function<bool(Stage&)> set;
};

/// All that docs/screens.md tells of, over the home of `CannedState::furnishHome`.
[[nodiscard]] std::vector<Scene> allScenes();

}  // namespace Brimlo::Snapshot
