#pragma once

#include "BrimloApp/Shell/Rows.h"
#include "BrimloCore/Cleaner/DuplicateFinder.h"

#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <optional>
#include <string>

namespace Brimlo {

class DuplicateSearch;

/// A line of the list of duplicates: a group of equal files, or one of its files.
struct DuplicateLine {
    Uuid group;
    std::string path;         ///< Empty for the group itself.
    std::int64_t copies = 0;  ///< The figures are the group's, in its own line.
    std::int64_t size = 0;    ///< Of each.
    std::int64_t wasted = 0;
    bool isKept = false;
    bool isLast = false;  ///< Of its group.

    bool operator==(const DuplicateLine&) const = default;

    [[nodiscard]] bool isGroup() const { return path.empty(); }
    [[nodiscard]] std::string key() const;
};

/// The groups of equal files, the most wasted bytes first: a line for each, and below it one for
/// each of its files.
class DuplicateRows : public Brimlo::RowList {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    Q_PROPERTY(int groupCount READ groupCount NOTIFY figuresChanged)
    Q_PROPERTY(double reclaimable READ reclaimable NOTIFY figuresChanged)

public:
    explicit DuplicateRows(DuplicateSearch& search);

    [[nodiscard]] int groupCount() const { return groupCount_; }
    /// The bytes that all groups waste.
    [[nodiscard]] double reclaimable() const;

    /// Lets the files of a group's line share their bytes.
    Q_INVOKABLE void clone(int row);
    /// Moves all but the first file of a group's line to the Trash.
    Q_INVOKABLE void trash(int row);
    /// Shows a file in the file manager.
    Q_INVOKABLE void reveal(int row);

Q_SIGNALS:
    void figuresChanged();

private:
    void refresh();
    /// The group that a line is for itself.
    [[nodiscard]] std::optional<DuplicateGroup> groupAt(int row) const;

    DuplicateSearch& search_;
    Rows<DuplicateLine> rows_;
    int groupCount_ = 0;
    std::int64_t reclaimable_ = 0;
};

}  // namespace Brimlo
