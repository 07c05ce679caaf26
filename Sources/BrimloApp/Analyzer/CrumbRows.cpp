#include "BrimloApp/Analyzer/CrumbRows.h"

#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Shell/Shown.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace Brimlo {

namespace {

/// The folders from the root to `folder`.
std::vector<FileNode*> wayTo(const std::shared_ptr<FileNode>& end) {
    std::vector<FileNode*> folders;
    for (FileNode* folder = end.get(); folder != nullptr; folder = folder->parent()) {
        folders.push_back(folder);
    }
    std::ranges::reverse(folders);
    return folders;
}

}  // namespace

CrumbRows::CrumbRows(Analyzer& analyzer)
    : analyzer_{analyzer}
    , rows_{*this, {{"name", [](const CrumbLine& line) { return shown(line.name); }}}} {
    connect(&analyzer, &Analyzer::currentChanged, this, &CrumbRows::refresh);
    connect(&analyzer, &Analyzer::nodesWent, this, &CrumbRows::refresh);
}

void CrumbRows::refresh() {
    std::vector<CrumbLine> lines;
    for (const FileNode* folder : wayTo(analyzer_.current())) {
        lines.push_back({.id = folder->id(), .name = std::string{folder->name()}});
    }
    rows_.set(std::move(lines));
    Q_EMIT folderChanged();
}

void CrumbRows::show(int row) {
    const CrumbLine* crumb = rows_.at(row);
    const auto folders = wayTo(analyzer_.current());
    const auto found = std::ranges::find_if(
        folders, [&](const auto& folder) { return crumb != nullptr && folder->id() == crumb->id; });
    if (found != folders.end()) {
        analyzer_.setCurrent((*found)->shared());
    }
}

double CrumbRows::size() const {
    return analyzer_.hasTree() ? number(analyzer_.current()->size) : 0;
}

double CrumbRows::fileCount() const {
    return analyzer_.hasTree() ? number(analyzer_.current()->fileCount) : 0;
}

}  // namespace Brimlo
