#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/qqmlregistration.h>

namespace Brimlo {

/// Values in words for QML. Numbers arrive as doubles, since QML has no wider integer.
class Format : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// "12.34 GB"; what no count of bytes can be is "0 bytes".
    Q_INVOKABLE [[nodiscard]] static QString bytes(double count);
    /// "today", "12d", "3mo" or "1.5y".
    Q_INVOKABLE [[nodiscard]] static QString days(int count);
    /// In the digits and groups of the user's language.
    Q_INVOKABLE [[nodiscard]] static QString count(double count);
    /// An abbreviated date without time, or nothing for a date that is none.
    Q_INVOKABLE [[nodiscard]] static QString date(const QDateTime& moment);
    /// A text as wide as the widest date of a year with four digits, for the width of a column.
    Q_INVOKABLE [[nodiscard]] static QString widestDate(const QString& family, int pixelSize);
    /// The same as `date` with hours and minutes.
    Q_INVOKABLE [[nodiscard]] static QString dateTime(const QDateTime& moment);
    /// Fit for one line, whatever a file is called: what would break it or turn its direction
    /// shows as U+FFFD.
    Q_INVOKABLE [[nodiscard]] static QString oneLine(const QString& text);
    /// To be shown in a column: with digits of one width, when the font family has such beside the
    /// usual ones. What is not for the eye alone gets the text as it is.
    Q_INVOKABLE [[nodiscard]] static QString evenDigits(const QString& text, const QString& family);
};

}  // namespace Brimlo
