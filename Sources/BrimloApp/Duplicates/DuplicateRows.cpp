#include "BrimloApp/Duplicates/DuplicateRows.h"

#include "BrimloApp/Duplicates/DuplicateSearch.h"
#include "BrimloApp/Review/PlanReview.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/DiskScanner/FileTree.h"
#include "BrimloCore/Models/Bytes.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

#include <algorithm>
#include <memory>
#include <utility>

namespace Brimlo {

namespace {

using Line = DuplicateLine;

void append(std::vector<Line>& lines, const DuplicateGroup& group, std::string cloneRefusal) {
    lines.push_back(
        {.group = group.id,
         .path = {},
         .copies = static_cast<std::int64_t>(group.copies.size()),
         .size = group.size,
         .wasted = group.wastedBytes(),
         .cloneRefusal = std::move(cloneRefusal)});
    for (const auto& copy : group.copies) {
        lines.push_back({.group = group.id, .path = copy.path, .isKept = lines.back().isGroup()});
    }
    lines.back().isLast = true;
}

}  // namespace

std::string DuplicateLine::key() const {
    return std::string{group.bytes.begin(), group.bytes.end()} + path;
}

DuplicateRows::DuplicateRows(DuplicateSearch& search)
    : search_{search}
    , rows_{
          *this,
          {
           {"kind", [](const Line& line) { return line.isGroup() ? "group" : "path"; }},
           {"copies", [](const Line& line) { return number(line.copies); }},
           {"size", [](const Line& line) { return number(line.size); }},
           {"wasted", [](const Line& line) { return number(line.wasted); }},
           {"cloneRefusal", [](const Line& line) { return words(line.cloneRefusal); }},
           {"path", [](const Line& line) { return shown(line.path); }},
           {"isKept", [](const Line& line) { return line.isKept; }},
           {"isLast", [](const Line& line) { return line.isLast; }},
           }} {
    connect(&search, &DuplicateSearch::groupsChanged, this, &DuplicateRows::refresh);
}

void DuplicateRows::refresh() {
    std::vector<Line> lines;
    groupCount_ = 0;
    reclaimable_ = 0;
    for (const DuplicateGroup& group : search_.groups()) {
        append(lines, group, search_.cloneRefusal(group.id));
        ++groupCount_;
        reclaimable_ = Bytes::sum(reclaimable_, group.wastedBytes());
    }
    rows_.set(std::move(lines));
    Q_EMIT figuresChanged();
}

double DuplicateRows::reclaimable() const {
    return number(reclaimable_);
}

std::optional<DuplicateGroup> DuplicateRows::groupAt(int row) const {
    const Line* line = rows_.at(row);
    if (line == nullptr || !line->isGroup()) {
        return std::nullopt;
    }
    const auto& groups = search_.groups();
    const auto group = std::ranges::find(groups, line->group, &DuplicateGroup::id);
    return group == groups.end() ? std::nullopt : std::optional{*group};
}

void DuplicateRows::clone(int row) {
    if (const auto group = groupAt(row)) {
        search_.clone(*group);
    }
}

void DuplicateRows::trash(int row) {
    if (const auto group = groupAt(row)) {
        search_.trash(*group);
    }
}

// ---- Actions on one file -------------------------------------------------------------------

const DuplicateLine* DuplicateRows::fileAt(int row) const {
    const Line* line = rows_.at(row);
    return line != nullptr && !line->isGroup() ? line : nullptr;
}

void DuplicateRows::open(int row) {
    if (const Line* file = fileAt(row)) {
        search_.app().openFile(file->path);
    }
}

void DuplicateRows::reveal(int row) {
    if (const Line* file = fileAt(row)) {
        search_.app().reveal({file->path});
    }
}

void DuplicateRows::copyPath(int row) {
    if (const Line* file = fileAt(row)) {
        QGuiApplication::clipboard()->setText(fromPath(file->path));
    }
}

void DuplicateRows::review(int row) {
    const Line* file = fileAt(row);
    if (file == nullptr) {
        return;
    }
    const auto group = std::ranges::find(search_.groups(), file->group, &DuplicateGroup::id);
    const std::int64_t size = group == search_.groups().end() ? 0 : group->size;
    const auto tree = std::make_shared<FileTree>();
    search_.review()->openNodes(
        {tree->add({.name = file->path, .size = size, .fileCount = 1}).shared()});
}

}  // namespace Brimlo
