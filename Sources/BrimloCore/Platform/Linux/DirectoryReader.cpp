#include "BrimloCore/Platform/DirectoryReader.h"

#include "BrimloCore/Platform/EntryStatus.h"

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace Brimlo::Platform {

namespace {

/// Larger buffers save no measurable time: 64 KiB hold about 2,000 entries.
using Buffer = std::array<char, std::size_t{64} << 10U>;

constexpr int kStatFlags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC;

/// The blocks of a file are told in this unit whatever the file system's own is (stat(2)).

/// Fills in what the directory itself does not tell. False when the entry has vanished.
bool complete(int descriptor, DirectoryEntry& entry, unsigned char type, EntryDetail detail) {
    if (entry.isDirectory || (detail == EntryDetail::kind && type != DT_UNKNOWN)) {
        return true;
    }
    struct statx status {};
    const unsigned mask = STATX_TYPE | STATX_BLOCKS | STATX_NLINK | STATX_INO;
    if (statx(descriptor, entry.name, kStatFlags, mask, &status) != 0) {
        return false;
    }
    entry.isDirectory = S_ISDIR(status.stx_mode);
    entry.allocatedBytes = static_cast<std::int64_t>(status.stx_blocks) * kBlockBytes;
    entry.linkCount = status.stx_nlink;
    entry.inode = status.stx_ino;
    return true;
}

}  // namespace

bool readDirectory(
    int descriptor, EntryDetail detail, const std::function<void(const DirectoryEntry&)>& visit) {
    thread_local const auto buffer = std::make_unique<Buffer>();
    while (true) {
        const long length = syscall(SYS_getdents64, descriptor, buffer->data(), buffer->size());
        if (length <= 0) {
            return length == 0;
        }
        for (long offset = 0; offset < length;) {
            // The kernel aligns each record for this type.
            const auto* record = reinterpret_cast<const dirent64*>(buffer->data() + offset);
            offset += record->d_reclen;
            const std::string_view name = record->d_name;
            DirectoryEntry entry{.name = name.data(), .isDirectory = record->d_type == DT_DIR};
            if (name != "." && name != ".." &&
                complete(descriptor, entry, record->d_type, detail)) {
                visit(entry);
            }
        }
    }
}

}  // namespace Brimlo::Platform
