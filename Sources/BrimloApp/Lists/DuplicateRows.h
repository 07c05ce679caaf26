#pragma once

#include "BrimloApp/Lists/SourceRows.h"

#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <string>

namespace Brimlo {

/// A group of equal files, or one of its files.
struct DuplicateRow {
    Uuid group;
    std::string path;         ///< Empty for the group itself.
    std::int64_t copies = 0;  ///< The figures stand in the group's own row.
    std::int64_t size = 0;    ///< Of each.
    std::int64_t wasted = 0;
    bool isKept = false;
    bool isLast = false;  ///< Of its group.

    bool operator==(const DuplicateRow&) const = default;

    [[nodiscard]] bool isGroup() const { return path.empty(); }
    [[nodiscard]] std::string key() const;
};

/// The groups of equal files, the most wasted bytes first: a row for each, and below it one for
/// each of its files.
class DuplicateRows : public BRIMLO_SOURCE_ROWS(DuplicateRow) {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(Brimlo::AppModel* source READ source WRITE setSource NOTIFY sourceChanged)
    Q_PROPERTY(int groupCount READ groupCount NOTIFY figuresChanged)
    Q_PROPERTY(double reclaimable READ reclaimable NOTIFY figuresChanged)

public:
    explicit DuplicateRows(QObject* parent = nullptr);

    [[nodiscard]] int groupCount() const { return groupCount_; }
    /// The bytes that all groups waste.
    [[nodiscard]] double reclaimable() const { return number(reclaimable_); }

    /// Lets the files of a group's row share their bytes.
    Q_INVOKABLE void clone(int row);
    /// Moves all but the first file of a group's row to the Trash.
    Q_INVOKABLE void trash(int row);
    /// Shows a file in the file manager.
    Q_INVOKABLE void reveal(int row);

Q_SIGNALS:
    void sourceChanged();
    void figuresChanged();

private:
    void refresh() override;
    void tellSource() override { Q_EMIT sourceChanged(); }

    /// The group that a row stands for itself.
    [[nodiscard]] std::optional<DuplicateGroup> groupAt(int row) const;

    int groupCount_ = 0;
    std::int64_t reclaimable_ = 0;
};

}  // namespace Brimlo
