#include "BrimloApp/Lists/CrumbRows.h"

#include <algorithm>
#include <memory>

namespace Brimlo {
namespace {

/// From the root down to the folder that is shown.
std::vector<std::shared_ptr<FileNode>> way(const AppModel* const source) {
    std::vector<std::shared_ptr<FileNode>> folders;
    for (auto node = source != nullptr ? source->current() : nullptr; node;
         node = node->parent.lock()) {
        folders.push_back(node);
    }
    std::ranges::reverse(folders);
    return folders;
}

}  // namespace

CrumbRows::CrumbRows(QObject* parent)
    : SourceRows{
          {{"name", [](const CrumbRow& row) { return shown(row.name); }}},
          { &AppModel::currentChanged,                                &AppModel::treeVersionChanged},
          parent
} {}

void CrumbRows::refresh() {
    std::vector<CrumbRow> rows;
    for (const auto& folder : way(source())) {
        rows.push_back({.id = folder->id, .name = folder->name});
    }
    setRows(std::move(rows));
    Q_EMIT folderChanged();
}

void CrumbRows::show(const int row) {
    const CrumbRow* const crumb = this->row(row);
    const auto folders = way(source());
    const auto found = std::ranges::find_if(
        folders, [&](const auto& folder) { return crumb != nullptr && folder->id == crumb->id; });
    if (found != folders.end()) {
        source()->setCurrent(*found);
    }
}

QString CrumbRows::folderName() const {
    return rows().empty() ? QString{} : shown(rows().back().name);
}

double CrumbRows::size() const {
    return source() != nullptr && source()->hasTree() ? number(source()->current()->size) : 0;
}

double CrumbRows::fileCount() const {
    return source() != nullptr && source()->hasTree() ? number(source()->current()->fileCount) : 0;
}

}  // namespace Brimlo
