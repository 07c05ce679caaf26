#pragma once

#include "BrimloCore/Support/Text.h"

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QString>

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

/// How values of the core are shown to QML as properties and roles, and how they come back.
namespace Brimlo {

/// Stores a value in a field of `object`, and emits `changed` if the value differs.
template <typename Object, typename T>
void assign(Object& object, T& field, std::type_identity_t<T> value, void (Object::*changed)()) {
    if (field != value) {
        field = std::move(value);
        Q_EMIT(object.*changed)();
    }
}

/// A text that comes from file names, made fit for a screen: on one line and well-formed.
[[nodiscard]] inline QString shown(std::string_view text) {
    return QString::fromStdString(Text::printable(text));
}

/// A text of the program itself, as it is.
[[nodiscard]] inline QString words(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// A count of bytes or files. QML has no 64-bit integers.
[[nodiscard]] inline double number(std::int64_t count) {
    return static_cast<double>(count);
}

/// A moment, in local time.
[[nodiscard]] inline QDateTime dateTime(std::chrono::sys_seconds moment) {
    return QDateTime::fromSecsSinceEpoch(moment.time_since_epoch().count());
}

/// A path that QML hands back unchanged, and that path again.
[[nodiscard]] inline QString fromPath(const std::string& path) {
    return QFile::decodeName(QByteArray::fromStdString(path));
}
[[nodiscard]] inline std::string toPath(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

}  // namespace Brimlo
