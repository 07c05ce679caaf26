#include "BrimloApp/Analyzer/TreemapItem.h"

#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/Platform/Fmt.h"

#include <QtGui/QAccessible>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>

#include <cmath>

namespace Brimlo {

namespace {

QRect scaled(const QRectF& rect, double scale) {
    return QRectF{rect.topLeft() * scale, rect.size() * scale}.toAlignedRect();
}

QImage blank(const QSize& size) {
    QImage image{size, QImage::Format_ARGB32_Premultiplied};
    image.fill(Qt::transparent);
    return image;
}

/// A point just outside the middle of one side of a rectangle. As the cells leave no gap, it lies
/// in a neighbour or outside all cells.
std::optional<QPointF> beyond(const QRectF& rect, int key) {
    constexpr double kStep = 0.001;
    const QPointF middle = rect.center();
    switch (key) {
        case Qt::Key_Left:
            return QPointF{rect.left() - kStep, middle.y()};
        case Qt::Key_Right:
            return QPointF{rect.right() + kStep, middle.y()};
        case Qt::Key_Up:
            return QPointF{middle.x(), rect.top() - kStep};
        case Qt::Key_Down:
            return QPointF{middle.x(), rect.bottom() + kStep};
        default:
            return std::nullopt;
    }
}

}  // namespace

TreemapItem::TreemapItem(QQuickItem* parent)
    : QQuickPaintedItem{parent} {
    setAcceptHoverEvents(true);
    setAcceptedMouseButtons(Qt::LeftButton);
    setActiveFocusOnTab(true);
}

void TreemapItem::setRows(NodeRows* rows) {
    if (rows == rows_) {
        return;
    }
    if (rows_) {
        rows_->disconnect(this);
    }
    rows_ = rows;
    if (rows != nullptr) {
        connect(rows, &NodeRows::nodesChanged, this, &TreemapItem::rearrange);
        connect(rows, &NodeRows::selectionChanged, this, &TreemapItem::repaint);
        connect(rows, &NodeRows::fadedChanged, this, &TreemapItem::repaint);
        connect(rows, &QObject::destroyed, this, &TreemapItem::rearrange);
    }
    Q_EMIT rowsChanged();
    rearrange();
}

void TreemapItem::setFontFamily(const QString& family) {
    if (family != fontFamily_) {
        fontFamily_ = family;
        repaint();
        Q_EMIT fontFamilyChanged();
    }
}

void TreemapItem::setGround(const QColor& color) {
    if (color != ground_) {
        ground_ = color;
        repaint();
        Q_EMIT groundChanged();
    }
}

const TreemapCells& TreemapItem::cells() const {
    if (!cells_) {
        QFont font = QGuiApplication::font();
        if (!fontFamily_.isEmpty()) {
            font.setFamily(fontFamily_);
        }
        cells_ = rows_ ? TreemapCells{*rows_, size(), font, ground_} : TreemapCells{};
    }
    return *cells_;
}

void TreemapItem::repaint() {
    cells_.reset();
    picture_ = {};
    // With an explicit rectangle: an update of a part would replace one without a rectangle.
    update(boundingRect().toAlignedRect());
}

void TreemapItem::rearrange() {
    pressed_.reset();
    hovered_.reset();
    repaint();
    hovered_ = pointer_ ? cells().at(*pointer_) : std::nullopt;
    hoveredBy_ = By::pointer;
    Q_EMIT hoveredChanged();
}

void TreemapItem::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) {
    QQuickPaintedItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) {
        rearrange();
    }
}

// ---- Hovering ------------------------------------------------------------------------------

int TreemapItem::hoveredRow() const {
    return hovered_ ? cells().cells()[*hovered_].row : -1;
}

const FileNode* TreemapItem::hoveredNode() const {
    const auto row = static_cast<std::size_t>(hoveredRow());  // -1 becomes larger than any row.
    return rows_ && row < rows_->nodes().size() ? rows_->nodes()[row].get() : nullptr;
}

QString TreemapItem::hoveredName() const {
    const FileNode* node = hoveredNode();
    return node != nullptr ? shown(node->name()) : QString{};
}

QPointF TreemapItem::hoveredPlace() const {
    return hovered_ ? cells().cells()[*hovered_].place.center() : QPointF{};
}

double TreemapItem::hoveredSize() const {
    const FileNode* node = hoveredNode();
    return node != nullptr ? static_cast<double>(node->size) : 0;
}

QString TreemapItem::hoveredGrowth() const {
    return rows_ ? rows_->growth(hoveredRow()) : QString{};
}

void TreemapItem::updateHovered() {
    if (hovered_) {
        constexpr int kSlack = 1;
        update(cells().cells()[*hovered_].drawn.toAlignedRect().adjusted(
            -kSlack, -kSlack, kSlack, kSlack));
    }
}

void TreemapItem::setHovered(std::optional<std::size_t> cell, By by) {
    if (cell == hovered_ && by == hoveredBy_) {
        return;
    }
    updateHovered();
    hovered_ = cell;
    hoveredBy_ = by;
    updateHovered();
    Q_EMIT hoveredChanged();
}

void TreemapItem::hoverMoveEvent(QHoverEvent* event) {
    // Each frame repeats the position of a pointer at rest, which takes nothing from the keyboard.
    if (pointer_ != event->position()) {
        pointer_ = event->position();
        setHovered(cells().at(*pointer_), By::pointer);
    }
}

