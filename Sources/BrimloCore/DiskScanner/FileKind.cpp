#include "BrimloCore/DiskScanner/FileKind.h"

#include "BrimloCore/DiskScanner/FileNode.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace Brimlo {

namespace {

struct Row {
    std::string_view rawValue;
    std::string_view label;
    std::string_view extensions;  ///< Each between two spaces.
};

// In the order of the kinds.
constexpr std::array<Row, kAllFileKinds.size()> kRows{
    {
     {"folder", "Folders", ""},
     {"video",
         "Video",
         " mp4 mov m4v mkv avi webm prores insv braw mpg mpeg m2ts mts vob wmv flv ogv 3gp "},
     {"audio", "Audio", " mp3 wav aiff aif flac m4a aac logicx als ogg opus wma alac "},
     {"image",
         "Images",
         " jpg jpeg png heic heif raw arw cr2 cr3 dng nef orf raf rw2 psd psb xcf tif tiff gif "
         "webp "
         "avif bmp svg "},
     {"archive",
         "Archives & disk images",
         " zip dmg iso tar gz tgz bz2 xz zst 7z rar xip pkg deb rpm img sparseimage qcow2 vmdk vdi "
         "vhd vhdx "},
     {"code",
         "Code & binaries",
         " swift js ts py rs go dart c cpp h java json o a so dylib dll exe msi class jar wasm apk "
         "appimage "},
     {"document",
         "Documents",
         " pdf doc docx xls xlsx ppt pptx pages numbers key odt ods odp epub djvu rtf txt md csv "},
     {"other", "Other", ""},
     }
};

const Row& rowOf(FileKind kind) {
    return kRows[static_cast<std::size_t>(kind)];
}

/// The kind of the first row that `fits`.
template <typename Fits>
std::optional<FileKind> firstKind(const Fits& fits) {
    const auto* row = std::ranges::find_if(kRows, fits);
    return row == kRows.end() ? std::nullopt
                              : std::optional{static_cast<FileKind>(row - kRows.begin())};
}

}  // namespace

FileKind kindOf(const FileNode& node) {
    if (node.isAggregate) {
        return FileKind::other;
    }
    return node.isDirectory ? FileKind::folder : kindOfFile(node.name());
}

FileKind kindOfFile(std::string_view name) {
    const auto dot = name.rfind('.');
    // A name whose only dot is its first character has no extension.
    if (dot == std::string_view::npos || dot == 0 ||
        name.find(' ', dot) != std::string_view::npos) {
        return FileKind::other;
    }
    const std::string word = " " + Text::lowercased(name.substr(dot + 1)) + " ";
    return firstKind([&](const Row& row) { return row.extensions.contains(word); })
        .value_or(FileKind::other);
}

std::string_view rawValue(FileKind kind) {
    return rowOf(kind).rawValue;
}

std::optional<FileKind> fileKindFromRawValue(std::string_view word) {
    return firstKind([&](const Row& row) { return row.rawValue == word; });
}

std::string_view label(FileKind kind) {
    return rowOf(kind).label;
}

}  // namespace Brimlo
