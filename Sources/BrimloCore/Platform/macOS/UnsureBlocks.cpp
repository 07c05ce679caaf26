#include "BrimloCore/Platform/UnsureBlocks.h"

#include <algorithm>
#include <string_view>

#include <sys/attr.h>
#include <sys/mount.h>
#include <sys/param.h>
#include <unistd.h>

namespace Brimlo::Platform {

namespace {

BlockSharing sharingOf(const struct statfs& status) {
    const std::string_view type{static_cast<const char*>(status.f_fstypename)};
    return {.isPossible = type == "apfs"};
}

}  // namespace

BlockSharing blockSharing(int folder) {
    struct statfs status{};
    return fstatfs(folder, &status) == 0 ? sharingOf(status) : BlockSharing{};
}

BlockSharing blockSharing(const std::string& path) {
    struct statfs status{};
    return statfs(path.c_str(), &status) == 0 ? sharingOf(status) : BlockSharing{};
}

// APFS tells how many bytes are a file's alone, and not where those lie that clones share. So the
// least that a removal frees is known as on Linux; the most counts each clone.
UnsureBlocks unsureBlocks(int folder, const char* name, std::int64_t allocatedBytes) {
    struct [[gnu::packed]] {
        std::uint32_t length;
        std::int64_t privateBytes;
    } answer{};
    attrlist request{};
    request.bitmapcount = ATTR_BIT_MAP_COUNT;
    request.forkattr = ATTR_CMNEXT_PRIVATESIZE;
    const bool isTold = getattrlistat(
                            folder,
                            name,
                            &request,
                            &answer,
                            sizeof answer,
                            FSOPT_NOFOLLOW | FSOPT_ATTR_CMN_EXTENDED) == 0 &&
                        answer.length == sizeof answer;
    const std::int64_t shared =
        allocatedBytes -
        (isTold ? std::clamp<std::int64_t>(answer.privateBytes, 0, allocatedBytes) : 0);
    return {.bytes = shared, .unplaced = shared, .ranges = {}};
}

std::optional<std::vector<Extent>> sharedExtents(int /*file*/) {
    return std::nullopt;
}

}  // namespace Brimlo::Platform
