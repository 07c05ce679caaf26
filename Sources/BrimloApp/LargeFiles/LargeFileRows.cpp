#include "BrimloApp/LargeFiles/LargeFileRows.h"

#include "BrimloApp/Components/FileKinds.h"
#include "BrimloApp/LargeFiles/LargeFileSearch.h"
#include "BrimloApp/Review/PlanReview.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/DiskScanner/FreedSpace.h"
#include "BrimloCore/Models/Bytes.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

#include <algorithm>
#include <iterator>
#include <utility>

namespace Brimlo {

LargeFileRows::LargeFileRows(LargeFileSearch& search)
    : search_{search}
    , rows_{
          *this,
          {
           {"name", [](const LargeFile& file) { return shown(file.name); }},
           {"path", [](const LargeFile& file) { return shown(file.path); }},
           {"size", [](const LargeFile& file) { return number(file.size); }},
           {"modified", [](const LargeFile& file) { return dateTime(file.modified); }},
           {"share", [](const LargeFile& file) { return file.share; }},
           {"frees", [](const LargeFile& file) { return words(FreedSpace::alone(file).words()); }},
           {"selected", [this](const LargeFile& file) { return selection_.contains(file.id); }},
           }}
    , order_{{words(FileNode::rawValue(FileNode::SortKey::size)),
              words(FileNode::rawValue(FileNode::SortKey::name)),
              words(FileNode::rawValue(FileNode::SortKey::modified))}} {
    connect(&order_, &RowOrder::changed, this, &LargeFileRows::refresh);
    connect(&search, &LargeFileSearch::filesChanged, this, &LargeFileRows::refresh);
    connect(search.review(), &PlanReview::confirmed, this, &LargeFileRows::clearSelection);
}

void LargeFileRows::refresh() {
    std::vector<LargeFile> rows;
    std::int64_t total = 0;
    LargeFileSearch::Files files = search_.files();
    // Sorted with the largest first, equal files are in the order in which they were found.
    std::ranges::reverse(files);
    FileNode::sort(
        files,
        FileNode::sortKeyFromRawValue(order_.key().toStdString()).value_or(FileNode::SortKey::size),
        order_.ascending() ? FileNode::SortOrder::ascending : FileNode::SortOrder::descending);
    for (const auto& file : files) {
        rows.push_back(
            {.id = file->id(),
             .name = std::string{file->name()},
             .path = file->path(),
             .size = file->size,
             .modified = file->modified,
             .shared = search_.sharedOf(file->path())});
        total = Bytes::sum(total, file->size);
    }
    Selection left;
    for (LargeFile& file : rows) {
        file.share = number(file.size) / number(std::max<std::int64_t>(total, 1));
        if (selection_.contains(file.id)) {
            left.insert(file.id);
        }
    }
    rows_.set(std::move(rows));
    setSelection(std::move(left));
    if (std::exchange(totalBytes_, total) != total) {
        Q_EMIT totalBytesChanged();
    }
}

double LargeFileRows::totalBytes() const {
    return number(totalBytes_);
}

void LargeFileRows::trash(int row) {
    const LargeFile* chosen = rows_.at(row);
    if (chosen == nullptr) {
        return;
    }
    for (const auto& file : nodes({chosen->id})) {
        search_.trash(file);
    }
}

void LargeFileRows::reveal(int row) {
    if (const LargeFile* chosen = rows_.at(row)) {
        search_.app().reveal({chosen->path});
    }
}

QUrl LargeFileRows::picture(int row) const {
    const LargeFile* chosen = rows_.at(row);
    return chosen == nullptr ? QUrl{} : FileKinds::picture(chosen->path);
}

void LargeFileRows::open(int row) {
    if (const LargeFile* chosen = rows_.at(row)) {
        search_.app().openFile(chosen->path);
    }
}

void LargeFileRows::copyPath(int row) {
    if (const LargeFile* chosen = rows_.at(row)) {
        QGuiApplication::clipboard()->setText(fromPath(chosen->path));
    }
}

void LargeFileRows::revealSelected() {
    std::vector<std::string> paths;
    for (const auto& node : nodes(selection_)) {
        paths.push_back(node->path());
    }
    search_.app().reveal(paths);
}

void LargeFileRows::review(int row) {
    if (const LargeFile* chosen = rows_.at(row)) {
        const bool isSelected = selection_.contains(chosen->id);
        search_.review()->openNodes(nodes(isSelected ? selection_ : Selection{chosen->id}));
    }
}

void LargeFileRows::reviewSelected() {
    search_.review()->openNodes(nodes(selection_));
}

// ---- The selection -------------------------------------------------------------------------

std::vector<std::shared_ptr<FileNode>> LargeFileRows::nodes(const Selection& ids) const {
    std::vector<std::shared_ptr<FileNode>> nodes;
    std::ranges::copy_if(search_.files(), std::back_inserter(nodes), [&](const auto& file) {
        return ids.contains(file->id());
    });
    return nodes;
}

double LargeFileRows::selectedSize() const {
    std::int64_t size = 0;
    for (const auto& node : nodes(selection_)) {
        size = Bytes::sum(size, node->size);
    }
    return number(size);
}

QString LargeFileRows::selectedFrees() const {
    FreedSpace freed;
    for (int row = 0; const LargeFile* file = rows_.at(row); ++row) {
        if (selection_.contains(file->id)) {
            freed.add(*file);
        }
    }
    return words(freed.words());
}

void LargeFileRows::setSelection(Selection selection) {
    if (std::exchange(selection_, std::move(selection)) != selection_) {
        if (count() > 0) {
            Q_EMIT dataChanged(index(0), index(count() - 1));
        }
        Q_EMIT selectionChanged();
    }
}

void LargeFileRows::selectRange(int fromRow, int toRow) {
    const auto [first, last] = std::minmax({fromRow, toRow});
    Selection selection;
    for (int row = first; row <= last; ++row) {
        if (const LargeFile* file = rows_.at(row)) {
            selection.insert(file->id);
        }
    }
    setSelection(std::move(selection));
}

void LargeFileRows::toggleSelected(int row) {
    if (const LargeFile* file = rows_.at(row)) {
        Selection selection = selection_;
        if (selection.erase(file->id) == 0) {
            selection.insert(file->id);
        }
        setSelection(std::move(selection));
    }
}

void LargeFileRows::clearSelection() {
    setSelection({});
}

}  // namespace Brimlo
