#include "BrimloApp/LargeFiles/LargeFileSearch.h"

#include "BrimloApp/LargeFiles/LargeFileRows.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/LargeFiles/LargeFiles.h"

#include <utility>

namespace Brimlo {

namespace {

constexpr std::size_t kMostFiles = 200;
constexpr std::int64_t kLeastSize = 52'428'800;

}  // namespace

LargeFileSearch::LargeFileSearch(AppModel& app)
    : FolderSearch{app}
    , rows_{std::make_unique<LargeFileRows>(*this)} {}

LargeFileSearch::~LargeFileSearch() = default;

void LargeFileSearch::start(std::shared_ptr<ScanControl> control) {
    setFiles({});
    runInBackground(
        this,
        [root = root(), control] {
            return LargeFiles::find(root, kMostFiles, kLeastSize, *control).value_or(Files{});
        },
        [control](LargeFileSearch& search, Files found) {
            search.setFiles(std::move(found));
            search.removeFiles(std::exchange(search.wentMeanwhile_, {}));
            search.end(*control);
        });
}

void LargeFileSearch::setFiles(Files files) {
    assign(*this, files_, std::move(files), &LargeFileSearch::filesChanged);
}

void LargeFileSearch::trash(const std::shared_ptr<FileNode>& file) {
    app().cleanup()->dispose({file});
}

void LargeFileSearch::reveal(const std::string& path) {
    app().reveal({path});
}

void LargeFileSearch::forget(const std::set<std::string>& paths) {
    removeFiles(paths);
    if (isSearching()) {
        wentMeanwhile_.insert(paths.begin(), paths.end());
    }
}

void LargeFileSearch::removeFiles(const std::set<std::string>& paths) {
    Files left = files_;
    std::erase_if(left, [&](const auto& file) { return paths.contains(file->path()); });
    setFiles(std::move(left));
}

}  // namespace Brimlo
