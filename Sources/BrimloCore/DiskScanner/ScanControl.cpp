#include "BrimloCore/DiskScanner/ScanControl.h"

#include <utility>

namespace Brimlo {

void ScanControl::cancel() {
    const std::lock_guard guard{lock_};
    cancelled_ = true;
}

bool ScanControl::isCancelled() const {
    const std::lock_guard guard{lock_};
    return cancelled_;
}

ScanControl::Progress ScanControl::progress() const {
    const std::lock_guard guard{lock_};
    return progress_;
}

std::vector<std::string> ScanControl::inaccessible() const {
    const std::lock_guard guard{lock_};
    return skipped_;
}

void ScanControl::record(std::int64_t files, std::int64_t bytes, std::string path) {
    const std::lock_guard guard{lock_};
    progress_.files += files;
    progress_.bytes += bytes;
    progress_.path = std::move(path);
}

void ScanControl::skip(std::string path) {
    const std::lock_guard guard{lock_};
    skipped_.push_back(std::move(path));
}

}  // namespace Brimlo
