#pragma once

#include "BrimloCore/DiskScanner/FileNode.h"

#include <array>
#include <string_view>

namespace Brimlo {

/// What a scanned entry is to the eye: its colour in the treemap and its word in the legend.
class FileKind {
public:
    enum Case { folder, video, audio, image, archive, code, document, other };
    static constexpr std::array kAll{folder, video, audio, image, archive, code, document, other};

    /// An opaque colour of the sRGB space, each part from 0 to 1.
    struct Color {
        double red = 0;
        double green = 0;
        double blue = 0;
    };

    // A case is a kind, so that the two compare and pass for one another.
    constexpr FileKind(const Case kind)
        : case_(kind) {}

    /// Folders and aggregates by what they are, a file by its name's extension in any letter case.
    [[nodiscard]] static FileKind of(const FileNode& node);

    [[nodiscard]] std::string_view label() const;
    [[nodiscard]] Color color() const;

    constexpr operator Case() const { return case_; }

private:
    Case case_;
};

}  // namespace Brimlo
