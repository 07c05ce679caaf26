#include "BrimloCore/Platform/DirectoryEntry.h"

#include "BrimloCore/Platform/Posix/Stat.h"
#include "BrimloCore/Platform/macOS/AttributeRecords.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <memory>

#include <fcntl.h>
#include <sys/attr.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Platform {

namespace {

/// Room for hundreds of entries a call; a call per entry is slower.
using Buffer = std::array<std::byte, std::size_t{512} << 10U>;

static_assert(ATTR_CMN_RETURNED_ATTRS == 0x80000000U && ATTR_CMN_FILEID == 0x02000000);
static_assert(ATTR_CMN_OBJTYPE == 0x00000008 && ATTR_CMN_NAME == 0x00000001);
static_assert(ATTR_FILE_LINKCOUNT == 0x00000001 && ATTR_FILE_ALLOCSIZE == 0x00000004);
static_assert(sizeof(attribute_set_t) == 20 && sizeof(attrreference_t) == 8);

/// Makes reads of this thread fail in a folder whose contents are in the cloud, instead of
/// downloading them: measuring a disk must not fill it.
bool stayOffTheNetwork() {
    return setiopolicy_np(
               IOPOL_TYPE_VFS_MATERIALIZE_DATALESS_FILES,
               IOPOL_SCOPE_THREAD,
               IOPOL_MATERIALIZE_DATALESS_FILES_OFF) == 0;
}

EntryStatus::Kind kindOf(mode_t mode) {
    if (S_ISDIR(mode)) {
        return EntryStatus::Kind::directory;
    }
    return S_ISREG(mode) ? EntryStatus::Kind::file : EntryStatus::Kind::other;
}

}  // namespace

bool readDirectory(
    int descriptor, EntryDetail detail, const std::function<void(const DirectoryEntry&)>& visit) {
    thread_local const auto buffer = std::make_unique<Buffer>();
    thread_local const bool staysOff = stayOffTheNetwork();
    static_cast<void>(staysOff);
    const AttributeRecords::Request wanted = AttributeRecords::request(detail);
    attrlist request{};
    request.bitmapcount = ATTR_BIT_MAP_COUNT;
    request.commonattr = wanted.commonattr;
    request.fileattr = wanted.fileattr;
    while (true) {
        const int count = getattrlistbulk(
            descriptor, &request, buffer->data(), buffer->size(), FSOPT_PACK_INVAL_ATTRS);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return count == 0;
        }
        if (!AttributeRecords::read(*buffer, static_cast<std::size_t>(count), visit)) {
            return false;
        }
    }
}

std::optional<EntryStatus> entryStatus(int folder, const char* path) {
    struct stat status{};
    if (fstatat(folder, path, &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return std::nullopt;
    }
    return EntryStatus{
        .kind = kindOf(status.st_mode),
        .allocatedBytes = status.st_blocks * kBlockBytes,
        .length = status.st_size,
        .linkCount = status.st_nlink,
        .identity = identityOf(status),
        .modified = std::chrono::sys_seconds{std::chrono::seconds{status.st_mtimespec.tv_sec}},
        .mount = static_cast<std::uint32_t>(status.st_dev),
    };
}

std::optional<EntryStatus> entryStatus(const char* path) {
    return entryStatus(AT_FDCWD, path);
}

}  // namespace Brimlo::Platform
