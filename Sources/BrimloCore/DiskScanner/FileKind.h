#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace Brimlo {

class FileNode;

/// What a scanned entry is. A file's kind depends on its extension, letter case ignored.
enum class FileKind { folder, video, audio, image, archive, code, document, other };

inline constexpr std::array kAllFileKinds{
    FileKind::folder,
    FileKind::video,
    FileKind::audio,
    FileKind::image,
    FileKind::archive,
    FileKind::code,
    FileKind::document,
    FileKind::other};

/// The kind of an entry; `other` for an aggregate.
[[nodiscard]] FileKind kindOf(const FileNode& node);
/// The kind of a file with this name.
[[nodiscard]] FileKind kindOfFile(std::string_view name);

/// The kind's word for the command line and JSON, and that word's kind: "folder", "video", "audio",
/// "image", "archive", "code", "document" or "other".
[[nodiscard]] std::string_view rawValue(FileKind kind);
[[nodiscard]] std::optional<FileKind> fileKindFromRawValue(std::string_view word);

/// The kind's words for the screen.
[[nodiscard]] std::string_view label(FileKind kind);

}  // namespace Brimlo
