#pragma once

#include "BrimloApp/Analyzer/NodeRows.h"

#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtCore/QSizeF>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtGui/QPainter>
#include <QtGui/QStaticText>

#include <cstddef>
#include <optional>
#include <vector>

namespace Brimlo {

/// The entries of a folder as cells, each of an area in proportion to its size, and how they look.
class TreemapCells {
public:
    struct Cell {
        int row = 0;   ///< Of the entry in the list.
        QRectF place;  ///< The cells' places fill the picture without a gap.
        QRectF drawn;  ///< What is seen of it; may be empty.
        QRectF ink;    ///< All that is drawn for it: a label may go beyond the cell.
        QColor color;
        bool isSelected = false;
        QStaticText name;  ///< The labels are empty in a cell too small for them.
        QStaticText size;
    };

    TreemapCells() = default;
    /// The cells in a picture of this size, written in a family of `font`. `ground` is the colour
    /// that the picture lies on.
    TreemapCells(
        const NodeRows& rows,
        const QSizeF& size,
        const QFont& font,
        const QColor& ground = Qt::white);

    [[nodiscard]] const std::vector<Cell>& cells() const { return cells_; }
    /// The number of the cell whose place has this point in it.
    [[nodiscard]] std::optional<std::size_t> at(const QPointF& point) const;

    /// Draws what has ink in `part`, and perhaps more. The hovered cell is a bit stronger.
    void draw(QPainter& painter, const QRectF& part, std::optional<std::size_t> hovered) const;

private:
    void write(Cell& cell, const FileNode& node) const;
    void drawOne(QPainter& painter, const Cell& cell, double opacity) const;

    QColor ground_;
    QFont nameFont_;
    QFont sizeFont_;
    std::vector<Cell> cells_;
};

}  // namespace Brimlo
