#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtQml/qqmlregistration.h>

#include <array>
#include <string_view>

namespace Brimlo {

class FileNode;

/// The kind of a scanned entry: its colour in the treemap and its word in the legend.
class FileKind {
public:
    enum Case { folder, video, audio, image, archive, code, document, other };
    static constexpr std::array kAll{folder, video, audio, image, archive, code, document, other};

    /// An opaque sRGB colour, each part from 0 to 1.
    struct Color {
        double red = 0;
        double green = 0;
        double blue = 0;
    };

    // Implicit, so that a case compares with a kind and is passed as one.
    constexpr FileKind(Case kind)
        : case_{kind} {}

    /// A file's kind depends on its extension, letter case ignored.
    [[nodiscard]] static FileKind of(const FileNode& node);

    [[nodiscard]] std::string_view label() const;
    [[nodiscard]] Color color() const;

    constexpr operator Case() const { return case_; }

private:
    Case case_;
};

/// The kinds for QML, by their index in the order of `FileKind`.
class FileKinds : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(int count READ count CONSTANT)

public:
    [[nodiscard]] static int count();

    /// The word for the legend; "Other" for an index out of range.
    Q_INVOKABLE [[nodiscard]] static QString label(int kind);
    Q_INVOKABLE [[nodiscard]] static QColor color(int kind);
};

}  // namespace Brimlo
