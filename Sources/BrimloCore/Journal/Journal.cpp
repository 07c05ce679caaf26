#include "BrimloCore/Journal/Journal.h"

#include "BrimloCore/Support/Json.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <utility>

namespace Brimlo {

namespace {

/// A journal this long has a million entries; reading more would only exhaust the memory.
constexpr std::size_t kLongestFile = std::size_t{512} << 20U;

std::string encode(const std::vector<JournalEntry>& entries) {
    std::string text = "[";
    for (const JournalEntry& entry : entries) {
        if (text.size() > 1) {
            text += ',';
        }
        entry.encode(text);
    }
    text += ']';
    return text;
}

/// Completes the beginning of a journal's text with `entry` as its last.
void complete(std::string& text, const JournalEntry& entry) {
    entry.encode(text);
    text += ']';
}

enum class Condition { intact, olderForm, someUnreadable, noList };

/// Calls `visit` with each readable entry in the text of a journal. With `noList` the visited
/// entries must be discarded.
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

}  // namespace

Journal::Pending::Pending(
    Lock lock, std::string path, std::string beginning, JournalEntry entry, AtomicFile file)
    : lock_{std::move(lock)}
    , path_{std::move(path)}
    , beginning_{std::move(beginning)}
    , entry_{std::move(entry)}
    , file_{std::move(file)} {}

std::expected<void, Error> Journal::Pending::publish(const JournalEntry& entry) && {
    if (entry_ == entry) {
        return file_.publish();
    }
    complete(beginning_, entry);
    return AtomicFile::write(path_, beginning_);
}

Journal::Journal(std::string path)
    : path_{std::move(path)} {}

Journal::Lock Journal::lock() {
    std::unique_lock threads{mutex_};
    return {.threads = std::move(threads), .processes = FileLock{path_}};
}

/// A missing file is an empty journal. Fails only when the file exists and can't be read.
std::expected<std::vector<JournalEntry>, Error> Journal::load() const {
    const auto text = readFile(path_, kLongestFile, Owner::trusted);
    if (!text && text.error().code != ENOENT) {
        return std::unexpected(text.error());
    }
    std::vector<JournalEntry> entries;
    if (!text) {
        return entries;
    }
    const Condition condition =
        forEachEntry(*text, [&](JournalEntry&& entry) { entries.push_back(std::move(entry)); });
    if (condition == Condition::noList) {
        entries.clear();
    }
    if (condition > Condition::olderForm) {
        preserveCorrupt(path_);
    }
    return entries;
}

/// The journal's text up to where the next entry goes. An intact file's text is reused: encoding
/// thousands of entries again would take longer than writing them.
std::expected<std::string, Error> Journal::beginning() const {
    std::int64_t count = 0;
    std::string text = readFile(path_, kLongestFile, Owner::trusted).value_or("");
    if (forEachEntry(text, [&](const JournalEntry&) { ++count; }) == Condition::intact) {
        text.resize(text.rfind(']'));
    } else {
        const auto entries = load();
        if (!entries) {
            return std::unexpected(entries.error());
        }
        count = std::ssize(*entries);
        text = encode(*entries);
        text.pop_back();
    }
    if (count > 0) {
        text += ',';
    }
    return text;
}

std::expected<std::vector<JournalEntry>, Error> Journal::entries() {
    const Lock held = lock();
    auto entries = load();
    if (entries) {
        std::ranges::reverse(*entries);
    }
    return entries;
}

std::expected<void, Error> Journal::append(const JournalEntry& entry) {
    auto pending = prepare(entry);
    return pending ? std::move(*pending).publish(entry) : std::unexpected(pending.error());
}

std::expected<void, Error> Journal::update(
    const std::set<Uuid>& ids, const std::function<void(JournalEntry&)>& body) {
    const Lock held = lock();
    auto entries = load();
    if (!entries) {
        return std::unexpected(entries.error());  // An unreadable file must not be overwritten.
    }
    for (JournalEntry& entry : *entries) {
        if (ids.contains(entry.id)) {
            body(entry);
        }
    }
    return AtomicFile::write(path_, encode(*entries));
}

std::expected<void, Error> Journal::checkWritable() {
    const auto pending = prepare(JournalEntry::make({}));
    return pending ? std::expected<void, Error>{} : std::unexpected(pending.error());
}

std::expected<Journal::Pending, Error> Journal::prepare(const JournalEntry& entry) {
    Lock held = lock();
    auto text = beginning();
    if (!text) {
        return std::unexpected(text.error());
    }
    const std::size_t beginningLength = text->size();
    complete(*text, entry);
    auto file = AtomicFile::prepare(path_, *text);
    if (!file) {
        return std::unexpected(file.error());
    }
    text->resize(beginningLength);
    return Pending{std::move(held), path_, *std::move(text), entry, *std::move(file)};
}

}  // namespace Brimlo
