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

/// The entries of a folder as cells with areas proportional to their sizes, and how they are drawn.
class TreemapCells {
public:
    struct Label {
        QStaticText name;
        QStaticText size;
    };

    struct Cell {
        int row = 0;   ///< The row of the entry.
        QRectF place;  ///< Together the places fill the picture without a gap.
        QRectF drawn;  ///< The visible part; may be empty.
        QRectF ink;    ///< Everything drawn for the cell: a label may extend beyond it.
        QColor color;
        bool isSelected = false;
        bool isFaded = false;
        std::optional<Label> label;  ///< None in a cell that is too small.
    };

    TreemapCells() = default;
    /// The cells of a picture of this size, labelled in the family of `font`. `ground` is the
    /// background colour.
    TreemapCells(
        const NodeRows& rows,
        const QSizeF& size,
        const QFont& font,
        const QColor& ground = Qt::white);

    [[nodiscard]] const std::vector<Cell>& cells() const { return cells_; }
    /// The index of the cell whose place contains this point.
    [[nodiscard]] std::optional<std::size_t> at(const QPointF& point) const;

    /// Draws at least every cell with ink in `part`; the hovered one is more opaque.
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
