#include "BrimloApp/Components/Format.h"

#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/Models/CleanupRule.h"
#include "BrimloCore/Platform/Fmt.h"

#include <QtCore/QHash>
#include <QtCore/QLocale>
#include <QtCore/QRegularExpression>
#include <QtGui/QFont>
#include <QtGui/QFontMetricsF>
#include <QtGui/QRawFont>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace Brimlo {

namespace {

/// Rounded towards zero and clamped to what fits; NaN is 0.
std::int64_t whole(double count) {
    constexpr double kMost = 9.2e18;
    return std::isnan(count) ? 0 : static_cast<std::int64_t>(std::clamp(count, 0.0, kMost));
}

bool breaksTheLine(QChar character) {
    switch (character.category()) {
        case QChar::Other_Control:
        case QChar::Separator_Line:
        case QChar::Separator_Paragraph:
            return true;
        default:
            return false;
    }
}

bool turnsTheDirection(QChar character) {
    switch (character.direction()) {
        case QChar::DirLRE:
        case QChar::DirLRO:
        case QChar::DirRLE:
        case QChar::DirRLO:
        case QChar::DirPDF:
        case QChar::DirLRI:
        case QChar::DirRLI:
        case QChar::DirFSI:
        case QChar::DirPDI:
            return true;
        default:
            return false;
    }
}

/// The locale's long date without the day of the week and with a short month: Qt has no format
/// between the long and the numeric one.
QString abbreviated(const QDate& date) {
    static const QRegularExpression kWeekday(QStringLiteral("[,\u060C ]*dddd[,\u060C ]*"));
    const QLocale locale;
    auto form = locale.dateFormat(QLocale::LongFormat);
    form.remove(kWeekday).replace(QStringLiteral("MMMM"), QStringLiteral("MMM"));
    return locale.toString(date, form);
}

// The default digits of Inter differ in width. Tabular ones are the font feature "tnum", which Qt
// can't request before 6.7; some releases of Inter also have them as characters.
constexpr char16_t kEvenZero = 0xE071;

/// Whether those characters are tabular digits: each as high as the default digit, and all of one
/// width.
bool hasEvenDigits(const QString& family) {
    const QRawFont font = QRawFont::fromFont(QFont{family});
    for (char16_t i = 0; i < 10; ++i) {
        const auto usual = font.glyphIndexesForString(QChar{static_cast<char16_t>(u'0' + i)});
        const auto even = font.glyphIndexesForString(
            QString{QChar{kEvenZero}} + QChar{static_cast<char16_t>(kEvenZero + i)});
        if (usual.size() != 1 || even.size() != 2 || even.contains(0U)) {
            return false;
        }
        const auto widths = font.advancesForGlyphIndexes(even);
        if (widths[0] != widths[1] ||
            font.boundingRect(usual[0]).height() != font.boundingRect(even[1]).height()) {
            return false;
        }
    }
    return true;
}

}  // namespace

QString Format::bytes(double count) {
    return QString::fromStdString(Fmt::bytes(whole(count)));
}

QString Format::days(int count) {
    return QString::fromStdString(Fmt::days(count));
}

QString Format::count(double count) {
    return QLocale().toString(static_cast<qlonglong>(whole(count)));
}

QString Format::percent(double share) {
    const double part = share > 0 ? std::min(share, 1.0) : 0;  // Also of what is no number.
    const int whole = qRound(part * 100);
    const QLocale locale;
    return part > 0 && whole == 0 ? u'<' + locale.toString(1) + locale.percent()
                                  : locale.toString(whole) + locale.percent();
}

QString Format::risk(const QString& word) {
    const auto* found =
        std::ranges::find(kAllRisks, word.toStdString(), [](Risk risk) { return rawValue(risk); });
    return found == kAllRisks.end() ? QString{} : words(label(*found));
}

QString Format::date(const QDateTime& moment) {
    return moment.isValid() ? abbreviated(moment.toLocalTime().date()) : QString();
}

QString Format::widestDate(const QString& family, int pixelSize) {
    QFont font{family};
    font.setPixelSize(pixelSize);
    const QFontMetricsF metrics{font};
    const auto isNarrower = [&](const QString& one, const QString& other) {
        return metrics.horizontalAdvance(one) < metrics.horizontalAdvance(other);
    };
    QStringList digits;
    for (int digit = 0; digit < 10; ++digit) {
        digits.append(QLocale().toString(digit));
    }
    // Only the locale's own: Tibetan has others in the names of its months.
    const QRegularExpression anyDigit(u'[' + digits.join(QString{}) + u']');
    const QString digit = *std::ranges::max_element(digits, isNarrower);
    QStringList dates;
    for (int month = 1; month <= 12; ++month) {
        dates.append(abbreviated(QDate(2028, month, 28)).replace(anyDigit, digit));
    }
    return *std::ranges::max_element(dates, isNarrower);
}

QString Format::dateTime(const QDateTime& moment) {
    if (!moment.isValid()) {
        return {};
    }
    const auto local = moment.toLocalTime();
    return QStringLiteral("%1, %2").arg(
        abbreviated(local.date()), QLocale().toString(local.time(), QLocale::ShortFormat));
}

QString Format::oneLine(const QString& text) {
    auto line = text;
    for (auto& character : line) {
        if (breaksTheLine(character) || turnsTheDirection(character)) {
            character = QChar::ReplacementCharacter;
        }
    }
    return line;
}

QString Format::withCode(const QString& text) {
    QStringList parts = text.toHtmlEscaped().split(u'`');
    const bool isPaired = parts.size() % 2 == 1;
    for (qsizetype i = 1; i < parts.size() && isPaired; i += 2) {
        parts[i] = QStringLiteral("<span style=\"font-family:monospace\">%1</span>").arg(parts[i]);
    }
    return parts.join(isPaired ? QString{} : QStringLiteral("`")).replace(u'\n', "<br>");
}

QString Format::evenDigits(const QString& text, const QString& family) {
    static QHash<QString, bool>
        families;  // Main thread only. Cached, because examining a font is slow.
    auto known = families.find(family);
    if (known == families.end()) {
        known = families.insert(family, hasEvenDigits(family));
    }
    auto even = text;
    for (auto& character : even) {
        if (*known && character >= u'0' && character <= u'9') {
            character = QChar{static_cast<char16_t>(character.unicode() - u'0' + kEvenZero)};
        }
    }
    return even;
}

}  // namespace Brimlo
