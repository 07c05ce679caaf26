#pragma once

#include <QtGui/QColor>
#include <QtQuick/QQuickWindow>

#include <functional>
#include <string>
#include <vector>

/// Looks over all words that a window shows, for faults that no single test would ask about.
namespace Brimlo::Testing::LayoutAudit {

/// Which words may be shortened by "…".
enum class Elision { ofPaths, ofAll };

/// A line for each text that is shortened, reaches out of its place, is cut off, or runs into
/// another one, and for each button that reaches out of the window. What a scrolling part or a
/// message hides is no fault.
[[nodiscard]] std::vector<std::string> misplaced(QQuickWindow& window, Elision elision);

/// The contrast of two colours by WCAG 2, from 1 to 21.
[[nodiscard]] double contrast(const QColor& one, const QColor& other);

/// A line for each text in the picture of the window whose contrast to what it stands on is below
/// 4.5 to 1. What is disabled, or covered by a sheet, is left out.
[[nodiscard]] std::vector<std::string> faint(QQuickWindow& window);

/// Those faults of a window that are still there after some seconds of drawing it.
[[nodiscard]] std::vector<std::string> lasting(
    QQuickWindow& window, const std::function<std::vector<std::string>()>& faults);

}  // namespace Brimlo::Testing::LayoutAudit
