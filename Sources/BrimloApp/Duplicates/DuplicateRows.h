#pragma once

#include "BrimloApp/Shell/Rows.h"
#include "BrimloCore/Cleaner/CopyChoice.h"
#include "BrimloCore/Cleaner/DuplicateFinder.h"

#include <QtCore/QUrl>
#include <QtQml/qqmlregistration.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace Brimlo {

class DuplicateSearch;

/// A row of the duplicates: a group of equal files, or one of its files.
struct DuplicateLine {
    Uuid group;
    std::string path;          ///< Empty for the group itself.
    std::size_t place = 0;     ///< Of the group among all.
    std::size_t copy = 0;      ///< The place of a file in its group.
    std::int64_t copies = 0;   ///< The figures are those of the group, set in the group's own row.
    std::int64_t size = 0;     ///< Of each file.
    std::string cloneRefusal;  ///< Empty if it may be replaced by clones.
    bool isLast = false;       ///< The last of its group.

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
    Q_PROPERTY(int shownCount READ shownCount NOTIFY figuresChanged)
    Q_PROPERTY(double reclaimable READ reclaimable NOTIFY figuresChanged)

public:
    explicit DuplicateRows(DuplicateSearch& search);

    [[nodiscard]] int groupCount() const { return groupCount_; }
    /// The groups that the filter leaves.
    [[nodiscard]] int shownCount() const { return shownCount_; }
    /// The bytes wasted by the extras of the groups that are shown.
    [[nodiscard]] double reclaimable() const;

    /// Replaces the files of a group with clones that share their blocks.
    Q_INVOKABLE void clone(int row);
    /// Moves the extras of a group to the Trash.
    Q_INVOKABLE void trash(int row);
    /// Whether it is the row of a file; the actions below do nothing on other rows.
    Q_INVOKABLE [[nodiscard]] bool isFile(int row) const { return fileAt(row) != nullptr; }
    /// The folder of a file; empty for other rows.
    Q_INVOKABLE [[nodiscard]] QString folder(int row) const;
    /// The address of a file that is a picture; empty for other rows.
    Q_INVOKABLE [[nodiscard]] QUrl picture(int row) const;
    /// Opens a file with its application.
    Q_INVOKABLE void open(int row);
    /// Shows a file in the file manager.
    Q_INVOKABLE void reveal(int row);
    /// Copies the path of a file to the clipboard.
    Q_INVOKABLE void copyPath(int row);
    /// Opens the review of one file; shows a message when its folder is kept.
    Q_INVOKABLE void review(int row);
    /// Makes a file the one of its group that stays.
    Q_INVOKABLE void keep(int row);
    /// Keeps every copy in the folder of a file.
    Q_INVOKABLE void keepFolder(int row);

Q_SIGNALS:
    void figuresChanged();

private:
    void refresh();
    void showChoice();
    /// Why a file stays; absent for an extra. Looked up, so that a choice changes no row.
    [[nodiscard]] std::optional<KeepReason> reason(const DuplicateLine& line) const;
    /// The bytes that the extras of a group's row waste.
    [[nodiscard]] std::int64_t wasted(const DuplicateLine& line) const;
    /// The row of a file; null for any other.
    [[nodiscard]] const DuplicateLine* fileAt(int row) const;
    /// The group of a group's row; nullopt for the row of a file.
    [[nodiscard]] std::optional<DuplicateGroup> groupAt(int row) const;

    DuplicateSearch& search_;
    Rows<DuplicateLine> rows_;
    int groupCount_ = 0;
    int shownCount_ = 0;
    std::int64_t reclaimable_ = 0;
};

}  // namespace Brimlo
