#include "BrimloApp/Components/FileKinds.h"

#include "BrimloApp/Components/FileKind.h"

#include <cstddef>

namespace Brimlo {
namespace {

FileKind at(const int kind) {
    return kind < 0 || kind >= FileKinds::count() ? FileKind::other
                                                  : FileKind::kAll[static_cast<std::size_t>(kind)];
}

}  // namespace

int FileKinds::count() {
    return static_cast<int>(FileKind::kAll.size());
}

QString FileKinds::label(const int kind) {
    const auto text = at(kind).label();
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QColor FileKinds::color(const int kind) {
    const auto color = at(kind).color();
    return QColor::fromRgbF(
        static_cast<float>(color.red),
        static_cast<float>(color.green),
        static_cast<float>(color.blue));
}

}  // namespace Brimlo
