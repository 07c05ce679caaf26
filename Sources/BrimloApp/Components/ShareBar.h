#pragma once

#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtQuick/QQuickPaintedItem>

namespace Brimlo {

/// A share from 0 to 1 as a bar, and in percent at the right of it. Main thread.
///
/// One item of the scene: as two rectangles and a text, a column of them took a third of the time
/// in which a list is drawn in software.
class ShareBar : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(double share MEMBER share_ NOTIFY changed)
    // The width of the bar alone.
    Q_PROPERTY(double barWidth MEMBER barWidth_ NOTIFY changed)
    // The colours of the bar, of what it fills, and of the text.
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY changed)
    Q_PROPERTY(QColor groove MEMBER groove_ NOTIFY changed)
    Q_PROPERTY(QColor ink MEMBER ink_ NOTIFY changed)
    Q_PROPERTY(QFont font MEMBER font_ NOTIFY changed)

public:
    explicit ShareBar(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    double share_ = 0;
    double barWidth_ = 0;
    QColor color_;
    QColor groove_;
    QColor ink_;
    QFont font_;
};

}  // namespace Brimlo
