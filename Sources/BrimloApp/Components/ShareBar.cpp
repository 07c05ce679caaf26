#include "BrimloApp/Components/ShareBar.h"

#include "BrimloApp/Components/Format.h"

#include <QtGui/QPainter>

#include <algorithm>

namespace Brimlo {

ShareBar::ShareBar(QQuickItem* parent)
    : QQuickPaintedItem{parent} {
    connect(this, &ShareBar::changed, this, [this] { update(); });
}

void ShareBar::paint(QPainter* painter) {
    constexpr double kHeight = 4;
    const QRectF bar{0, (height() - kHeight) / 2, barWidth_, kHeight};
    const auto draw = [&](const QRectF& place, const QColor& color) {
        painter->setBrush(color);
        painter->drawRoundedRect(place, kHeight / 2, kHeight / 2);
    };
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    draw(bar, groove_);
    if (share_ > 0) {
        QRectF filled = bar;
        filled.setWidth(std::clamp(barWidth_ * share_, kHeight, barWidth_));
        draw(filled, color_);
    }
    painter->setPen(ink_);
    painter->setFont(font_);
    painter->drawText(
        QRectF{0, 0, width(), height()},
        Qt::AlignRight | Qt::AlignVCenter,
        Format::percent(share_));
}

}  // namespace Brimlo
