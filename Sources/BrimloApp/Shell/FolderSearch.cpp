#include "BrimloApp/Shell/FolderSearch.h"

#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <utility>

namespace Brimlo {

FolderSearch::FolderSearch(AppModel& app)
    : app_{app}
    , root_{StoragePaths::home()} {}

FolderSearch::~FolderSearch() {
    cancel();  // The search outlives the model; cancelled, it ends soon.
}

std::optional<std::string> FolderSearch::droppedFolder(const QUrl& address) {
    const QString path = address.toLocalFile();
    return QFileInfo{path}.isDir() ? std::optional{toPath(path)} : std::nullopt;
}

void FolderSearch::find() {
    if (state_.isSearching) {
        return;
    }
    control_ = std::make_shared<ScanControl>();
    show({.isSearching = true});
    start(control_);
}

void FolderSearch::end(const ScanControl& control) {
    show(
        {.isSearching = false,
         .hasSearched = !control.isCancelled(),
         .unreadableCount = static_cast<int>(control.inaccessible().size())});
    if (std::exchange(again_, false) && !control.isCancelled()) {
        find();
    }
}

void FolderSearch::findInHome() {
    setRoot(StoragePaths::home());
    find();
}

bool FolderSearch::findInDropped(const QUrl& address) {
    const auto folder = droppedFolder(address);
    if (folder) {
        setRoot(*folder);
        find();
    }
    return folder.has_value();
}

void FolderSearch::cancel() {
    if (control_) {
        control_->cancel();
    }
}

void FolderSearch::findAgainIf(const std::function<bool(const std::string& folder)>& isMeant) {
    if ((state_.isSearching || state_.hasSearched) && std::ranges::any_of(folders(), isMeant)) {
        again_ = state_.isSearching;
        find();
    }
}

void FolderSearch::setRoot(std::string path) {
    if (!state_.isSearching) {
        assign(*this, root_, std::move(path), &FolderSearch::rootChanged);
    }
}

QString FolderSearch::rootText() const {
    return fromPath(root_);
}

void FolderSearch::setRootText(const QString& path) {
    setRoot(toPath(path));
}

void FolderSearch::show(State state) {
    assign(*this, state_, state, &FolderSearch::stateChanged);
}

}  // namespace Brimlo
