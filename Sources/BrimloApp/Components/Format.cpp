#include "BrimloApp/Components/Format.h"

#include "BrimloCore/Support/Fmt.h"

#include <QtCore/QLocale>
#include <QtCore/QRegularExpression>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace Brimlo {
namespace {

/// The whole number nearest to it, within what is counted.
std::int64_t whole(const double count) {
    constexpr double kMost = 9.2e18;
    return std::isnan(count) ? 0 : static_cast<std::int64_t>(std::clamp(count, 0.0, kMost));
}

bool breaksTheLine(const QChar character) {
    switch (character.category()) {
        case QChar::Other_Control:
        case QChar::Separator_Line:
        case QChar::Separator_Paragraph:
            return true;
        default:
            return false;
    }
}

bool turnsTheDirection(const QChar character) {
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

/// The locale's long date without the day of the week and with the month's short name, since Qt
/// knows no form between the long one and the one in digits.
QString abbreviated(const QDate& date) {
    static const QRegularExpression kWeekday(QStringLiteral("[,\u060C ]*dddd[,\u060C ]*"));
    const QLocale locale;
    auto form = locale.dateFormat(QLocale::LongFormat);
    form.remove(kWeekday).replace(QStringLiteral("MMMM"), QStringLiteral("MMM"));
    return locale.toString(date, form);
}

}  // namespace

QString Format::bytes(const double count) {
    return QString::fromStdString(Fmt::bytes(whole(count)));
}

QString Format::days(const int count) {
    return QString::fromStdString(Fmt::days(count));
}

QString Format::count(const double count) {
    return QLocale().toString(static_cast<qlonglong>(whole(count)));
}

QString Format::date(const QDateTime& moment) {
    return moment.isValid() ? abbreviated(moment.toLocalTime().date()) : QString();
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

}  // namespace Brimlo
