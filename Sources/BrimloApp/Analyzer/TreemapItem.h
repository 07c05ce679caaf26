#pragma once

#include "BrimloApp/Analyzer/NodeRows.h"
#include "BrimloApp/Analyzer/TreemapCells.h"

#include <QtCore/QPointer>
#include <QtGui/QImage>
#include <QtQml/QQmlProperty>
#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickPaintedItem>

#include <cstddef>
#include <optional>

namespace Brimlo {

/// The current folder as a treemap, with pointer and keyboard.
///
/// A click selects a cell, a double click opens its folder. The arrow keys move from cell to cell,
/// Return opens, Space selects. At most one cell is hovered, by the pointer or by the keyboard.
///
/// The picture is kept as an image, because drawing thousands of rounded cells takes longer than a
/// frame; the hovered cell is drawn over it. It looks the same in software and hardware rendering.
class TreemapItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(Brimlo::NodeRows* rows READ rows WRITE setRows NOTIFY rowsChanged)
    // The font family of the labels; empty for the application's.
    Q_PROPERTY(QString fontFamily READ fontFamily WRITE setFontFamily NOTIFY fontFamilyChanged)
    // The background colour.
    Q_PROPERTY(QColor ground READ ground WRITE setGround NOTIFY groundChanged)
    // Of the hovered entry: -1, empty and 0 if there is none.
    Q_PROPERTY(int hoveredRow READ hoveredRow NOTIFY hoveredChanged)
    Q_PROPERTY(QString hoveredName READ hoveredName NOTIFY hoveredChanged)
    // The middle of the hovered cell.
    Q_PROPERTY(QPointF hoveredPlace READ hoveredPlace NOTIFY hoveredChanged)
    Q_PROPERTY(double hoveredSize READ hoveredSize NOTIFY hoveredChanged)
    Q_PROPERTY(QString hoveredGrowth READ hoveredGrowth NOTIFY hoveredChanged)

public:
    explicit TreemapItem(QQuickItem* parent = nullptr);

    [[nodiscard]] NodeRows* rows() const { return rows_; }
    void setRows(NodeRows* rows);
    [[nodiscard]] const QString& fontFamily() const { return fontFamily_; }
    void setFontFamily(const QString& family);
    [[nodiscard]] const QColor& ground() const { return ground_; }
    void setGround(const QColor& color);
    [[nodiscard]] int hoveredRow() const;
    [[nodiscard]] QString hoveredName() const;
    [[nodiscard]] QPointF hoveredPlace() const;
    [[nodiscard]] double hoveredSize() const;
    /// Since an earlier scan, as in `NodeRows::growth`.
    [[nodiscard]] QString hoveredGrowth() const;

    /// The cells at this moment.
    [[nodiscard]] const TreemapCells& cells() const;

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void rowsChanged();
    void fontFamilyChanged();
    void groundChanged();
    void hoveredChanged();

protected:
    void componentComplete() override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    void hoverEnterEvent(QHoverEvent* event) override { hoverMoveEvent(event); }
    void hoverMoveEvent(QHoverEvent* event) override;
    void hoverLeaveEvent(QHoverEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseUngrabEvent() override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    enum class By { pointer, keys };

    /// Lays the cells out again.
    void rearrange();
    /// Draws the cells again.
    void repaint();
    void setHovered(std::optional<std::size_t> cell, By by);
    void updateHovered();
    void moveHovered(int key);
    [[nodiscard]] const FileNode* hoveredNode() const;
    void drawHovered(QPainter& painter) const;
    /// A property of the attached `Accessible`.
    QQmlProperty accessible(const char* property);

    QPointer<NodeRows> rows_;
    QString fontFamily_;
    QColor ground_ = Qt::white;
    mutable std::optional<TreemapCells> cells_;  ///< Absent until they are needed again.
    QImage picture_;    ///< All cells without a hovered one; null until it is needed again.
    double scale_ = 0;  ///< Pixels of the picture per unit of the item.

    std::optional<std::size_t> hovered_;
    By hoveredBy_ = By::pointer;
    std::optional<QPointF> pointer_;  ///< Absent while the pointer is elsewhere.
    std::optional<std::size_t> pressed_;
};

}  // namespace Brimlo
