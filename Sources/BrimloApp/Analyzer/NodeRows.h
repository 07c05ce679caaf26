#pragma once

#include "BrimloApp/Shell/FileChoice.h"
#include "BrimloApp/Shell/RowOrder.h"
#include "BrimloApp/Shell/Rows.h"
#include "BrimloCore/DiskScanner/FileKind.h"
#include "BrimloCore/DiskScanner/FileNode.h"
#include "BrimloCore/DiskScanner/FreedSpace.h"

#include <QtCore/QTimer>
#include <QtQml/qqmlregistration.h>

#include <chrono>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Brimlo {

class Analyzer;
class AppModel;

/// An entry of the current folder.
struct NodeLine {
    Uuid id;
    std::string name;
    std::string path;
    std::int64_t size = 0;
    double share = 0;  ///< Of the folder.
    std::int64_t fileCount = 0;
    std::chrono::sys_seconds modified;
    FileKind kind = FileKind::other;
    bool isDirectory = false;
    bool isAggregate = false;
    bool canOpen = false;  ///< Whether it is a folder that is not empty.
    std::string growth;    ///< "+3 MB" or "−3 MB" since the earlier scan; empty if less or unknown.

    bool operator==(const NodeLine&) const = default;

    [[nodiscard]] const Uuid& key() const { return id; }
};

/// The entries of the current folder, sorted, and which of them are selected.
///
/// The selection is a set of nodes, not of rows: it survives another order, another folder and
/// another scan. Selected nodes of other folders don't count.
class NodeRows : public Brimlo::RowList {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    // Of the selected rows that are visible.
    Q_PROPERTY(int selectedCount READ selectedCount NOTIFY selectionChanged)
    Q_PROPERTY(double selectedSize READ selectedSize NOTIFY selectionChanged)
    Q_PROPERTY(QString selectedFrees READ selectedFrees NOTIFY selectedFreesChanged)

    Q_PROPERTY(Brimlo::RowOrder* order READ order CONSTANT)
    Q_PROPERTY(Brimlo::FileChoice* choice READ choice CONSTANT)

public:
    using Nodes = std::vector<std::shared_ptr<FileNode>>;

    NodeRows(AppModel& app, Analyzer& analyzer);

    /// The nodes of the rows, in the same order.
    [[nodiscard]] const Nodes& nodes() const { return nodes_; }
    [[nodiscard]] bool isSelected(const Uuid& id) const { return selection_.contains(id); }
    [[nodiscard]] int selectedCount() const { return selectedCount_; }
    [[nodiscard]] double selectedSize() const;
    /// What the selection frees, by the words of `FreedSpace`; empty where that is all of it, and
    /// until it is measured, in the background, once the selection rests.
    [[nodiscard]] const QString& selectedFrees() const { return selectedFrees_; }

    /// By the word of a `FileNode::SortKey`, or by "Growth" since an earlier scan.
    [[nodiscard]] RowOrder* order() { return &order_; }
    /// Which files the treemap shows in full colour.
    [[nodiscard]] FileChoice* choice() { return &choice_; }
    /// Whether nothing in a row is among them.
    [[nodiscard]] bool isFaded(int row) const;
    /// "+3 MB" or "−3 MB" since the earlier scan; empty if less or unknown.
    [[nodiscard]] QString growth(int row) const;

    /// Selects this row only.
    Q_INVOKABLE void select(int row);
    Q_INVOKABLE void toggleSelected(int row);
    /// Selects the rows from one to the other, in either order, and no others.
    Q_INVOKABLE void selectRange(int fromRow, int toRow);
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void clearSelection();

    Q_INVOKABLE [[nodiscard]] bool isDirectory(int row) const;
    Q_INVOKABLE [[nodiscard]] bool isAggregate(int row) const;

    /// The row of the folder that one comes from, 0 unless the way led up; -1 without rows.
    Q_INVOKABLE [[nodiscard]] int startRow() const;
    /// Goes to the folder of a row unless it is empty.
    Q_INVOKABLE void drill(int row);
    /// Shows an entry in the file manager; for an aggregate, its folder.
    Q_INVOKABLE void reveal(int row);
    Q_INVOKABLE void revealSelected();
    /// Copies the path of a row to the clipboard.
    Q_INVOKABLE void copyPath(int row);
    /// Opens the rule editor with a new rule for the path of a row.
    Q_INVOKABLE void newRule(int row);

    /// Opens the review of the selection if the row is selected, otherwise of the row alone. Does
    /// nothing for an aggregate. Confirming the review clears the selection.
    Q_INVOKABLE void review(int row);
    /// Opens the review of the selection without aggregates, if anything remains.
    Q_INVOKABLE void reviewSelected();

Q_SIGNALS:
    /// `nodes`, their order or their sizes changed.
    void nodesChanged();
    void selectionChanged();
    void selectedFreesChanged();
    void fadedChanged();

private:
    using Selection = std::unordered_set<Uuid>;

    void refresh();
    void fade();
    /// The node of a row, or null.
    [[nodiscard]] std::shared_ptr<FileNode> nodeAt(int row) const;
    [[nodiscard]] Nodes selectedNodes() const;
    void setSelection(Selection selection);
    /// Measures what is selected and not yet measured, and then words what all of it frees.
    void measureSelected();
    /// Recounts the selection; true if a figure changed.
    bool countSelected();

    AppModel& app_;
    Analyzer& analyzer_;
    Rows<NodeLine> rows_;
    Nodes nodes_;
    RowOrder order_;
    FileChoice choice_;
    std::vector<bool> faded_;  ///< Of each row; empty while all files count.
    Selection selection_;
    int selectedCount_ = 0;
    std::int64_t selectedSize_ = 0;
    QString selectedFrees_;
    std::unordered_map<Uuid, SpaceUse> measured_;  ///< Since the rows changed last.
    bool isMeasuring_ = false;
    QTimer rest_;
};

}  // namespace Brimlo
