#include "BrimloApp/Components/Symbols.h"

#include "BrimloApp/Components/SymbolImages.h"
#include "BrimloApp/Components/SymbolTable.h"

#include <QtCore/QDebug>
#include <QtQml/QQmlEngine>

namespace Brimlo {

Symbols* Symbols::create(QQmlEngine* const engine, QJSEngine* /*scripts*/) {
    engine->addImageProvider(QStringLiteral("symbol"), new SymbolImages);  // The engine owns it.
    return new Symbols;                                                    // And this.
}

QUrl Symbols::source(const QString& symbol, const QColor& color, const double strokeWidth) {
    if (symbol.isEmpty()) {
        return {};
    }
    if (!SymbolTable::file(symbol.toStdString())) {
        qWarning().noquote() << "no drawing stands for the symbol" << symbol;
        return {};
    }
    return QUrl(QStringLiteral("image://symbol/%1/%2/%3")
                    .arg(symbol, color.name(QColor::HexArgb).sliced(1))
                    .arg(strokeWidth));
}

}  // namespace Brimlo
