#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/qqmlregistration.h>

namespace Brimlo {

/// Values as texts for QML. Numbers arrive as doubles, because QML has no 64-bit integers.
class Format : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// "12.34 GB"; "0 bytes" for a negative number or NaN.
    Q_INVOKABLE [[nodiscard]] static QString bytes(double count);
    /// "today", "12d", "3mo" or "1.5y".
    Q_INVOKABLE [[nodiscard]] static QString days(int count);
    /// With the digits and separators of the user's language.
    Q_INVOKABLE [[nodiscard]] static QString count(double count);
    /// A share from 0 to 1 in whole percent: "12%", "<1%" for less than half of one.
    Q_INVOKABLE [[nodiscard]] static QString percent(double share);
    /// The label of a rating given by its word: "Safe" for "safe". Empty for any other word.
    Q_INVOKABLE [[nodiscard]] static QString risk(const QString& word);
    /// A short date without time; empty for an invalid date.
    Q_INVOKABLE [[nodiscard]] static QString date(const QDateTime& moment);
    /// The widest date of a year with four digits, for the width of a column.
    Q_INVOKABLE [[nodiscard]] static QString widestDate(const QString& family, int pixelSize);
    /// `date` with hours and minutes.
    Q_INVOKABLE [[nodiscard]] static QString dateTime(const QDateTime& moment);
    /// Safe on one line, whatever a file is called: characters that would break it or change its
    /// direction become U+FFFD.
    Q_INVOKABLE [[nodiscard]] static QString oneLine(const QString& text);
    /// Markup for a text in which backticks enclose code: without the backticks, the code in a font
    /// of fixed width. Nothing else in the text counts as markup.
    Q_INVOKABLE [[nodiscard]] static QString withCode(const QString& text);
    /// With tabular digits, if the font family has them. Only for display: screen readers get the
    /// original text.
    Q_INVOKABLE [[nodiscard]] static QString evenDigits(const QString& text, const QString& family);
};

}  // namespace Brimlo
