#include "BrimloCore/VolumeAccount/VolumeAccount.h"

#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/Fmt.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/VolumeAccount/VolumeWalk.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <ranges>
#include <utility>

namespace Brimlo {

namespace {

using Kind = AccountLine::Kind;
using Lines = std::vector<AccountLine>;

std::vector<std::string> trashesOn(const std::vector<std::string>& tops) {
    std::vector<std::string> trashes;
    for (const std::string& top : tops) {
        for (const std::string& folder : Platform::trashFolders(top)) {
            trashes.push_back(Path::resolved(folder));
        }
    }
    return trashes;
}

/// The Trash is one line, wherever it lies.
void mergeTrash(Lines& lines) {
    AccountLine trash{.kind = Kind::trash, .name = "Trash"};
    for (const AccountLine& line : lines) {
        if (line.kind == Kind::trash) {
            trash.bytes = Bytes::sum(trash.bytes, line.bytes);
            trash.files += line.files;
        }
    }
    std::erase_if(lines, [](const AccountLine& line) { return line.kind == Kind::trash; });
    lines.push_back(std::move(trash));
}

/// One line for each process.
Lines deletedOn(const VolumeWalk& walk, const Platform::DeletedFiles& deleted) {
    std::map<std::string, AccountLine> byProcess;
    for (const Platform::DeletedFile& file : deleted.files) {
        if (walk.holds(file.identity)) {
            AccountLine& line = byProcess[file.process];
            line.kind = Kind::deletedOpen;
            line.name = "Deleted but open in " + file.process;
            line.bytes = Bytes::sum(line.bytes, file.bytes);
            ++line.files;
        }
    }
    Lines lines;
    std::ranges::copy(byProcess | std::views::values, std::back_inserter(lines));
    return lines;
}

/// Adds the rest to what is known of the bytes that are taken.
void close(Lines& lines, std::int64_t taken) {
    std::erase_if(lines, [](const AccountLine& line) { return line.bytes == 0; });
    std::ranges::stable_sort(lines, std::greater{}, &AccountLine::bytes);
    for (const AccountLine& line : lines) {
        taken -= line.bytes;
    }
    lines.push_back({.kind = Kind::rest, .name = "Not explained", .bytes = taken});
}

/// "3 folders" and the like.
std::string counted(std::int64_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

}  // namespace

std::optional<VolumeAccount> VolumeAccount::of(const std::string& path, ScanControl& control) {
    Platform::VolumeView view = Platform::viewOfVolume(path);
    if (view.tops.empty()) {
        return std::nullopt;
    }
    VolumeWalk walk{control, Path::resolved(StoragePaths::home()), trashesOn(view.tops)};
    for (const std::string& top : view.tops) {
        walk.count(top);
    }
    const auto use = Platform::volumeUse(path);
    if (control.isCancelled() || !use) {
        return std::nullopt;
    }
    const Platform::DeletedFiles deleted = Platform::deletedOpenFiles();
    Lines lines = walk.lines();
    mergeTrash(lines);
    std::ranges::move(deletedOn(walk, deleted), std::back_inserter(lines));
    for (auto& [name, bytes] : Platform::fileSystemParts(view.tops.front())) {
        lines.push_back({.kind = Kind::fileSystem, .name = std::move(name), .bytes = bytes});
    }
    lines.push_back(
        {.kind = Kind::reserve,
         .name = "Kept back, not available to you",
         .bytes = use->free - use->available});
    close(lines, use->total - use->available);
    return VolumeAccount{
        .tops = std::move(view.tops),
        .isWhole = view.isWhole,
        .use = *use,
        .lines = std::move(lines),
        .unread = UnreadableFolders::group(control.inaccessible(), StoragePaths::home()),
        .snapshots = walk.snapshots(),
        .mountPoints = control.otherVolumes(),
        .unaskedProcesses = deleted.unaskedProcesses,
    };
}

std::string_view VolumeAccount::rawValue(AccountLine::Kind kind) {
    switch (kind) {
        case Kind::area:
            return "area";
        case Kind::trash:
            return "trash";
        case Kind::severalAreas:
            return "severalAreas";
        case Kind::deletedOpen:
            return "deletedOpen";
        case Kind::fileSystem:
            return "fileSystem";
        case Kind::reserve:
            return "reserve";
        case Kind::rest:
            break;
    }
    return "rest";
}

std::vector<AccountLine> VolumeAccount::largest(std::size_t most) const {
    // One line alone is no shorter when it is called a smaller one.
    if (lines.size() <= most + 2) {
        return lines;
    }
    const auto end = lines.begin() + static_cast<std::ptrdiff_t>(most);
    Lines shown{lines.begin(), end};
    AccountLine smaller{.name = std::to_string(lines.size() - 1 - most) + " smaller parts"};
    for (const AccountLine& line : std::ranges::subrange{end, lines.end() - 1}) {
        smaller.bytes = Bytes::sum(smaller.bytes, line.bytes);
        smaller.files += line.files;
    }
    shown.push_back(std::move(smaller));
    shown.push_back(lines.back());
    return shown;
}

std::vector<std::string> VolumeAccount::remarks() const {
    std::vector<std::string> remarks;
    if (use.files > 0 && use.freeFiles == 0) {
        remarks.push_back(
            "No more files can be made although " + Fmt::bytes(use.available) +
            " are free: the file system has no more than " + std::to_string(use.files) +
            " entries for files.");
    }
    if (!unread.empty()) {
        std::int64_t folders = 0;
        for (const UnreadableArea& area : unread) {
            folders += area.count;
        }
        remarks.push_back(
            counted(folders, "folder") + " could not be read. What they hold is in the rest.");
    }
    if (!isWhole) {
        remarks.emplace_back(
            "Only a part of the volume is mounted here. What lies in its other parts is in the "
            "rest.");
    }
    if (!snapshots.empty()) {
        remarks.push_back(
            "What only snapshots hold is in the rest. They are " +
            UnreadableFolders::firstFew(snapshots) + ".");
    }
    if (!mountPoints.empty()) {
        remarks.push_back(
            "Other volumes hide what lies in their folders: " +
            UnreadableFolders::firstFew(mountPoints) + ".");
    }
    if (unaskedProcesses > 0) {
        remarks.push_back(
            counted(unaskedProcesses, "program") +
            " of other users may hold deleted files open. These are in the rest.");
    }
    if (unexplained() < 0) {
        remarks.emplace_back(
            "The files come to more than is in use: some share their data, are compressed, or "
            "changed meanwhile.");
    }
    return remarks;
}

}  // namespace Brimlo
