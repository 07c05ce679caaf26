#include "BrimloCore/DiskScanner/ScanControl.h"

#include "BrimloCore/Models/Bytes.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace Brimlo {

ScanControl::Progress ScanControl::progress() const {
    const std::lock_guard guard{lock_};
    isPathOld_ = true;
    return progress_;
}

std::vector<std::string> ScanControl::inaccessible() const {
    const std::lock_guard guard{lock_};
    std::vector<std::string> paths = skipped_;
    paths.insert(paths.end(), withoutDescriptor_.begin(), withoutDescriptor_.end());
    return paths;
}

std::vector<std::string> ScanControl::withoutDescriptor() const {
    const std::lock_guard guard{lock_};
    return withoutDescriptor_;
}

std::vector<std::string> ScanControl::otherVolumes() const {
    const std::lock_guard guard{lock_};
    std::vector<std::string> paths = otherVolumes_;
    std::ranges::sort(paths);
    return paths;
}

void ScanControl::record(
    std::int64_t files, std::int64_t bytes, const std::function<std::string()>& path) {
    {
        const std::lock_guard guard{lock_};
        progress_.files += files;
        progress_.bytes = Bytes::sum(progress_.bytes, bytes);
        if (!std::exchange(isPathOld_, false)) {
            return;
        }
    }
    std::string text = path();
    const std::lock_guard guard{lock_};
    progress_.path = std::move(text);
}

void ScanControl::skip(std::string path) {
    const std::lock_guard guard{lock_};
    skipped_.push_back(std::move(path));
}

void ScanControl::couldNotOpen(std::string path, int code) {
    if (code == ENOENT || code == ENOTDIR || code == ELOOP) {
        return;
    }
    const std::lock_guard guard{lock_};
    const bool isOurLimit = code == EMFILE || code == ENFILE;
    (isOurLimit ? withoutDescriptor_ : skipped_).push_back(std::move(path));
}

void ScanControl::leaveOut(std::string path) {
    const std::lock_guard guard{lock_};
    otherVolumes_.push_back(std::move(path));
}

}  // namespace Brimlo
