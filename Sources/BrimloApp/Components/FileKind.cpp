#include "BrimloApp/Components/FileKind.h"

#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/DiskScanner/FileNode.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>

namespace Brimlo {

namespace {

using namespace std::string_view_literals;

constexpr std::array kVideo{
    "mp4"sv, "mov"sv, "m4v"sv, "mkv"sv, "avi"sv, "webm"sv, "prores"sv, "insv"sv, "braw"sv};
constexpr std::array kAudio{
    "mp3"sv, "wav"sv, "aiff"sv, "flac"sv, "m4a"sv, "aac"sv, "logicx"sv, "als"sv};
constexpr std::array kImage{
    "jpg"sv,
    "jpeg"sv,
    "png"sv,
    "heic"sv,
    "raw"sv,
    "arw"sv,
    "cr2"sv,
    "cr3"sv,
    "dng"sv,
    "psd"sv,
    "tiff"sv,
    "gif"sv,
    "webp"sv};
constexpr std::array kArchive{
    "zip"sv,
    "dmg"sv,
    "iso"sv,
    "tar"sv,
    "gz"sv,
    "xz"sv,
    "7z"sv,
    "xip"sv,
    "pkg"sv,
    "img"sv,
    "sparseimage"sv,
    "qcow2"sv,
    "vmdk"sv};
constexpr std::array kCode{
    "swift"sv,
    "js"sv,
    "ts"sv,
    "py"sv,
    "rs"sv,
    "go"sv,
    "dart"sv,
    "json"sv,
    "o"sv,
    "a"sv,
    "dylib"sv,
    "class"sv,
    "jar"sv,
    "wasm"sv};
constexpr std::array kDocument{
    "pdf"sv,
    "doc"sv,
    "docx"sv,
    "xls"sv,
    "xlsx"sv,
    "pages"sv,
    "numbers"sv,
    "key"sv,
    "txt"sv,
    "md"sv};

struct Row {
    std::string_view label;
    FileKind::Color color;
    std::span<const std::string_view> extensions;
};

// In the order of the cases.
constexpr std::array<Row, FileKind::kAll.size()> kRows{
    {
     {"Folders", {0.36, 0.40, 0.46}, {}},
     {"Video", {0.76, 0.38, 0.30}, kVideo},
     {"Audio", {0.80, 0.60, 0.28}, kAudio},
     {"Images", {0.36, 0.62, 0.48}, kImage},
     {"Archives & disk images", {0.32, 0.52, 0.66}, kArchive},
     {"Code & binaries", {0.58, 0.62, 0.40}, kCode},
     {"Documents", {0.62, 0.58, 0.52}, kDocument},
     {"Other", {0.45, 0.48, 0.52}, {}},
     }
};

/// The text after the last dot; empty for a name whose only dot is its first character.
std::string extension(std::string_view name) {
    const auto dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0) {
        return {};
    }
    return Text::lowercased(name.substr(dot + 1));
}

FileKind at(int kind) {
    return kind < 0 || kind >= FileKinds::count() ? FileKind::other
                                                  : FileKind::kAll[static_cast<std::size_t>(kind)];
}

}  // namespace

FileKind FileKind::of(const FileNode& node) {
    if (node.isAggregate) {
        return other;
    }
    if (node.isDirectory) {
        return folder;
    }
    const auto ending = extension(node.name());
    const auto* row = std::ranges::find_if(
        kRows, [&](const Row& each) { return std::ranges::count(each.extensions, ending) > 0; });
    return row == kRows.end() ? other : kAll[static_cast<std::size_t>(row - kRows.begin())];
}

std::string_view FileKind::label() const {
    return kRows[static_cast<std::size_t>(case_)].label;
}

FileKind::Color FileKind::color() const {
    return kRows[static_cast<std::size_t>(case_)].color;
}

int FileKinds::count() {
    return static_cast<int>(FileKind::kAll.size());
}

QString FileKinds::label(int kind) {
    const auto text = at(kind).label();
    return words(text);
}

QColor FileKinds::color(int kind) {
    const auto color = at(kind).color();
    return QColor::fromRgbF(
        static_cast<float>(color.red),
        static_cast<float>(color.green),
        static_cast<float>(color.blue));
}

}  // namespace Brimlo
