#pragma once

#include "BrimloApp/Shell/Rows.h"
#include "BrimloCore/DiskScanner/FileNode.h"

#include <QtQml/qqmlregistration.h>

#include <chrono>
#include <memory>
#include <string>
#include <unordered_set>

namespace Brimlo {

class Analyzer;
class AppModel;

/// An entry of the folder that is shown.
struct NodeLine {
    Uuid id;
    std::string name;
    std::string path;
    std::int64_t size = 0;
    std::int64_t fileCount = 0;
    std::chrono::sys_seconds modified;
    int kind = 0;  ///< A `FileKind::Case`.
    bool isDirectory = false;
    bool isAggregate = false;
    bool canOpen = false;  ///< It has something in it to be shown.

    bool operator==(const NodeLine&) const = default;

    [[nodiscard]] const Uuid& key() const { return id; }
};

/// The entries of the folder that is shown, in the order chosen, and which of them are selected.
///
/// The selection is one of nodes, not of places: it stays with them through another order, another
/// folder and another scan. Those that aren't shown don't count.
class NodeRows : public Brimlo::RowList {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    // Of the selected rows that are shown.
    Q_PROPERTY(int selectedCount READ selectedCount NOTIFY selectionChanged)
    Q_PROPERTY(double selectedSize READ selectedSize NOTIFY selectionChanged)

public:
    using Nodes = std::vector<std::shared_ptr<FileNode>>;

    NodeRows(AppModel& app, Analyzer& analyzer);

    /// What the rows show, place by place.
    [[nodiscard]] const Nodes& nodes() const { return nodes_; }
    [[nodiscard]] bool isSelected(const Uuid& id) const { return selection_.contains(id); }
    [[nodiscard]] int selectedCount() const { return selectedCount_; }
    [[nodiscard]] double selectedSize() const;

    /// Selects a row alone.
    Q_INVOKABLE void select(int row);
    Q_INVOKABLE void toggleSelected(int row);
    /// Selects two rows, in whatever order, and those between them alone.
    Q_INVOKABLE void selectRange(int fromRow, int toRow);
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void clearSelection();

    Q_INVOKABLE [[nodiscard]] bool isDirectory(int row) const;
    Q_INVOKABLE [[nodiscard]] bool isAggregate(int row) const;

    /// Shows the folder of a row, if it has something in it.
    Q_INVOKABLE void drill(int row);
    /// Shows an entry in the file manager; for an aggregate the folder around it.
    Q_INVOKABLE void reveal(int row);
    Q_INVOKABLE void revealSelected();
    /// Puts a row's path on the clipboard.
    Q_INVOKABLE void copyPath(int row);
    /// Opens the rule editor on a new rule for a row's path.
    Q_INVOKABLE void newRule(int row);

    /// Opens the review of all that is selected if the row is, and else of the row alone. Not for
    /// an aggregate. The selection is emptied when the review is confirmed.
    Q_INVOKABLE void review(int row);
    /// The same for what is selected, without the aggregates.
    Q_INVOKABLE void reviewSelected();

Q_SIGNALS:
    /// `nodes`, their order or their sizes changed.
    void nodesChanged();
    void selectionChanged();

private:
    using Selection = std::unordered_set<Uuid>;

    void refresh();
    /// The node of a row; null when there is no such row.
    [[nodiscard]] std::shared_ptr<FileNode> nodeAt(int row) const;
    [[nodiscard]] Nodes selectedNodes() const;
    void setSelection(Selection selection);
    /// Whether that gives other figures than before.
    bool countSelected();

    AppModel& app_;
    Analyzer& analyzer_;
    Rows<NodeLine> rows_;
    Nodes nodes_;
    Selection selection_;
    int selectedCount_ = 0;
    std::int64_t selectedSize_ = 0;
};

}  // namespace Brimlo