void TreemapItem::hoverLeaveEvent(QHoverEvent* /*event*/) {
    pointer_.reset();
    setHovered(std::nullopt, By::pointer);
}

void TreemapItem::moveHovered(int key) {
    if (cells().cells().empty()) {
        return;
    }
    if (!hovered_) {
        setHovered(0, By::keys);
        return;
    }
    const auto point = beyond(cells().cells()[*hovered_].place, key);
    const auto neighbour = point ? cells().at(*point) : std::nullopt;
    setHovered(neighbour ? neighbour : hovered_, By::keys);
}

// ---- Clicks and keys -----------------------------------------------------------------------

void TreemapItem::mousePressEvent(QMouseEvent* event) {
    forceActiveFocus(Qt::MouseFocusReason);
    pressed_ = cells().at(event->position());
}

void TreemapItem::mouseReleaseEvent(QMouseEvent* event) {
    const auto pressed = std::exchange(pressed_, std::nullopt);
    if (pressed && rows_ && cells().at(event->position()) == pressed) {
        rows_->select(cells().cells()[*pressed].row);
    }
}

void TreemapItem::mouseDoubleClickEvent(QMouseEvent* event) {
    pressed_.reset();  // The release happens over the cells of another folder.
    if (const auto cell = cells().at(event->position()); cell && rows_) {
        rows_->drill(cells().cells()[*cell].row);
    }
}

void TreemapItem::mouseUngrabEvent() {
    pressed_.reset();
}

void TreemapItem::keyPressEvent(QKeyEvent* event) {
    if (event->modifiers().testFlag(Qt::AltModifier)) {
        event->ignore();  // Alt+Up leads to the folder around this one.
        return;
    }
    switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_Down:
            moveHovered(event->key());
            return;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (rows_) {
                rows_->drill(hoveredRow());
            }
            return;
        case Qt::Key_Space:
            if (rows_) {
                rows_->select(hoveredRow());
            }
            return;
        default:
            event->ignore();
    }
}

void TreemapItem::focusInEvent(QFocusEvent* event) {
    QQuickPaintedItem::focusInEvent(event);
    updateHovered();
}

void TreemapItem::focusOutEvent(QFocusEvent* event) {
    QQuickPaintedItem::focusOutEvent(event);
    updateHovered();
}

// ---- The picture ---------------------------------------------------------------------------

void TreemapItem::paint(QPainter* painter) {
    const double scale = painter->deviceTransform().m11();
    if (picture_.isNull() || scale != scale_) {
        scale_ = scale;
        picture_ = blank(scaled(boundingRect(), scale).size());
        QPainter whole{&picture_};
        whole.scale(scale, scale);
        cells().draw(whole, boundingRect(), std::nullopt);
    }
    painter->save();
    // Unscaled: drawing a scaled image takes several times as long.
    painter->scale(1 / scale, 1 / scale);
    painter->drawImage(0, 0, picture_);
    if (hovered_) {
        drawHovered(*painter);
    }
    painter->restore();
}

void TreemapItem::drawHovered(QPainter& painter) const {
    // The cell is redrawn from the background up, with everything that extends into it from its
    // neighbours. Drawn over the picture, it would cover a label or let the usual fill show
    // through.
    const TreemapCells::Cell& cell = cells().cells()[*hovered_];
    const QRect part = scaled(cell.drawn, scale_);
    QImage patch = blank(part.size());
    QPainter patchPainter{&patch};
    patchPainter.translate(-part.topLeft());
    patchPainter.scale(scale_, scale_);
    cells().draw(
        patchPainter,
        QRectF{QPointF{part.topLeft()} / scale_, QSizeF{part.size()} / scale_},
        hovered_);
    if (hoveredBy_ == By::keys && hasActiveFocus()) {
        constexpr double kRing = 3.5;
        patchPainter.setPen(QPen{Qt::white, 1, Qt::DotLine});
        patchPainter.setBrush(Qt::NoBrush);
        patchPainter.drawRect(cell.drawn.adjusted(kRing, kRing, -kRing, -kRing));
    }
    patchPainter.end();
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(part.topLeft(), patch);
}

// ---- Accessibility -------------------------------------------------------------------------

QQmlProperty TreemapItem::accessible(const char* property) {
    // The attached property as the QML file sees it: C++ has no public access.
    return {this, "Accessible." + QString::fromLatin1(property), qmlContext(this)};
}

void TreemapItem::componentComplete() {
    QQuickPaintedItem::componentComplete();
    accessible("role").write(QAccessible::Graphic);
    accessible("focusable").write(true);
    if (QQmlProperty name = accessible("name"); name.read().toString().isEmpty()) {
        name.write(tr("Treemap"));
    }
    const auto describe = [this] {
        // When the window closes, the rows may be destroyed before this item, and its QML context
        // before both.
        if (const QQmlContext* context = qmlContext(this); !context || !context->isValid()) {
            return;
        }
        const FileNode* node = hoveredNode();
        accessible("description")
            .write(
                node != nullptr
                    ? shown(node->name()) + ", " + QString::fromStdString(Fmt::bytes(node->size))
                    : QString{});
    };
    connect(this, &TreemapItem::hoveredChanged, this, describe);
    describe();
}

}  // namespace Brimlo
