#pragma once

#include "BrimloApp/Shell/Rows.h"
#include "BrimloCore/Support/Uuid.h"

#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <string>

namespace Brimlo {

class LargeFileSearch;

/// One of the largest files.
struct LargeFile {
    Uuid id;
    std::string name;
    std::string path;
    std::int64_t size = 0;

    bool operator==(const LargeFile&) const = default;

    [[nodiscard]] const Uuid& key() const { return id; }
};

/// The largest files, the largest first.
class LargeFileRows : public Brimlo::RowList {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    Q_PROPERTY(double totalBytes READ totalBytes NOTIFY totalBytesChanged)

public:
    explicit LargeFileRows(LargeFileSearch& search);

    [[nodiscard]] double totalBytes() const;

    /// Moves a file to the Trash, and then removes its row.
    Q_INVOKABLE void trash(int row);
    /// Shows a file in the file manager.
    Q_INVOKABLE void reveal(int row);

Q_SIGNALS:
    void totalBytesChanged();

private:
    void refresh();

    LargeFileSearch& search_;
    Rows<LargeFile> rows_;
    std::int64_t totalBytes_ = 0;
};

}  // namespace Brimlo
