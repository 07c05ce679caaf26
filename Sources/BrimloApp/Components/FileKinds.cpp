#include "BrimloApp/Components/FileKinds.h"

#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Support/Path.h"

#include <QtCore/QByteArray>
#include <QtGui/QImageReader>

#include <array>
#include <cstddef>
#include <string_view>

namespace Brimlo {

namespace {

/// An sRGB colour, each part from 0 to 1.
struct Color {
    float red = 0;
    float green = 0;
    float blue = 0;
};

// In the order of the kinds.
constexpr std::array<Color, kAllFileKinds.size()> kColors{
    {
     {0.36F, 0.40F, 0.46F},
     {0.76F, 0.38F, 0.30F},
     {0.80F, 0.60F, 0.28F},
     {0.36F, 0.62F, 0.48F},
     {0.32F, 0.52F, 0.66F},
     {0.58F, 0.62F, 0.40F},
     {0.62F, 0.58F, 0.52F},
     {0.45F, 0.48F, 0.52F},
     }
};

FileKind at(int kind) {
    return kind < 0 || kind >= FileKinds::count() ? FileKind::other
                                                  : kAllFileKinds[static_cast<std::size_t>(kind)];
}

}  // namespace

QColor FileKinds::colorOf(FileKind kind) {
    const auto [red, green, blue] = kColors[static_cast<std::size_t>(kind)];
    return QColor::fromRgbF(red, green, blue);
}

int FileKinds::count() {
    return static_cast<int>(kAllFileKinds.size());
}

QUrl FileKinds::picture(const std::string& path) {
    static const QList<QByteArray> kFormats = QImageReader::supportedImageFormats();
    const std::string_view name = Path::name(path);
    const auto format = QByteArray::fromStdString(std::string{name.substr(name.rfind('.') + 1)});
    if (!kFormats.contains(format.toLower())) {
        return {};
    }
    // Reading a pipe of that name would wait forever.
    const auto status = Platform::entryStatus(path.c_str());
    const bool isFile = status && status->kind == Platform::EntryStatus::Kind::file;
    return isFile ? QUrl::fromLocalFile(fromPath(path)) : QUrl{};
}

QString FileKinds::label(int kind) {
    return words(Brimlo::label(at(kind)));
}

QColor FileKinds::color(int kind) {
    return colorOf(at(kind));
}

}  // namespace Brimlo
