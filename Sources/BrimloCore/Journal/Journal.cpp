#include "BrimloCore/Journal/Journal.h"

#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/Platform/TrashItem.h"
#include "BrimloCore/Support/Json.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

#include <fcntl.h>

namespace Brimlo {

namespace {

using Entries = Journal::Entries;
using Kind = JournalLog::Kind;

/// A journal this long has a million entries; reading more would only exhaust the memory.
constexpr std::size_t kLongestFile = std::size_t{512} << 20U;

void encode(const Entries& entries, std::string& text) {
    for (const JournalEntry& entry : entries) {
        if (!text.ends_with('[')) {
            text += ',';
        }
        entry.encode(text);
    }
    text += ']';
}

enum class Condition { intact, olderForm, someUnreadable, noList };

/// Calls `visit` with each entry in the text of a journal that can be read. What was visited counts
/// only when the text is a list to its end.
template <typename Visit>
Condition forEachEntry(std::string_view text, const Visit& visit) {
    Condition condition = Condition::intact;
    const bool isList = Json::forEachElement(text, [&](const Json::Value& element) {
        auto entry = JournalEntry::decode(element);
        if (!entry) {
            condition = Condition::someUnreadable;
            return;
        }
        if (!element.as_object().contains("batchID")) {
            condition = std::max(condition, Condition::olderForm);
        }
        visit(*std::move(entry));
    });
    return isList ? condition : Condition::noList;
}

/// Whether the entry's item is in the Trash, or can't be looked for.
bool mayBeInTrash(const JournalEntry& entry) {
    if (!entry.trashPath) {
        return false;
    }
    const auto found = Platform::TrashItem::find(*entry.trashPath, entry.id.text(), entry.trashID);
    return found || found.error().domain != kSystemErrorDomain || found.error().code != ENOENT;
}

/// What the log says of the entries.
struct Changes {
    Entries added;
    std::map<Uuid, JournalEntry> changed;
    bool hasLeftovers = false;  ///< Whether a process died between an announcement and its record.
};

/// Settles the announcements without a record: where the item is now tells whether it moved.
Changes settle(const std::vector<JournalLog::Line>& lines) {
    std::map<Uuid, Kind> last;
    for (const JournalLog::Line& line : lines) {
        last[line.entry.id] = line.kind;
    }
    Changes changes;
    for (const auto& [kind, entry] : lines) {
        const bool isLeftover = last[entry.id] == kind;
        switch (kind) {
            case Kind::added:
                changes.added.push_back(entry);
                break;
            case Kind::changed:
                changes.changed.insert_or_assign(entry.id, entry);
                break;
            case Kind::leaves:
                changes.hasLeftovers = changes.hasLeftovers || isLeftover;
                if (isLeftover && mayBeInTrash(entry)) {
                    changes.added.push_back(entry);
                }
                break;
            case Kind::returns:
                changes.hasLeftovers = changes.hasLeftovers || isLeftover;
                if (isLeftover && !mayBeInTrash(entry) &&
                    Platform::FileIdentity::of(entry.originalPath)) {
                    JournalEntry restored = entry;
                    restored.undone = true;
                    changes.changed.insert_or_assign(entry.id, std::move(restored));
                }
                break;
        }
    }
    return changes;
}

/// The file may hold some of the changes already: a process can die after it has written the file
/// and before it has removed the log.
void apply(Changes changes, Entries& entries) {
    std::set<Uuid> present;
    for (const JournalEntry& entry : entries) {
        present.insert(entry.id);
    }
    for (JournalEntry& entry : changes.added) {
        if (present.insert(entry.id).second) {
            entries.push_back(std::move(entry));
        }
    }
    for (JournalEntry& entry : entries) {
        if (const auto found = changes.changed.find(entry.id); found != changes.changed.end()) {
            entry = found->second;
        }
    }
}

/// Tells this state of a file from every other one; empty when there is none.
std::string stampOf(const std::string& path) {
    const Platform::Descriptor file{open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)};
    const auto version =
        file ? Platform::FileVersion::of(file.number()) : std::optional<Platform::FileVersion>{};
    if (!version) {
        return {};
    }
    const auto& [seconds, nanoseconds] = version->changed;
    return version->identity.text() + " " + std::to_string(version->length) + " " +
           std::to_string(seconds) + "." + std::to_string(nanoseconds);
}

/// The entries in the file at `path`; a missing file has none. A damaged one is copied aside.
std::expected<Entries, Error> readList(const std::string& path) {
    const auto text = readFile(path, kLongestFile, Owner::trusted);
    if (!text && text.error().code != ENOENT) {
        return std::unexpected(text.error());
    }
    Entries entries;
    if (!text) {
        return entries;
    }
    const Condition condition =
        forEachEntry(*text, [&](JournalEntry&& entry) { entries.push_back(std::move(entry)); });
    if (condition == Condition::noList) {
        entries.clear();
    }
    if (condition > Condition::olderForm) {
        preserveCorrupt(path);
    }
    return entries;
}

/// The text of the file at `path` with the changes in it. If the file is as `stamp` says, this
/// program wrote it and it is intact: its entries are copied as text, since decoding thousands to
/// add one costs more than the disk does. Not so if it holds the changes already, since a power cut
/// can bring back a log that was merged; then it holds the first of them.
std::expected<std::string, Error> mergedText(
    const std::string& path, const std::string& stamp, Changes changes) {
    if (changes.changed.empty() && !stamp.empty() && stamp == stampOf(path)) {
        auto text = readFile(path, kLongestFile, Owner::trusted);
        if (text && text->ends_with(']') && !text->contains(changes.added.front().id.text())) {
            text->pop_back();
            encode(changes.added, *text);
            return text;
        }
    }
    auto entries = readList(path);
    if (!entries) {
        return std::unexpected(entries.error());
    }
    apply(std::move(changes), *entries);
    std::string text = "[";
    encode(*entries, text);
    return text;
}

}  // namespace

