#include "BrimloCore/DiskScanner/FreedSpace.h"

#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/Fmt.h"

namespace Brimlo {

namespace {

const std::vector<SharedFile>& filesOf(const SpaceUse& use) {
    static const std::vector<SharedFile> none;
    return use.shared ? *use.shared : none;
}

}  // namespace

SpaceUse SpaceUse::of(const Platform::EntryStatus& status) {
    SpaceUse use{.bytes = status.allocatedBytes};
    if (status.linkCount > 1) {
        use.shared = std::make_shared<const std::vector<SharedFile>>(
            1,
            SharedFile{
                .identity = status.identity,
                .bytes = status.allocatedBytes,
                .names = status.linkCount});
    }
    return use;
}

std::int64_t SpaceUse::freedAlone() const {
    std::int64_t freed = bytes;
    for (const SharedFile& file : filesOf(*this)) {
        freed = Bytes::sum(freed, -file.bytes);
    }
    return freed;
}

void FreedSpace::add(const SpaceUse& use) {
    bytes_ = Bytes::sum(bytes_, use.freedAlone());
    for (const SharedFile& file : filesOf(use)) {
        std::uint32_t& names = names_[file.identity];
        const bool wasWhole = names >= file.names;
        names += file.here;
        if (!wasWhole && names >= file.names) {
            bytes_ = Bytes::sum(bytes_, file.bytes);
        }
    }
}

void FreedSpace::remove(const SpaceUse& use) {
    bytes_ = Bytes::sum(bytes_, -use.freedAlone());
    for (const SharedFile& file : filesOf(use)) {
        const auto found = names_.find(file.identity);
        if (found == names_.end()) {
            continue;
        }
        const bool wasWhole = found->second >= file.names;
        found->second -= file.here;
        if (wasWhole && found->second < file.names) {
            bytes_ = Bytes::sum(bytes_, -file.bytes);
        }
        if (found->second == 0) {
            names_.erase(found);
        }
    }
}

std::string freesWords(std::int64_t taken, std::int64_t freed) {
    return freed < taken ? "frees " + Fmt::bytes(freed) : std::string{};
}

}  // namespace Brimlo
