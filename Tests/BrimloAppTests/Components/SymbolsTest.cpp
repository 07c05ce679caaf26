#include "BrimloApp/Components/Symbols.h"

#include "BrimloApp/Shell/Sections.h"
#include "BrimloApp/SmartClean/SuggestionRows.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtGui/QImage>
#include <gtest/gtest.h>

#include <set>
#include <string>

namespace Brimlo {
namespace {

const QString kSources = QStringLiteral(BRIMLO_APP_SOURCES);

TEST(SymbolsTest, HasADrawingForWhateverTheProgramNames) {
    std::set<std::string> named;
    for (const QVariant& audience : SuggestionRows::audiences()) {
        named.insert(audience.toMap().value("symbol").toString().toStdString());
    }
    for (const QVariant& section : Sections::all()) {
        named.insert(section.toMap().value("symbol").toString().toStdString());
    }
    // Words with a dot in them stand for nothing else in the screens, short ones only as values of
    // a symbol.
    const QRegularExpression naming(
        QStringLiteral("symbol: *\"([^\"]*)\"|[\"?:] *\"([a-z][a-z0-9]*(?:\\.[a-z0-9]+)+)\""));
    int files = 0;
    QDirIterator all(
        kSources, {QStringLiteral("*.qml")}, QDir::Files, QDirIterator::Subdirectories);
    while (all.hasNext()) {
        QFile file(all.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        ++files;
        auto found = naming.globalMatch(QString::fromUtf8(file.readAll()));
        while (found.hasNext()) {
            const auto match = found.next();
            named.insert((match.captured(1) + match.captured(2)).toStdString());
        }
    }
    named.erase("");
    EXPECT_GT(files, 40);
    EXPECT_GT(named.size(), 20U);
    for (const auto& entry : Symbols::entries()) {
        named.emplace(entry.symbol);
    }
    SymbolImages images;
    const QImage empty = images.requestImage("none/ff2080c0", nullptr, {});
    for (const std::string& symbol : named) {
        const auto id = QString::fromStdString(symbol + "/ff2080c0/2");
        EXPECT_NE(images.requestImage(id, nullptr, {}), empty) << symbol;
    }
}

}  // namespace
}  // namespace Brimlo
