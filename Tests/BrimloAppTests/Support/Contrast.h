#pragma once

#include <QtGui/QColor>

namespace Brimlo::Testing {

/// The contrast of two colours by WCAG 2, from 1 to 21.
[[nodiscard]] double contrast(const QColor& one, const QColor& other);

}  // namespace Brimlo::Testing
