#include "BrimloApp/Duplicates/DuplicateRows.h"

#include "BrimloApp/Components/FileKinds.h"
#include "BrimloApp/Duplicates/DuplicateSearch.h"
#include "BrimloApp/Review/PlanReview.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/DiskScanner/FileTree.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Support/Path.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

#include <algorithm>
#include <memory>
#include <utility>

namespace Brimlo {

namespace {

using Line = DuplicateLine;

void append(
    std::vector<Line>& lines,
    const DuplicateGroup& group,
    std::size_t place,
    std::string cloneRefusal) {
    lines.push_back(
        {.group = group.id,
         .path = {},
         .place = place,
         .copies = static_cast<std::int64_t>(group.copies.size()),
         .size = group.size,
         .cloneRefusal = std::move(cloneRefusal)});
    for (std::size_t i = 0; i < group.copies.size(); ++i) {
        lines.push_back(
            {.group = group.id, .path = group.copies[i].path, .place = place, .copy = i});
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
           {"wasted", [this](const Line& line) { return number(wasted(line)); }},
           {"share",
            [this](const Line& line) {
                return number(wasted(line)) / number(std::max<std::int64_t>(reclaimable_, 1));
            }},
           {"cloneRefusal", [](const Line& line) { return words(line.cloneRefusal); }},
           {"path", [](const Line& line) { return shown(line.path); }},
           {"isKept", [this](const Line& line) { return reason(line).has_value(); }},
           {"reason",
            [this](const Line& line) {
                const auto found = reason(line);
                return found ? words(Brimlo::words(*found)) : QString{};
            }},
           {"isLast", [](const Line& line) { return line.isLast; }},
           }} {
    connect(&search, &DuplicateSearch::groupsChanged, this, &DuplicateRows::refresh);
    connect(&search, &DuplicateSearch::filterChanged, this, &DuplicateRows::refresh);
    connect(&search, &DuplicateSearch::choiceChanged, this, &DuplicateRows::showChoice);
}

void DuplicateRows::refresh() {
    std::vector<Line> lines;
    const auto& groups = search_.groups();
    shownCount_ = 0;
    for (std::size_t i = 0; const bool isShown : search_.areShown()) {
        if (isShown) {
            append(lines, groups[i], i, search_.cloneRefusal(groups[i].id));
            ++shownCount_;
        }
        ++i;
    }
    groupCount_ = static_cast<int>(groups.size());
    rows_.set(std::move(lines));
    showChoice();
}

/// What stays may have changed in every row; a view asks only for those it shows.
void DuplicateRows::showChoice() {
    reclaimable_ = 0;
    for (const Line& line : rows_.all()) {
        reclaimable_ = Bytes::sum(reclaimable_, line.isGroup() ? wasted(line) : 0);
    }
    if (count() > 0) {
        Q_EMIT dataChanged(index(0), index(count() - 1));
    }
    Q_EMIT figuresChanged();
}

/// A view may ask for a row whose group has gone since; the row follows.
std::optional<KeepReason> DuplicateRows::reason(const Line& line) const {
    const auto& reasons = search_.reasons();
    const bool isThere =
        !line.isGroup() && line.place < reasons.size() && line.copy < reasons[line.place].size();
    return isThere ? reasons[line.place][line.copy] : std::nullopt;
}

std::int64_t DuplicateRows::wasted(const Line& line) const {
    const auto& reasons = search_.reasons();
    const std::size_t extras = line.place < reasons.size() ? extraCount(reasons[line.place]) : 0;
    return Bytes::product(line.size, static_cast<std::int64_t>(extras));
}

double DuplicateRows::reclaimable() const {
    return number(reclaimable_);
}

std::optional<DuplicateGroup> DuplicateRows::groupAt(int row) const {
    const Line* line = rows_.at(row);
    if (line == nullptr || !line->isGroup()) {
        return std::nullopt;
    }
    return search_.groups()[line->place];
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

QString DuplicateRows::folder(int row) const {
    const Line* file = fileAt(row);
    return file == nullptr ? QString{} : fromPath(std::string{Path::parent(file->path)});
}

QUrl DuplicateRows::picture(int row) const {
    const Line* file = fileAt(row);
    return file == nullptr ? QUrl{} : FileKinds::picture(file->path);
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
    if (reason(*file) == KeepReason::keptFolder) {
        search_.app().banner()->show(
            QStringLiteral("Could not review it: its folder keeps every copy."));
        return;
    }
    const std::int64_t size = search_.groups()[file->place].size;
    const auto tree = std::make_shared<FileTree>();
    search_.review()->openNodes(
        {tree->add({.name = file->path, .size = size, .fileCount = 1}).shared()});
}

void DuplicateRows::keep(int row) {
    if (const Line* file = fileAt(row)) {
        search_.keep(file->place, file->copy);
    }
}

void DuplicateRows::keepFolder(int row) {
    if (const Line* file = fileAt(row)) {
        search_.keepUnder(std::string{Path::parent(file->path)});
    }
}

}  // namespace Brimlo