std::expected<void, Error> Journal::Group::announce(Kind kind, const Entries& entries) {
    return log_->append(kind, entries, JournalLog::Durability::synced);
}

std::expected<void, Error> Journal::Group::record(Kind kind, const Entries& entries) {
    return log_->append(kind, entries, JournalLog::Durability::written);
}

Journal::Journal(std::string path)
    : path_{std::move(path)}
    , log_{path_ + ".log"} {}

Journal::Lock Journal::lock() {
    std::unique_lock threads{mutex_};
    return {.threads = std::move(threads), .processes = FileLock{path_}};
}

std::expected<Journal::Content, Error> Journal::load() const {
    auto entries = readList(path_);
    const auto lines = log_.read();
    if (!entries || !lines) {
        return std::unexpected(entries ? lines.error() : entries.error());
    }
    Content content{.entries = *std::move(entries)};
    if (!lines->empty()) {
        Changes changes = settle(*lines);
        content.hasLeftovers = changes.hasLeftovers;
        apply(std::move(changes), content.entries);
    }
    return content;
}

/// Replaces the file by a text that holds the log, too.
std::expected<void, Error> Journal::write(const Lock& held, const std::string& text) const {
    auto written = AtomicFile::write(path_, text);
    if (written) {
        written = log_.remove();
    }
    // The next writer reads the entries again, unless it finds the file as it is now.
    held.processes.setNote(written ? stampOf(path_) : "");
    return written;
}

std::expected<void, Error> Journal::merge(const Lock& held) const {
    const auto lines = log_.read();
    if (!lines || lines->empty()) {
        return lines ? std::expected<void, Error>{} : std::unexpected(lines.error());
    }
    Changes changes = settle(*lines);
    if (changes.added.empty() && changes.changed.empty()) {
        return log_.remove();  // Nothing of what was announced has moved.
    }
    const auto text = mergedText(path_, held.processes.note(), std::move(changes));
    return text ? write(held, *text) : std::unexpected(text.error());
}

std::expected<void, Error> Journal::merge() {
    return merge(lock());
}

std::expected<Entries, Error> Journal::entries() {
    const Lock held = lock();
    auto content = load();
    if (!content) {
        return std::unexpected(content.error());
    }
    if (content->hasLeftovers) {
        // Before the Trash changes and no longer tells what happened.
        static_cast<void>(merge(held));
    }
    std::ranges::reverse(content->entries);
    return std::move(content->entries);
}

std::expected<Journal::Group, Error> Journal::begin() {
    Lock held = lock();
    const auto readable = checkReadable(path_, Owner::trusted);
    if (!readable && readable.error().code != ENOENT) {
        return std::unexpected(readable.error());
    }
    return Group{std::move(held), log_};
}

std::expected<void, Error> Journal::append(const JournalEntry& entry) {
    auto group = begin();
    if (!group) {
        return std::unexpected(group.error());
    }
    auto recorded = group->announce(Kind::added, {entry});
    if (recorded) {
        static_cast<void>(merge(group->lock_));  // What the log holds counts.
    }
    return recorded;
}

std::expected<void, Error> Journal::update(
    const std::set<Uuid>& ids, const std::function<void(JournalEntry&)>& body) {
    const Lock held = lock();
    auto content = load();
    if (!content) {
        return std::unexpected(content.error());  // What can't be read is not overwritten.
    }
    for (JournalEntry& entry : content->entries) {
        if (ids.contains(entry.id)) {
            body(entry);
        }
    }
    std::string text = "[";
    encode(content->entries, text);
    return write(held, text);
}

std::expected<void, Error> Journal::checkWritable() {
    auto group = begin();
    return group ? log_.checkWritable() : std::unexpected(group.error());
}

}  // namespace Brimlo
