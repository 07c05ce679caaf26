#pragma once

#include "BrimloApp/Shell/RowOrder.h"
#include "BrimloApp/Shell/Rows.h"
#include "BrimloCore/Models/Suggestion.h"
#include "BrimloCore/Support/Uuid.h"

#include <QtCore/QUrl>
#include <QtQml/qqmlregistration.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

namespace Brimlo {

class FileNode;
class LargeFileSearch;

/// One of the largest files.
struct LargeFile {
    Uuid id;
    std::string name;
    std::string path;
    std::int64_t size = 0;
    std::chrono::sys_seconds modified;
    double share = 0;    ///< Of all that is listed.
    SharedFiles shared;  ///< What of it may stay when it goes.

    bool operator==(const LargeFile&) const = default;

    [[nodiscard]] const Uuid& key() const { return id; }
};

/// The largest files, sorted, and which of them are selected.
class LargeFileRows : public Brimlo::RowList {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    Q_PROPERTY(Brimlo::RowOrder* order READ order CONSTANT)
    Q_PROPERTY(double totalBytes READ totalBytes NOTIFY totalBytesChanged)
    Q_PROPERTY(int selectedCount READ selectedCount NOTIFY selectionChanged)
    Q_PROPERTY(double selectedSize READ selectedSize NOTIFY selectionChanged)
    Q_PROPERTY(QString selectedFrees READ selectedFrees NOTIFY selectionChanged)

public:
    explicit LargeFileRows(LargeFileSearch& search);

    /// By size, name or the time of the last change.
    [[nodiscard]] RowOrder* order() { return &order_; }
    [[nodiscard]] double totalBytes() const;

    /// Moves a file to the Trash, and then removes its row.
    Q_INVOKABLE void trash(int row);
    Q_INVOKABLE [[nodiscard]] bool isFile(int row) const { return rows_.at(row) != nullptr; }
    /// The address of a file that is a picture; empty for others.
    Q_INVOKABLE [[nodiscard]] QUrl picture(int row) const;
    /// Opens a file with its application.
    Q_INVOKABLE void open(int row);
    /// Shows a file in the file manager.
    Q_INVOKABLE void reveal(int row);
    Q_INVOKABLE void revealSelected();
    /// Copies the path of a row to the clipboard.
    Q_INVOKABLE void copyPath(int row);
    /// Opens the review of the selection if the row is selected, otherwise of the row alone.
    Q_INVOKABLE void review(int row);
    Q_INVOKABLE void reviewSelected();

    [[nodiscard]] int selectedCount() const { return static_cast<int>(selection_.size()); }
    [[nodiscard]] double selectedSize() const;
    /// What the selected files free, by the words of `FreedSpace`; empty where it is all of it.
    [[nodiscard]] QString selectedFrees() const;
    /// Selects the rows from one to the other, in either order, and no others.
    Q_INVOKABLE void selectRange(int fromRow, int toRow);
    Q_INVOKABLE void toggleSelected(int row);
    Q_INVOKABLE void clearSelection();

Q_SIGNALS:
    void totalBytesChanged();
    void selectionChanged();

private:
    using Selection = std::unordered_set<Uuid>;

    void refresh();
    void setSelection(Selection selection);
    [[nodiscard]] std::vector<std::shared_ptr<FileNode>> nodes(const Selection& ids) const;

    LargeFileSearch& search_;
    Rows<LargeFile> rows_;
    RowOrder order_;
    Selection selection_;  ///< Of rows that exist.
    std::int64_t totalBytes_ = 0;
};

}  // namespace Brimlo
