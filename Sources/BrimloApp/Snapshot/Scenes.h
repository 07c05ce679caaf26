#pragma once

#include <QtCore/QString>

#include <functional>
#include <vector>

namespace Brimlo {

class Stage;

/// One picture of the application.
struct Scene {
    QString name;  ///< Of its file, too.
    /// Brings a fresh stage there; false when a control that this needs is missing.
    std::function<bool(Stage&)> set;
};

/// Every screen in each of its states, and every sheet.
[[nodiscard]] std::vector<Scene> allScenes();

}  // namespace Brimlo
