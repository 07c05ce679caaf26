#pragma once

#include "BrimloApp/Lists/SourceRows.h"
#include "BrimloApp/Lists/UuidHash.h"

#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <string>

namespace Brimlo {

/// One of the largest files.
struct LargeFileRow {
    Uuid id;
    std::string name;
    std::string path;
    std::int64_t size = 0;

    bool operator==(const LargeFileRow&) const = default;

    [[nodiscard]] const Uuid& key() const { return id; }
};

/// The largest files found, the largest first.
class LargeFileRows : public BRIMLO_SOURCE_ROWS(LargeFileRow) {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(Brimlo::AppModel* source READ source WRITE setSource NOTIFY sourceChanged)
    Q_PROPERTY(double totalBytes READ totalBytes NOTIFY totalBytesChanged)

public:
    explicit LargeFileRows(QObject* parent = nullptr);

    [[nodiscard]] double totalBytes() const { return number(totalBytes_); }

    /// Moves a file to the Trash; its row goes when the file went.
    Q_INVOKABLE void trash(int row);
    /// Shows a file in the file manager.
    Q_INVOKABLE void reveal(int row);

Q_SIGNALS:
    void sourceChanged();
    void totalBytesChanged();

private:
    void refresh() override;
    void tellSource() override { Q_EMIT sourceChanged(); }

    std::int64_t totalBytes_ = 0;
};

}  // namespace Brimlo
