#pragma once

#include "BrimloCore/Support/Text.h"

#include <QtCore/QString>

#include <string_view>

namespace Brimlo {

/// A text that came from file names, as a screen shows it: on one line and well-formed.
[[nodiscard]] inline QString shown(const std::string_view text) {
    return QString::fromStdString(Text::printable(text));
}

}  // namespace Brimlo
