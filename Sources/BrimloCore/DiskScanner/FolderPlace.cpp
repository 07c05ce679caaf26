#include "BrimloCore/DiskScanner/FolderPlace.h"

#include "BrimloCore/Platform/Posix/Folders.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include <fcntl.h>
#include <sys/resource.h>

namespace Brimlo {

namespace {

// Several threads walk at once, and some systems start with 256 descriptors.
constexpr int kMostOpen = 16;
constexpr std::size_t kLongestRelative = 3000;

constexpr rlim_t kOfOthers = 30;  // Descriptors that the rest of the process may have open.

}  // namespace

unsigned FolderPlace::mostWalkers() {
    rlimit files{};
    if (getrlimit(RLIMIT_NOFILE, &files) != 0 || files.rlim_cur <= kOfOthers) {
        return 1;
    }
    // The folder at work and one that is handed on, besides those above.
    const rlim_t walkers = (files.rlim_cur - kOfOthers) / (kMostOpen + 2);
    return static_cast<unsigned>(std::clamp<rlim_t>(walkers, 1, 16));
}

FolderPlace::FolderPlace(std::string path)
    : relative_{std::move(path)} {}

FolderPlace::Open FolderPlace::open() const {
    Platform::Descriptor descriptor{
        base_ ? Platform::openFolderBelow(base_->number(), relative_)
              : ::open(relative_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    return descriptor ? std::make_shared<const Platform::Descriptor>(std::move(descriptor))
                      : nullptr;
}

FolderPlace::Inside FolderPlace::inside(const Open& self) const {
    const bool extendsPath =
        base_ && openAbove_ >= kMostOpen && relative_.size() < kLongestRelative;
    Inside inside;
    inside.base_ = extendsPath ? base_ : self;
    inside.prefix_ = extendsPath ? relative_ + "/" : "";
    inside.openAbove_ = extendsPath ? openAbove_ : openAbove_ + 1;
    return inside;
}

FolderPlace FolderPlace::Inside::place(std::string_view name) const {
    FolderPlace place;
    place.base_ = base_;
    place.relative_.reserve(prefix_.size() + name.size());
    place.relative_.append(prefix_).append(name);
    place.openAbove_ = openAbove_;
    return place;
}

}  // namespace Brimlo
