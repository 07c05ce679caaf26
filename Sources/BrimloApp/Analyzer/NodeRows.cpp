#include "BrimloApp/Analyzer/NodeRows.h"

#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Components/FileKind.h"
#include "BrimloApp/Review/PlanReview.h"
#include "BrimloApp/Rules/RuleBook.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/Models/Bytes.h"

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace Brimlo {
namespace {

constexpr std::array<const char*, FileKind::kAll.size()> kKindWords{
    "folder", "video", "audio", "image", "archive", "code", "document", "other"};

QVariant date(const NodeLine& row) {
    if (row.isAggregate) {
        return QDateTime{};
    }
    return QDateTime::fromSecsSinceEpoch(row.modified.time_since_epoch().count());
}

NodeLine lineOf(const FileNode& node) {
    return {
        .id = node.id,
        .name = node.name,
        .path = node.path,
        .size = node.size,
        .fileCount = node.fileCount,
        .modified = node.modified,
        .kind = FileKind::of(node),
        .isDirectory = node.isDirectory,
        .isAggregate = node.isAggregate,
        .canOpen = node.isDirectory && node.children && !node.children->empty(),
    };
}

}  // namespace

NodeRows::NodeRows(AppModel& app, Analyzer& analyzer)
    : app_{app}
    , analyzer_{analyzer}
    , rows_{
          *this,
          {
           {"name", [](const NodeLine& row) { return shown(row.name); }},
           {"path", [](const NodeLine& row) { return shown(row.path); }},
           {"size", [](const NodeLine& row) { return number(row.size); }},
           {"fileCount", [](const NodeLine& row) { return number(row.fileCount); }},
           {"modified", date},
           {"isDirectory", [](const NodeLine& row) { return row.isDirectory; }},
           {"isAggregate", [](const NodeLine& row) { return row.isAggregate; }},
           {"kind",
               [](const NodeLine& row) {
                   return kKindWords.at(static_cast<std::size_t>(row.kind));
               }},
           {"kindIndex", [](const NodeLine& row) { return row.kind; }},
           {"canOpen", [](const NodeLine& row) { return row.canOpen; }},
           {"selected", [this](const NodeLine& row) { return isSelected(row.id); }},
           }} {
    for (const auto changed :
         {&Analyzer::currentChanged, &Analyzer::orderChanged, &Analyzer::nodesWent}) {
        connect(&analyzer, changed, this, &NodeRows::refresh);
    }
    connect(analyzer.review(), &PlanReview::confirmed, this, &NodeRows::clearSelection);
}

void NodeRows::refresh() {
    nodes_ = analyzer_.currentChildren();
    std::vector<NodeLine> lines;
    lines.reserve(nodes_.size());
    for (const auto& node : nodes_) {
        lines.push_back(lineOf(*node));
    }
    rows_.set(std::move(lines));
    if (countSelected()) {
        Q_EMIT selectionChanged();
    }
    Q_EMIT nodesChanged();
}

double NodeRows::selectedSize() const {
    return number(selectedSize_);
}

std::shared_ptr<FileNode> NodeRows::nodeAt(const int row) const {
    const NodeLine* const found = rows_.at(row);
    const auto place = static_cast<std::size_t>(row);
    // While a view is being told of new rows one by one, its places are not yet those of the nodes.
    return found != nullptr && place < nodes_.size() && nodes_[place]->id == found->id
               ? nodes_[place]
               : nullptr;
}

// ---- The selection -------------------------------------------------------------------------

NodeRows::Nodes NodeRows::selectedNodes() const {
    Nodes selected;
    std::ranges::copy_if(nodes_, std::back_inserter(selected), [this](const auto& node) {
        return isSelected(node->id);
    });
    return selected;
}

bool NodeRows::countSelected() {
    int count = 0;
    std::int64_t size = 0;
    for (const auto& node : selectedNodes()) {
        ++count;
        size = Bytes::sum(size, node->size);
    }
    const bool isOther = std::exchange(selectedCount_, count) != count;
    return std::exchange(selectedSize_, size) != size || isOther;
}

void NodeRows::setSelection(Selection selection) {
    std::swap(selection_, selection);
    std::vector<int> changed;
    for (int place = 0; const NodeLine& row : rows_.all()) {
        if (selection.contains(row.id) != isSelected(row.id)) {
            changed.push_back(place);
        }
        ++place;
    }
    if (changed.empty()) {
        return;
    }
    // One run from the first to the last: what a view doesn't show costs it nothing.
    Q_EMIT dataChanged(index(changed.front()), index(changed.back()));
    countSelected();
    Q_EMIT selectionChanged();
}

void NodeRows::select(const int row) {
    if (const auto node = nodeAt(row)) {
        setSelection({node->id});
    }
}

void NodeRows::toggleSelected(const int row) {
    if (const auto node = nodeAt(row)) {
        Selection selection = selection_;
        if (selection.erase(node->id) == 0) {
            selection.insert(node->id);
        }
        setSelection(std::move(selection));
    }
}

void NodeRows::selectRange(const int fromRow, const int toRow) {
    const auto [first, last] = std::minmax({fromRow, toRow});
    if (rows_.at(first) == nullptr || rows_.at(last) == nullptr) {
        return;
    }
    Selection selection;
    for (int place = first; place <= last; ++place) {
        selection.insert(rows_.at(place)->id);
    }
    setSelection(std::move(selection));
}

void NodeRows::selectAll() {
    selectRange(0, count() - 1);
}

void NodeRows::clearSelection() {
    setSelection({});
}

// ---- What is done with a row ---------------------------------------------------------------

bool NodeRows::isDirectory(const int row) const {
    const auto node = nodeAt(row);
    return node && node->isDirectory;
}

bool NodeRows::isAggregate(const int row) const {
    const auto node = nodeAt(row);
    return node && node->isAggregate;
}

void NodeRows::drill(const int row) {
    if (const auto node = nodeAt(row)) {
        analyzer_.drill(node);
    }
}

void NodeRows::reveal(const int row) {
    if (const auto node = nodeAt(row)) {
        app_.reveal({node->path});
    }
}

void NodeRows::revealSelected() {
    std::vector<std::string> paths;
    for (const auto& node : selectedNodes()) {
        paths.push_back(node->path);
    }
    if (!paths.empty()) {
        app_.reveal(paths);
    }
}

void NodeRows::copyPath(const int row) {
    if (const auto node = nodeAt(row)) {
        QGuiApplication::clipboard()->setText(
            QFile::decodeName(QByteArray::fromStdString(node->path)));
    }
}

void NodeRows::newRule(const int row) {
    if (const auto node = nodeAt(row)) {
        app_.rules()->newRuleDraft(node->path, node->name);
    }
}

void NodeRows::review(const int row) {
    const auto node = nodeAt(row);
    if (node && !node->isAggregate) {
        analyzer_.review()->openNodes(isSelected(node->id) ? selectedNodes() : Nodes{node});
    }
}

void NodeRows::reviewSelected() {
    analyzer_.review()->openNodes(selectedNodes());
}

}  // namespace Brimlo
