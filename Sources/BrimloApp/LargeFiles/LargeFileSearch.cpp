#include "BrimloApp/LargeFiles/LargeFileSearch.h"

#include "BrimloApp/LargeFiles/LargeFileRows.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/Review/PlanReview.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/LargeFiles/LargeFiles.h"

#include <utility>

namespace Brimlo {

namespace {

constexpr std::size_t kMostFiles = 200;

}  // namespace

LargeFileSearch::LargeFileSearch(AppModel& app)
    : FolderSearch{app}
    , review_{std::make_unique<PlanReview>(app)}
    , rows_{std::make_unique<LargeFileRows>(*this)} {
    connect(&choice_, &FileChoice::changed, this, [this] {
        findAgainIf([](const auto&) { return true; });
    });
}

LargeFileSearch::~LargeFileSearch() = default;

void LargeFileSearch::start(std::shared_ptr<ScanControl> control) {
    setFiles({});
    struct Found {
        Files files;
        Shared shared;
    };
    runInBackground(
        this,
        [root = root(), filter = choice_.filter(), control] {
            Found found;
            found.files = LargeFiles::find(root, kMostFiles, filter, *control).value_or(Files{});
            for (const auto& file : found.files) {
                const std::string path = file->path();
                if (SpaceUse use = DiskScanner::spaceUse(path); use.shared) {
                    found.shared.emplace(path, std::move(use.shared));
                }
            }
            return found;
        },
        [control](LargeFileSearch& search, Found found) {
            search.shared_ = std::move(found.shared);
            search.setFiles(std::move(found.files));
            search.removeFiles(std::exchange(search.wentMeanwhile_, {}));
            search.end(*control);
        });
}

void LargeFileSearch::setFiles(Files files) {
    assign(*this, files_, std::move(files), &LargeFileSearch::filesChanged);
}

SharedFiles LargeFileSearch::sharedOf(const std::string& path) const {
    const auto found = shared_.find(path);
    return found == shared_.end() ? nullptr : found->second;
}

void LargeFileSearch::trash(const std::shared_ptr<FileNode>& file) {
    app().cleanup()->dispose({file});
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
