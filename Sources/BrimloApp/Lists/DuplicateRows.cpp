#include "BrimloApp/Lists/DuplicateRows.h"

#include "BrimloCore/Models/Bytes.h"

#include <algorithm>

namespace Brimlo {
namespace {

void append(std::vector<DuplicateRow>& rows, const DuplicateGroup& group) {
    rows.push_back(
        {.group = group.id,
         .path = {},
         .copies = static_cast<std::int64_t>(group.paths.size()),
         .size = group.size,
         .wasted = group.wastedBytes()});
    for (const std::string& path : group.paths) {
        rows.push_back({.group = group.id, .path = path, .isKept = rows.back().isGroup()});
    }
    rows.back().isLast = true;
}

}  // namespace

std::string DuplicateRow::key() const {
    return std::string{group.bytes.begin(), group.bytes.end()} + path;
}

DuplicateRows::DuplicateRows(QObject* parent)
    : SourceRows{
          {
           {"kind", [](const DuplicateRow& row) { return row.isGroup() ? "group" : "path"; }},
           {"copies", [](const DuplicateRow& row) { return number(row.copies); }},
           {"size", [](const DuplicateRow& row) { return number(row.size); }},
           {"wasted", [](const DuplicateRow& row) { return number(row.wasted); }},
           {"path", [](const DuplicateRow& row) { return shown(row.path); }},
           {"isKept", [](const DuplicateRow& row) { return row.isKept; }},
           {"isLast", [](const DuplicateRow& row) { return row.isLast; }},
           },
          {&AppModel::dupGroupsChanged                },
          parent
} {}

void DuplicateRows::refresh() {
    std::vector<DuplicateRow> rows;
    groupCount_ = 0;
    reclaimable_ = 0;
    if (source() != nullptr) {
        for (const DuplicateGroup& group : source()->dupGroups()) {
            append(rows, group);
            ++groupCount_;
            reclaimable_ = Bytes::sum(reclaimable_, group.wastedBytes());
        }
    }
    setRows(std::move(rows));
    Q_EMIT figuresChanged();
}

std::optional<DuplicateGroup> DuplicateRows::groupAt(const int row) const {
    const DuplicateRow* const found = this->row(row);
    if (found == nullptr || !found->isGroup() || source() == nullptr) {
        return std::nullopt;
    }
    const auto& groups = source()->dupGroups();
    const auto group = std::ranges::find(groups, found->group, &DuplicateGroup::id);
    return group == groups.end() ? std::nullopt : std::optional{*group};
}

void DuplicateRows::clone(const int row) {
    if (const auto group = groupAt(row)) {
        source()->cloneDuplicates(*group);
    }
}

void DuplicateRows::trash(const int row) {
    if (const auto group = groupAt(row)) {
        source()->trashDuplicates(*group);
    }
}

void DuplicateRows::reveal(const int row) {
    const DuplicateRow* const found = this->row(row);
    if (found != nullptr && !found->isGroup()) {
        source()->reveal({found->path});
    }
}

}  // namespace Brimlo
