#include "BrimloCore/ScanRecords/Growth.h"

#include "BrimloCore/Models/Bytes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <iterator>
#include <limits>
#include <map>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace Brimlo {

namespace {

using Index = std::size_t;
constexpr Index kNone = std::numeric_limits<Index>::max();

Growth::Total total(const ScanRecord::Folder& folder) {
    return {.size = folder.size, .fileCount = folder.fileCount};
}

/// Which folders of two records are the same.
class Matches {
public:
    Matches(const ScanRecord& before, const ScanRecord& now)
        : before_{before}
        , now_{now}
        , toBefore(now.folders.size(), kNone)
        , toNow(before.folders.size(), kNone) {
        match(0, 0);
        matchByPlace();
        if (before.device != 0 && before.device == now.device) {
            matchByIdentity();
            matchByPlace();  // What lies in the moved ones.
        }
    }

private:
    void match(Index now, Index before) {
        toBefore[now] = before;
        toNow[before] = now;
    }

    /// Those of one name in folders that are the same.
    void matchByPlace() {
        using Place = std::pair<Index, std::string_view>;
        std::map<Place, Index> places;
        for (Index i = 1; i < before_.folders.size(); ++i) {
            places.emplace(Place{before_.folders[i].parent, before_.folders[i].name}, i);
        }
        for (Index i = 1; i < now_.folders.size(); ++i) {
            const auto& folder = now_.folders[i];
            const auto found = places.find({toBefore[folder.parent], folder.name});
            if (toBefore[i] == kNone && found != places.end() && toNow[found->second] == kNone) {
                match(i, found->second);
            }
        }
    }

    /// From the last to the first, so that a folder vouches for the one around it.
    void matchByIdentity() {
        std::unordered_map<std::uint64_t, Index> inodes;
        for (Index i = 1; i < before_.folders.size(); ++i) {
            if (toNow[i] == kNone && before_.folders[i].inode != 0) {
                inodes.emplace(before_.folders[i].inode, i);
            }
        }
        std::vector<Index> vouchedFor(now_.folders.size(), kNone);
        for (Index i = now_.folders.size(); i-- > 1;) {
            const auto& folder = now_.folders[i];
            const auto found = inodes.find(folder.inode);
            if (toBefore[i] != kNone || found == inodes.end() || toNow[found->second] != kNone) {
                continue;
            }
            const auto& old = before_.folders[found->second];
            if (old.name == folder.name || total(old) == total(folder) ||
                vouchedFor[i] == found->second) {
                match(i, found->second);
                vouchedFor[folder.parent] = old.parent;
            }
        }
    }

    const ScanRecord& before_;
    const ScanRecord& now_;

public:
    std::vector<Index> toBefore;  ///< For each folder of now, the one before; or `kNone`.
    std::vector<Index> toNow;     ///< The reverse.
};

/// The folders of one record that the other one lacks, each with those below it that it lacks, too.
struct Lacking {
    struct Part {
        Index folder;             ///< The topmost.
        std::int64_t bytes = 0;   ///< In it, but for what the other record has.
        std::int64_t hidden = 0;  ///< At most so many of them does the other record not list.
    };
    std::vector<Part> parts;
    std::vector<std::int64_t> hiddenIn;  ///< By folder of the other record, of all parts in it.
};

/// `toOther` tells for each folder of `record` the one in `other`.
Lacking lacking(
    const ScanRecord& record, const std::vector<Index>& toOther, const ScanRecord& other) {
    const std::vector<std::int64_t> rests = record.rests();
    const std::vector<std::int64_t> otherRests = other.rests();
    Lacking result{.parts = {}, .hiddenIn = std::vector<std::int64_t>(other.folders.size(), 0)};
    std::vector<Index> partOf(record.folders.size(), kNone);
    for (Index i = 1; i < record.folders.size(); ++i) {
        if (toOther[i] != kNone) {
            continue;
        }
        const Index around = record.folders[i].parent;
        partOf[i] = partOf[around];
        if (const Index there = toOther[around]; there != kNone) {
            // Unlisted, it was part of the rest of the folder around it.
            const std::int64_t hidden = std::min(other.floor - 1, otherRests[there]);
            partOf[i] = result.parts.size();
            result.parts.push_back({.folder = i, .bytes = 0, .hidden = hidden});
            result.hiddenIn[there] =
                std::min(Bytes::sum(result.hiddenIn[there], hidden), otherRests[there]);
        }
        result.parts[partOf[i]].bytes += rests[i];
    }
    return result;
}

std::vector<Growth::Folder> appeared(const ScanRecord& now, const Lacking& extra) {
    std::vector<Growth::Folder> folders;
    folders.reserve(extra.parts.size());
    for (const auto& [folder, bytes, hidden] : extra.parts) {
        folders.push_back(
            {.kind = Growth::Kind::appeared,
             .path = now.path(folder),
             .formerPath = std::nullopt,
             .before = std::nullopt,
             .now = total(now.folders[folder]),
             .least = bytes - hidden,
             .most = bytes});
    }
    return folders;
}

std::vector<Growth::Folder> vanished(const ScanRecord& before, const Lacking& missing) {
    std::vector<Growth::Folder> folders;
    folders.reserve(missing.parts.size());
    for (const auto& [folder, bytes, hidden] : missing.parts) {
        folders.push_back(
            {.kind = Growth::Kind::vanished,
             .path = before.path(folder),
             .formerPath = std::nullopt,
             .before = total(before.folders[folder]),
             .now = std::nullopt,
             .least = -bytes,
             .most = hidden - bytes});
    }
    return folders;
}

}  // namespace

std::string_view Growth::rawValue(Kind kind) {
    constexpr std::array<std::string_view, 4> kWords{"changed", "appeared", "vanished", "moved"};
    return kWords[static_cast<std::size_t>(kind)];
}

Growth Growth::between(const ScanRecord& before, const ScanRecord& now) {
    Growth growth{
        .since = before.time,
        .before = total(before.folders.front()),
        .now = total(now.folders.front()),
        .folders = {}};
    const Matches matches{before, now};
    const Lacking extra = lacking(now, matches.toBefore, before);
    const Lacking missing = lacking(before, matches.toNow, now);
    growth.folders = appeared(now, extra);
    std::ranges::move(vanished(before, missing), std::back_inserter(growth.folders));

    const std::vector<std::int64_t> restsBefore = before.rests();
    const std::vector<std::int64_t> restsNow = now.rests();
    for (Index i = 0; i < now.folders.size(); ++i) {
        const Index old = matches.toBefore[i];
        if (old == kNone) {
            continue;
        }
        const ScanRecord::Folder& was = before.folders[old];
        const bool hasMoved = matches.toBefore[now.folders[i].parent] != was.parent ||
                              now.folders[i].name != was.name;
        const std::int64_t change = restsNow[i] - restsBefore[old];
        growth.folders.push_back(
            {.kind = hasMoved ? Kind::moved : Kind::changed,
             .path = now.path(i),
             .formerPath = hasMoved ? std::optional{before.path(old)} : std::nullopt,
             .before = total(was),
             .now = total(now.folders[i]),
             .least = change - missing.hiddenIn[i],
             .most = change + extra.hiddenIn[old]});
    }
    std::erase_if(growth.folders, [](const Folder& folder) {
        return folder.kind != Kind::moved && folder.sure() == 0;
    });
    std::ranges::stable_sort(growth.folders, std::ranges::greater{}, &Folder::least);
    return growth;
}

}  // namespace Brimlo
