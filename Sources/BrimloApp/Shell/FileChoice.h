#pragma once

#include "BrimloCore/DiskScanner/FileFilter.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

#include <cstdint>

namespace Brimlo {

/// Which files the user wants to see. Main thread.
class FileChoice : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    Q_PROPERTY(int kinds READ kinds WRITE setKinds NOTIFY changed)
    Q_PROPERTY(int olderThan READ olderThan WRITE setOlderThan NOTIFY changed)
    Q_PROPERTY(double minSize READ minSize WRITE setMinSize NOTIFY changed)
    Q_PROPERTY(bool isActive READ isActive NOTIFY changed)

public:
    /// Of files of at least so many bytes, until the user wants others.
    explicit FileChoice(std::int64_t minSize = 0)
        : usualSize_{minSize}
        , minSize_{minSize} {}

    /// The kinds that count, a bit for each index of `FileKinds`; 0 for all kinds.
    [[nodiscard]] int kinds() const { return kinds_; }
    void setKinds(int kinds);
    /// Only files not modified for so many days; 0 for any age.
    [[nodiscard]] int olderThan() const { return olderThan_; }
    void setOlderThan(int days);
    /// Only files that take at least so many bytes.
    [[nodiscard]] double minSize() const { return static_cast<double>(minSize_); }
    void setMinSize(double bytes);

    /// Whether it is another one than at first.
    [[nodiscard]] bool isActive() const;
    [[nodiscard]] FileFilter filter() const;

Q_SIGNALS:
    void changed();

private:
    const std::int64_t usualSize_;
    int kinds_ = 0;
    int olderThan_ = 0;
    std::int64_t minSize_;
};

}  // namespace Brimlo
