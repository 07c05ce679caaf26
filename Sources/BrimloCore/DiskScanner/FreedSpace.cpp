#include "BrimloCore/DiskScanner/FreedSpace.h"

#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/Fmt.h"

#include <iterator>
#include <memory>

#include <fcntl.h>

namespace Brimlo {

using Platform::BlockRange;
using Platform::UnsureBlocks;

SpaceUse SpaceUse::of(const std::string& path, const Platform::EntryStatus& status) {
    SpaceUse use{.size = status.allocatedBytes};
    SharedSpace shared;
    if (status.kind == Platform::EntryStatus::Kind::file && use.size > 0 &&
        Platform::blockSharing(path).isPossible) {
        shared.unsure = Platform::unsureBlocks(AT_FDCWD, path.c_str(), use.size);
    }
    if (status.linkCount > 1) {
        shared.files.push_back(
            {.identity = status.identity,
             .bytes = use.size,
             .names = status.linkCount,
             .unsure = std::exchange(shared.unsure, {})});
    }
    if (!shared.files.empty() || shared.unsure.bytes > 0) {
        use.shared = std::make_shared<const SharedSpace>(std::move(shared));
    }
    return use;
}

void FreedSpace::step(const SpaceUse& use, int sign) {
    taken_ = Bytes::sum(taken_, sign * use.size);
    if (!use.shared) {
        return;
    }
    count(use.shared->unsure, sign);
    for (const SharedFile& file : use.shared->files) {
        std::uint32_t& names = names_[file.identity];
        const bool wasWhole = names >= file.names;
        names = sign > 0 ? names + file.here : names - file.here;
        const bool isWhole = names >= file.names;
        named_ = Bytes::sum(named_, sign * file.bytes);
        if (isWhole != wasWhole) {
            named_ = Bytes::sum(named_, -sign * file.bytes);
            count(file.unsure, sign);
        }
        if (names == 0) {
            names_.erase(file.identity);
        }
    }
}

void FreedSpace::count(const UnsureBlocks& unsure, int sign) {
    unsure_ = Bytes::sum(unsure_, sign * unsure.bytes);
    unplaced_ = Bytes::sum(unplaced_, sign * unsure.unplaced);
    for (const BlockRange& range : unsure.ranges) {
        count(range, sign);
    }
}

void FreedSpace::count(const BlockRange& range, int sign) {
    if (range.start >= range.end) {
        return;
    }
    // Each end becomes a key of its own, and stays one if the numbers around it differ afterwards.
    const auto key = [&](std::uint64_t position) {
        const auto next = holders_.lower_bound({range.device, position});
        const int before = next == holders_.begin() ? 0 : std::prev(next)->second;
        return holders_.try_emplace(next, {range.device, position}, before);
    };
    const auto first = key(range.start);
    const auto last = key(range.end);
    for (auto each = first; each != last; ++each) {
        const bool wasHeld = each->second > 0;
        each->second += sign;
        if (wasHeld != (each->second > 0)) {
            const std::uint64_t bytes = std::next(each)->first.second - each->first.second;
            covered_ = Bytes::sum(covered_, sign * static_cast<std::int64_t>(bytes));
        }
    }
    for (const auto end : {last, first}) {
        if (end->second == (end == holders_.begin() ? 0 : std::prev(end)->second)) {
            holders_.erase(end);
        }
    }
}

std::int64_t FreedSpace::atLeast() const {
    return Bytes::sum(taken_, -Bytes::sum(named_, unsure_));
}

std::int64_t FreedSpace::atMost() const {
    return Bytes::sum(atLeast(), Bytes::sum(unplaced_, covered_));
}

std::string FreedSpace::words() const {
    if (atLeast() >= taken_) {
        return {};
    }
    if (atMost() == atLeast()) {
        return "frees " + Fmt::bytes(atLeast());
    }
    return atLeast() == 0 ? "may free nothing" : "frees at least " + Fmt::bytes(atLeast());
}

std::string FreedSpace::reason() const {
    constexpr std::string_view kNames = "has other names that stay";
    constexpr std::string_view kBlocks = "may share its blocks with other files, or be compressed";
    const std::string_view one = named_ > 0 ? kNames : kBlocks;
    return std::string{"the rest "}.append(one).append(
        named_ > 0 && unsure_ > 0 ? ", or " + std::string{kBlocks} : "");
}

}  // namespace Brimlo
