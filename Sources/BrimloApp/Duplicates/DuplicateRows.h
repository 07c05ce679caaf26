#pragma once

#include "BrimloApp/Shell/Rows.h"
#include "BrimloCore/Cleaner/DuplicateFinder.h"

#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <optional>
#include <string>

namespace Brimlo {

class DuplicateSearch;

/// A row of the duplicates: a group of equal files, or one of its files.
struct DuplicateLine {
    Uuid group;
    std::string path;         ///< Empty for the group itself.
    std::int64_t copies = 0;  ///< The figures are those of the group, set in the group's own row.
    std::int64_t size = 0;    ///< Of each file.
    std::int64_t wasted = 0;
    std::string cloneRefusal;  ///< Empty if it may be replaced by clones.
    bool isKept = false;
    bool isLast = false;  ///< The last of its group.

    bool operator==(const DuplicateLine&) const = default;

    [[nodiscard]] bool isGroup() const { return path.empty(); }
    [[nodiscard]] std::string key() const;
};

/// The groups of equal files, the most wasted bytes first: a row for each group, followed by its
/// files.
class DuplicateRows : public Brimlo::RowList {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    Q_PROPERTY(int groupCount READ groupCount NOTIFY figuresChanged)
    Q_PROPERTY(double reclaimable READ reclaimable NOTIFY figuresChanged)

public:
    explicit DuplicateRows(DuplicateSearch& search);

    [[nodiscard]] int groupCount() const { return groupCount_; }
    /// The bytes wasted by all groups.
    [[nodiscard]] double reclaimable() const;

    /// Replaces the files of a group with clones that share their blocks.
    Q_INVOKABLE void clone(int row);
    /// Moves all files of a group but the first to the Trash.
    Q_INVOKABLE void trash(int row);
    /// Whether it is the row of a file; the actions below do nothing on other rows.
    Q_INVOKABLE [[nodiscard]] bool isFile(int row) const { return fileAt(row) != nullptr; }
    /// Opens a file with its application.
    Q_INVOKABLE void open(int row);
    /// Shows a file in the file manager.
    Q_INVOKABLE void reveal(int row);
    /// Copies the path of a file to the clipboard.
    Q_INVOKABLE void copyPath(int row);
    /// Opens the review of one file.
    Q_INVOKABLE void review(int row);

Q_SIGNALS:
    void figuresChanged();

private:
    void refresh();
    /// The row of a file; null for any other.
    [[nodiscard]] const DuplicateLine* fileAt(int row) const;
    /// The group of a group's row; nullopt for the row of a file.
    [[nodiscard]] std::optional<DuplicateGroup> groupAt(int row) const;

    DuplicateSearch& search_;
    Rows<DuplicateLine> rows_;
    int groupCount_ = 0;
    std::int64_t reclaimable_ = 0;
};

}  // namespace Brimlo
