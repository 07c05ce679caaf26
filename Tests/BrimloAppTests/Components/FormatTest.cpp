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

TEST(FormatTest, WritesAShareOfAnyNumber) {
    QLocale::setDefault(QLocale::c());
    EXPECT_EQ(Format::percent(0), "0%");
    EXPECT_EQ(Format::percent(1e-9), "<1%") << "there is something";
    EXPECT_EQ(Format::percent(0.125), "13%");
    EXPECT_EQ(Format::percent(1.5), "100%");
    EXPECT_EQ(Format::percent(std::nan("")), "0%");
    EXPECT_EQ(Format::percent(-std::numeric_limits<double>::infinity()), "0%");
}

TEST(FormatTest, KeepsAnyNameOnOneLineAndInOneDirection) {
    EXPECT_EQ(Format::oneLine(u"a\nb\rc\td\u2028e"_qs), u"a\uFFFDb\uFFFDc\uFFFDd\uFFFDe"_qs);
    EXPECT_EQ(Format::oneLine(u"x\u202Egpj.exe\u2067"_qs), u"x\uFFFDgpj.exe\uFFFD"_qs);
    EXPECT_EQ(Format::oneLine(u"שלום 😀 é"_qs), u"שלום 😀 é"_qs);
}

TEST(FormatTest, ShowsCodeAndNoOtherMarkup) {
    const QString code = u"a <span style=\"font-family:monospace\">b &lt;c&gt;</span>"_qs;
    EXPECT_EQ(Format::withCode(u"a `b <c>`"_qs), code);
    EXPECT_EQ(Format::withCode(u"<b>a` b\nc"_qs), u"&lt;b&gt;a` b<br>c"_qs);
}

TEST(FormatTest, KnowsTheWidestDateOfEachLocale) {
    QFont font;
    font.setPixelSize(13);
    const QFontMetricsF metrics{font};
    const auto all =
        QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory);
    for (const QLocale& locale : all) {
        QLocale::setDefault(locale);
        const QString widest = Format::widestDate(font.family(), font.pixelSize());
        const double room = std::ceil(metrics.horizontalAdvance(widest));
        for (QDate day{2023, 1, 1}; day.year() < 2025; day = day.addDays(9)) {
            const QString date = Format::date(day.startOfDay());
            EXPECT_LE(metrics.horizontalAdvance(date), room)
                << locale.name().toStdString() << ": " << date.toStdString();
        }
    }
}

}  // namespace
}  // namespace Brimlo
