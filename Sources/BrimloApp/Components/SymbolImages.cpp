#include "BrimloApp/Components/SymbolImages.h"

#include "BrimloApp/Components/SymbolTable.h"

#include <QtCore/QFile>
#include <QtCore/QStringList>
#include <QtGui/QColor>
#include <QtGui/QPainter>
#include <QtSvg/QSvgRenderer>

namespace Brimlo {
namespace {

constexpr int kDrawnSize = 24;

/// The drawing's text, or nothing.
QByteArray drawing(const QString& symbol) {
    const auto name = SymbolTable::file(symbol.toStdString());
    if (!name) {
        return {};
    }
    const auto base = QString::fromUtf8(name->data(), static_cast<qsizetype>(name->size()));
    QFile file(QStringLiteral(":/qt/qml/Brimlo/icons/%1.svg").arg(base));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Strokes and fills alike in one colour: what the drawings call "currentColor".
QByteArray tinted(QByteArray svg, const QColor& color, const QString& stroke) {
    svg.replace("currentColor", color.name(QColor::HexRgb).toLatin1());
    bool isNumber = false;
    if (stroke.toDouble(&isNumber) > 0 && isNumber) {
        svg.replace("stroke-width=\"2\"", "stroke-width=\"" + stroke.toLatin1() + '"');
    }
    return svg;
}

}  // namespace

QImage SymbolImages::requestImage(
    const QString& id, QSize* const size, const QSize& requestedSize) {
    const auto wanted = requestedSize.isValid() ? requestedSize : QSize(kDrawnSize, kDrawnSize);
    if (size != nullptr) {
        *size = wanted;
    }
    QImage image(wanted, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const auto parts = id.split(QLatin1Char('/'));
    const QColor color(QLatin1Char('#') + parts.value(1));
    const auto svg = drawing(parts.value(0));
    if (image.isNull() || svg.isEmpty() || !color.isValid()) {
        return image;
    }
    QPainter painter(&image);
    // Once for the whole, so that strokes which cross don't show darker where they do.
    painter.setOpacity(color.alphaF());
    QSvgRenderer(tinted(svg, color, parts.value(2))).render(&painter);
    return image;
}

}  // namespace Brimlo
