#include "BrimloApp/Analyzer/NodeRows.h"

#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Review/PlanReview.h"
#include "BrimloApp/Rules/RuleBook.h"
#include "BrimloApp/Shell/RunInBackground.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/Fmt.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

#include <algorithm>
#include <iterator>
#include <ranges>
#include <utility>
#include <vector>

namespace Brimlo {

namespace {

/// The words of the columns by which rows are sorted.
QStringList sortKeys() {
    QStringList keys;
    for (const FileNode::SortKey key : FileNode::kAllSortKeys) {
        keys.append(words(FileNode::rawValue(key)));
    }
    keys.append(QStringLiteral("Growth"));
    return keys;
}

QVariant date(const NodeLine& row) {
    return row.isAggregate ? QDateTime{} : dateTime(row.modified);
}

/// What is worth telling; a scan does not list smaller folders.
std::string growthWords(std::int64_t bytes) {
    constexpr std::int64_t kLeast = 1'048'576;
    return bytes >= kLeast    ? "+" + Fmt::bytes(bytes)
           : bytes <= -kLeast ? "−" + Fmt::bytes(-bytes)
                              : "";
}

NodeLine lineOf(const FileNode& node, const Analyzer& analyzer) {
    const double whole = number(std::max<std::int64_t>(analyzer.current()->size, 1));
    return {
        .id = node.id(),
        .name = std::string{node.name()},
        .path = node.path(),
        .size = node.size,
        .share = number(node.size) / whole,
        .fileCount = node.fileCount,
        .modified = node.modified,
        .kind = kindOf(node),
        .isDirectory = node.isDirectory,
        .isAggregate = node.isAggregate,
        .canOpen = !node.children().empty(),
        .growth = growthWords(analyzer.growth(node).value_or(0)),
    };
}

/// Those that grew alike keep their order.
void sortByGrowth(NodeRows::Nodes& nodes, const Analyzer& analyzer, bool ascending) {
    std::vector<std::pair<std::int64_t, std::shared_ptr<FileNode>>> grown;
    grown.reserve(nodes.size());
    for (auto& node : nodes) {
        const std::int64_t growth = analyzer.growth(*node).value_or(0);
        grown.emplace_back(ascending ? growth : -growth, std::move(node));
    }
    std::ranges::stable_sort(grown, {}, &decltype(grown)::value_type::first);
    std::ranges::move(grown | std::views::values, nodes.begin());
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
           {"share", [](const NodeLine& row) { return row.share; }},
           {"fileCount", [](const NodeLine& row) { return number(row.fileCount); }},
           {"modified", date},
           {"isDirectory", [](const NodeLine& row) { return row.isDirectory; }},
           {"isAggregate", [](const NodeLine& row) { return row.isAggregate; }},
           {"kind", [](const NodeLine& row) { return words(rawValue(row.kind)); }},
           {"kindIndex", [](const NodeLine& row) { return static_cast<int>(row.kind); }},
           {"canOpen", [](const NodeLine& row) { return row.canOpen; }},
           {"growth", [](const NodeLine& row) { return words(row.growth); }},
           {"selected", [this](const NodeLine& row) { return isSelected(row.id); }},
           }}
    , order_{sortKeys()} {
    connect(&analyzer, &Analyzer::currentChanged, this, &NodeRows::refresh);
    connect(&analyzer, &Analyzer::nodesWent, this, &NodeRows::refresh);
    connect(&order_, &RowOrder::changed, this, &NodeRows::refresh);
    connect(&choice_, &FileChoice::changed, this, [this] {
        fade();
        Q_EMIT fadedChanged();
    });
    connect(analyzer.review(), &PlanReview::confirmed, this, &NodeRows::clearSelection);

    constexpr int kRestMilliseconds = 250;
    rest_.setSingleShot(true);
    rest_.setInterval(kRestMilliseconds);
    connect(&rest_, &QTimer::timeout, this, &NodeRows::measureSelected);
    connect(this, &NodeRows::selectionChanged, this, [this] {
        assign(*this, selectedFrees_, {}, &NodeRows::selectedFreesChanged);
        rest_.start();
    });
}

void NodeRows::refresh() {
    using Order = FileNode::SortOrder;
    const auto& folder = analyzer_.current();
    const Order order = order_.ascending() ? Order::ascending : Order::descending;
    const auto key = FileNode::sortKeyFromRawValue(order_.key().toStdString());
    nodes_ =
        folder ? folder->sortedChildren(key.value_or(FileNode::SortKey::size), order) : Nodes{};
    if (!key) {
        sortByGrowth(nodes_, analyzer_, order_.ascending());
    }
    fade();
    measured_.clear();
    std::vector<NodeLine> lines;
    lines.reserve(nodes_.size());
    for (const auto& node : nodes_) {
        lines.push_back(lineOf(*node, analyzer_));
    }
    rows_.set(std::move(lines));
    if (countSelected()) {
        Q_EMIT selectionChanged();
    }
    Q_EMIT nodesChanged();
}

void NodeRows::fade() {
    faded_.clear();
    if (!choice_.isActive()) {
        return;
    }
    const FileFilter filter = choice_.filter();
    for (const auto& node : nodes_) {
        faded_.push_back(!filter.takesAnyOf(*node));
    }
}

bool NodeRows::isFaded(int row) const {
    const auto place = static_cast<std::size_t>(row);  // -1 becomes larger than any row.
    return place < faded_.size() && faded_[place];
}

QString NodeRows::growth(int row) const {
    const NodeLine* found = rows_.at(row);
    return found != nullptr ? words(found->growth) : QString{};
}

double NodeRows::selectedSize() const {
    return number(selectedSize_);
}

std::shared_ptr<FileNode> NodeRows::nodeAt(int row) const {
    const NodeLine* found = rows_.at(row);
    const auto place = static_cast<std::size_t>(row);
    // While a view is told of new rows one by one, rows and nodes do not match yet.
    return found != nullptr && place < nodes_.size() && nodes_[place]->id() == found->id
               ? nodes_[place]
               : nullptr;
}

int NodeRows::startRow() const {
    const auto found = std::ranges::find(
        nodes_, analyzer_.cameFrom(), [](const auto& node) { return node.get(); });
    return found != nodes_.end() ? static_cast<int>(found - nodes_.begin())
                                 : (nodes_.empty() ? -1 : 0);
}

// ---- The selection -------------------------------------------------------------------------

NodeRows::Nodes NodeRows::selectedNodes() const {
    Nodes selected;
    std::ranges::copy_if(nodes_, std::back_inserter(selected), [this](const auto& node) {
        return isSelected(node->id());
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

void NodeRows::measureSelected() {
    std::vector<std::pair<Uuid, std::string>> lacking;
    FreedSpace freed;
    for (const auto& node : selectedNodes()) {
        if (const auto known = measured_.find(node->id()); known != measured_.end()) {
            freed.add(known->second);
        } else if (!node->isAggregate) {
            lacking.emplace_back(node->id(), node->path());
        }
    }
    if (lacking.empty()) {
        assign(*this, selectedFrees_, words(freed.words()), &NodeRows::selectedFreesChanged);
        return;
    }
    if (std::exchange(isMeasuring_, true)) {
        return;
    }
    runInBackground(
        this,
        [lacking = std::move(lacking)] {
            std::unordered_map<Uuid, SpaceUse> found;
            for (const auto& [id, path] : lacking) {
                found.emplace(id, DiskScanner::spaceUse(path));
            }
            return found;
        },
        [](NodeRows& rows, std::unordered_map<Uuid, SpaceUse> found) {
            rows.isMeasuring_ = false;
            rows.measured_.merge(found);
            rows.measureSelected();
        });
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
    // One range from the first to the last changed row: invisible rows cost the view nothing.
    Q_EMIT dataChanged(index(changed.front()), index(changed.back()));
    countSelected();
    Q_EMIT selectionChanged();
}

void NodeRows::select(int row) {
    if (const auto node = nodeAt(row)) {
        setSelection({node->id()});
    }
}

void NodeRows::toggleSelected(int row) {
    if (const auto node = nodeAt(row)) {
        Selection selection = selection_;
        if (selection.erase(node->id()) == 0) {
            selection.insert(node->id());
        }
        setSelection(std::move(selection));
    }
}

void NodeRows::selectRange(int fromRow, int toRow) {
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

// ---- Actions on rows -----------------------------------------------------------------------

bool NodeRows::isDirectory(int row) const {
    const auto node = nodeAt(row);
    return node && node->isDirectory;
}

bool NodeRows::isAggregate(int row) const {
    const auto node = nodeAt(row);
    return node && node->isAggregate;
}

void NodeRows::drill(int row) {
    if (const auto node = nodeAt(row)) {
        analyzer_.drill(node);
    }
}

void NodeRows::reveal(int row) {
    if (const auto node = nodeAt(row)) {
        app_.reveal({node->path()});
    }
}

void NodeRows::revealSelected() {
    std::vector<std::string> paths;
    for (const auto& node : selectedNodes()) {
        paths.push_back(node->path());
    }
    if (!paths.empty()) {
        app_.reveal(paths);
    }
}

void NodeRows::copyPath(int row) {
    if (const auto node = nodeAt(row)) {
        QGuiApplication::clipboard()->setText(fromPath(node->path()));
    }
}

void NodeRows::newRule(int row) {
    if (const auto node = nodeAt(row)) {
        app_.rules()->newRuleDraft(node->path(), std::string{node->name()});
    }
}

void NodeRows::review(int row) {
    const auto node = nodeAt(row);
    if (node && !node->isAggregate) {
        analyzer_.review()->openNodes(isSelected(node->id()) ? selectedNodes() : Nodes{node});
    }
}

void NodeRows::reviewSelected() {
    analyzer_.review()->openNodes(selectedNodes());
}

}  // namespace Brimlo
