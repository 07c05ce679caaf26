#include "BrimloApp/Shell/FileChoice.h"

#include "BrimloApp/Shell/Shown.h"

namespace Brimlo {

void FileChoice::setKinds(int kinds) {
    assign(*this, kinds_, kinds, &FileChoice::changed);
}

void FileChoice::setOlderThan(int days) {
    assign(*this, olderThan_, days, &FileChoice::changed);
}

void FileChoice::setMinSize(double bytes) {
    assign(*this, minSize_, static_cast<std::int64_t>(bytes), &FileChoice::changed);
}

bool FileChoice::isActive() const {
    return kinds_ != 0 || olderThan_ > 0 || minSize_ != usualSize_;
}

FileFilter FileChoice::filter() const {
    FileFilter filter{.minSize = minSize_, .kinds = {}, .before = {}};
    for (const FileKind kind : kAllFileKinds) {
        if (((kinds_ >> static_cast<int>(kind)) & 1) != 0) {
            filter.kinds.insert(kind);
        }
    }
    if (olderThan_ > 0) {
        filter.before = FileFilter::daysAgo(olderThan_);
    }
    return filter;
}

}  // namespace Brimlo
