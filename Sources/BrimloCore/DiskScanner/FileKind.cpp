#include "BrimloCore/DiskScanner/FileKind.h"

#include "BrimloCore/DiskScanner/FileNode.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <string>
#include <unordered_map>

namespace Brimlo {

namespace {

struct Row {
    std::string_view rawValue;
    std::string_view label;
    std::string_view extensions;
};

// In the order of the kinds.
constexpr std::array<Row, kAllFileKinds.size()> kRows{
    {
     {"folder", "Folders", ""},
     {"video",
         "Video",
         "mp4 mov m4v mkv avi webm prores insv braw mpg mpeg m2ts mts vob wmv flv ogv 3gp"},
     {"audio", "Audio", "mp3 wav aiff aif flac m4a aac logicx als ogg opus wma alac"},
     {"image",
         "Images",
         "jpg jpeg png heic heif raw arw cr2 cr3 dng nef orf raf rw2 psd psb xcf tif tiff gif "
         "webp avif bmp svg"},
     {"archive",
         "Archives & disk images",
         "zip dmg iso tar gz tgz bz2 xz zst 7z rar xip pkg deb rpm img sparseimage qcow2 vmdk vdi "
         "vhd vhdx"},
     {"code",
         "Code & binaries",
         "swift js ts py rs go dart c cpp h java json o a so dylib dll exe msi class jar wasm apk "
         "appimage"},
     {"document",
         "Documents",
         "pdf doc docx xls xlsx ppt pptx pages numbers key odt ods odp epub djvu rtf txt md csv"},
     {"other", "Other", ""},
     }
};

const Row& rowOf(FileKind kind) {
    return kRows[static_cast<std::size_t>(kind)];
}

using KindsByExtension = std::unordered_map<std::string, FileKind>;

const KindsByExtension& kindsByExtension() {
    static const KindsByExtension kinds = [] {
        KindsByExtension all;
        for (const FileKind kind : kAllFileKinds) {
            std::istringstream words{std::string{rowOf(kind).extensions}};
            for (std::string word; words >> word;) {
                all.emplace(word, kind);
            }
        }
        return all;
    }();
    return kinds;
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
    const auto& kinds = kindsByExtension();
    const auto found = kinds.find(Text::lowercased(name.substr(dot + 1)));
    return found == kinds.end() ? FileKind::other : found->second;
}

std::string_view rawValue(FileKind kind) {
    return rowOf(kind).rawValue;
}

std::optional<FileKind> fileKindFromRawValue(std::string_view word) {
    const auto* kind = std::ranges::find(kAllFileKinds, word, rawValue);
    return kind == kAllFileKinds.end() ? std::nullopt : std::optional{*kind};
}

std::string_view label(FileKind kind) {
    return rowOf(kind).label;
}

}  // namespace Brimlo
