#include "BrimloApp/Analyzer/TreemapCells.h"

#include "BrimloApp/Components/FileKinds.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/DiskScanner/Squarify.h"
#include "BrimloCore/Platform/Fmt.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace Brimlo {

namespace {

constexpr double kMargin = 12;
constexpr double kGap = 1.5;  // Around each cell.
constexpr double kRadius = 3;
constexpr double kSmallestRounded = 5 * kRadius;
constexpr double kUsualOpacity = 0.92;
constexpr double kFadedOpacity = 0.15;
constexpr double kSelectionWidth = 2.5;

// The smallest cell with labels, and the labels' offsets from its top left.
constexpr double kLabelledWidth = 80;
constexpr double kLabelledHeight = 36;
constexpr QPointF kNamePlace{8, 8};
constexpr QPointF kSizePlace{8, 25};
constexpr int kNamePixels = 12;
constexpr int kSizePixels = 11;

std::vector<Squarify::Cell> layout(const NodeRows::Nodes& nodes, const QSizeF& size) {
    std::vector<double> weights;
    weights.reserve(nodes.size());
    for (const auto& node : nodes) {
        weights.push_back(static_cast<double>(node->size));
    }
    return Squarify::layout(
        weights,
        {.x = kMargin,
         .y = kMargin,
         .width = size.width() - 2 * kMargin,
         .height = size.height() - 2 * kMargin});
}

QColor colorOf(const FileNode& node) {
    QColor color = FileKinds::colorOf(kindOf(node));
    // All folders have one colour; the opacity makes neighbours distinct.
    const std::size_t shade = std::hash<std::string_view>{}(node.name()) % 25;
    color.setAlphaF(node.isDirectory ? 0.75F + static_cast<float>(shade) / 100 : 1);
    return color;
}

/// Black or white, whichever has more contrast with `fill` over `ground`.
QColor inkOn(const QColor& fill, const QColor& ground) {
    const auto linear = [&](float above, float below) {
        const double part = above * fill.alphaF() + below * (1 - fill.alphaF());
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    const double luminance = 0.2126 * linear(fill.redF(), ground.redF()) +
                             0.7152 * linear(fill.greenF(), ground.greenF()) +
                             0.0722 * linear(fill.blueF(), ground.blueF());
    // Both have the same WCAG 2 contrast here, 4.58; everywhere else one has more.
    constexpr double kMiddle = 0.179;
    return luminance > kMiddle ? Qt::black : Qt::white;
}

QFont sized(QFont font, int pixels, QFont::Weight weight) {
    font.setPixelSize(pixels);
    font.setWeight(weight);
    return font;
}

QStaticText prepared(const QString& words, const QFont& font) {
    QStaticText text{words};
    text.setTextFormat(Qt::PlainText);
    text.prepare({}, font);
    return text;
}

}  // namespace

TreemapCells::TreemapCells(
    const NodeRows& rows, const QSizeF& size, const QFont& font, const QColor& ground)
    : ground_{ground}
    , nameFont_{sized(font, kNamePixels, QFont::DemiBold)}
    , sizeFont_{sized(font, kSizePixels, QFont::Normal)} {
    cells_.reserve(rows.nodes().size());
    for (const auto& [index, rect] : layout(rows.nodes(), size)) {
        const FileNode& node = *rows.nodes()[index];
        const QRectF place{rect.x, rect.y, rect.width, rect.height};
        const QRectF drawn = place.adjusted(kGap, kGap, -kGap, -kGap);
        Cell& cell = cells_.emplace_back(Cell{
            .row = static_cast<int>(index),
            .place = place,
            .drawn = drawn,
            .ink = drawn,
            .color = colorOf(node),
            .isSelected = rows.isSelected(node.id()),
            .isFaded = rows.isFaded(static_cast<int>(index)),
            .label = {}});
        if (drawn.width() > kLabelledWidth && drawn.height() > kLabelledHeight) {
            write(cell, node);
        }
    }
}

void TreemapCells::write(Cell& cell, const FileNode& node) const {
    const Label& label = cell.label.emplace(Label{
        .name = prepared(shown(node.name()), nameFont_),
        .size = prepared(QString::fromStdString(Fmt::bytes(node.size)), sizeFont_)});
    constexpr double kSlack = 2;  // Slanted letters extend beyond their advance width.
    for (const auto& [text, place] : {
             std::pair{&label.name, kNamePlace},
             std::pair{&label.size, kSizePlace}
    }) {
        cell.ink |= QRectF{cell.drawn.topLeft() + place, text->size()}.adjusted(
            -kSlack, -kSlack, kSlack, kSlack);
    }
}

std::optional<std::size_t> TreemapCells::at(const QPointF& point) const {
    // The edge between two cells belongs to the right or lower one.
    const auto found = std::ranges::find_if(cells_, [&](const Cell& cell) {
        return point.x() >= cell.place.left() && point.x() < cell.place.right() &&
               point.y() >= cell.place.top() && point.y() < cell.place.bottom();
    });
    return found == cells_.end() ? std::nullopt
                                 : std::optional{static_cast<std::size_t>(found - cells_.begin())};
}

void TreemapCells::draw(
    QPainter& painter, const QRectF& part, std::optional<std::size_t> hovered) const {
    painter.setRenderHint(QPainter::Antialiasing);
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        if (!cells_[i].drawn.isEmpty() && cells_[i].ink.intersects(part)) {
            drawOne(painter, cells_[i], i == hovered ? 1 : kUsualOpacity);
        }
    }
}

void TreemapCells::drawOne(QPainter& painter, const Cell& cell, double opacity) const {
    QColor fill = cell.color;
    fill.setAlphaF(fill.alphaF() * static_cast<float>(cell.isFaded ? kFadedOpacity : opacity));
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    // A rounded corner costs twice a plain one, and shows only where a side is longer than it.
    if (std::min(cell.drawn.width(), cell.drawn.height()) > kSmallestRounded) {
        painter.drawRoundedRect(cell.drawn, kRadius, kRadius);
    } else {
        painter.drawRect(cell.drawn);
    }
    if (const QRectF inner = cell.drawn.adjusted(1, 1, -1, -1);
        cell.isSelected && !inner.isEmpty()) {
        painter.setPen(QPen{inkOn(fill, ground_), kSelectionWidth});
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(inner, kRadius, kRadius);
    }
    if (cell.label) {
        painter.setPen(inkOn(fill, ground_));
        painter.setFont(nameFont_);
        painter.drawStaticText(cell.drawn.topLeft() + kNamePlace, cell.label->name);
        painter.setFont(sizeFont_);
        painter.drawStaticText(cell.drawn.topLeft() + kSizePlace, cell.label->size);
    }
}

}  // namespace Brimlo
