#pragma once

#include "BrimloCore/Support/Text.h"

#include <QtCore/QString>

#include <cstdint>
#include <string_view>

namespace Brimlo {

/// A text that came from file names, as a screen shows it: on one line and well-formed.
[[nodiscard]] inline QString shown(const std::string_view text) {
    return QString::fromStdString(Text::printable(text));
}

/// A count of bytes or files, as QML takes it: it has no wide integers.
[[nodiscard]] inline double number(const std::int64_t count) {
    return static_cast<double>(count);
}

}  // namespace Brimlo
