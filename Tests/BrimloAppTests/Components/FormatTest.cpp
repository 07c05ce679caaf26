#include "BrimloApp/Components/Format.h"

#include <QtCore/QLocale>
#include <QtGui/QFont>
#include <QtGui/QFontMetricsF>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Brimlo {
namespace {

TEST(FormatTest, WritesBytesOfAnyNumber) {
    EXPECT_EQ(Format::bytes(12.34e9), "12.34 GB");
    EXPECT_EQ(Format::bytes(-1), Format::bytes(0));
    EXPECT_EQ(Format::bytes(std::nan("")), Format::bytes(0));
    EXPECT_EQ(Format::bytes(std::numeric_limits<double>::infinity()), Format::bytes(9.2e18));
}

TEST(FormatTest, LeavesRoomForEveryDateOfAYear) {
    const QString family = QStringLiteral("Inter");
    QFont font{family};
    font.setPixelSize(13);
    const QFontMetricsF metrics{font};
    for (const auto* locale : {"C", "en_US", "de_DE", "fr_FR", "ja_JP", "ar_EG"}) {
        QLocale::setDefault(QLocale(QString::fromLatin1(locale)));
        const double room = std::ceil(metrics.horizontalAdvance(Format::widestDate(family, 13)));
        for (QDate date{2044, 1, 1}; date.year() == 2044; date = date.addDays(1)) {
            const QString text = Format::date(date.startOfDay());
            ASSERT_LE(metrics.horizontalAdvance(text), room) << locale << ' ' << text.toStdString();
        }
    }
}

TEST(FormatTest, KeepsAnyNameOnOneLineAndInOneDirection) {
    EXPECT_EQ(Format::oneLine(u"a\nb\rc\td\u2028e"_qs), u"a\uFFFDb\uFFFDc\uFFFDd\uFFFDe"_qs);
    EXPECT_EQ(Format::oneLine(u"x\u202Egpj.exe\u2067"_qs), u"x\uFFFDgpj.exe\uFFFD"_qs);
    EXPECT_EQ(Format::oneLine(u"שלום 😀 é"_qs), u"שלום 😀 é"_qs);
}

}  // namespace
}  // namespace Brimlo
