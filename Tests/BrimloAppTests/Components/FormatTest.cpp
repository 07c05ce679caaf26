#include "BrimloApp/Components/Format.h"

#include <QtCore/QLocale>
#include <QtCore/QTimeZone>
#include <QtGui/QFont>
#include <QtGui/QFontMetricsF>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string_view>

namespace Brimlo {
namespace {

TEST(FormatTest, WritesBytesOfAnyNumber) {
    EXPECT_EQ(Format::bytes(12.34e9), "12.34 GB");
    EXPECT_EQ(Format::bytes(-1), Format::bytes(0));
    EXPECT_EQ(Format::bytes(std::nan("")), Format::bytes(0));
    EXPECT_EQ(Format::bytes(std::numeric_limits<double>::infinity()), Format::bytes(9.2e18));
}

TEST(FormatTest, SetsFiguresInColumns) {
    const QString family = QStringLiteral("Inter");
    const QFontMetricsF metrics{QFont{family}};
    EXPECT_EQ(Format::evenDigits("no figure, -.,", family), "no figure, -.,");
    EXPECT_EQ(Format::evenDigits("1", QStringLiteral("DejaVu Sans")), "1");
    if (metrics.horizontalAdvance("111") == metrics.horizontalAdvance("888") ||
        Format::evenDigits("1", family) == "1") {
        GTEST_SKIP() << "this Inter has even digits as its usual ones, or not as characters";
    }
    const double width = metrics.horizontalAdvance(Format::evenDigits("000.0", family));
    for (const char digit : std::string_view{"123456789"}) {
        const QString figure = QString{"000.0"}.replace('0', QChar{digit});
        EXPECT_EQ(metrics.horizontalAdvance(Format::evenDigits(figure, family)), width) << digit;
    }
}

TEST(FormatTest, FollowsTheUsersLanguage) {
    struct Case {
        const char* locale;
        const char* count;
        const char* date;
    };
    const Case cases[] = {
        {"en_US", "1,234,567",           "Mar 9, 2026"    },
        {"de_DE", "1.234.567",           "9. März 2026"  },
        {"fr_FR", "1\u202F234\u202F567", "9 mars 2026"    },
        {"ja_JP", "1,234,567",           "2026年3月9日"},
    };
    const QDateTime moment(QDate(2026, 3, 9), QTime(14, 5));
    for (const auto& c : cases) {
        SCOPED_TRACE(c.locale);
        QLocale::setDefault(QLocale(QString::fromLatin1(c.locale)));
        EXPECT_EQ(Format::count(1234567).toStdString(), c.count);
        EXPECT_EQ(Format::date(moment).toStdString(), c.date);
        EXPECT_TRUE(Format::dateTime(moment).startsWith(QString::fromUtf8(c.date)));
        EXPECT_GT(Format::dateTime(moment).size(), Format::date(moment).size());
    }
    EXPECT_EQ(Format::date(QDateTime()), "");
    EXPECT_EQ(Format::dateTime(QDateTime()), "");
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
