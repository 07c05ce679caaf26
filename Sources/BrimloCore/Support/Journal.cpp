#include "BrimloCore/Support/Journal.h"

#include "BrimloCore/Support/Json.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>

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

}  // namespace

Journal::Pending::Pending(
    Lock lock, std::string path, std::vector<JournalEntry> entries, AtomicFile file)
    : lock_(std::move(lock))
    , path_(std::move(path))
    , entries_(std::move(entries))
    , file_(std::move(file)) {}

void Journal::Pending::publish(const JournalEntry& entry) && {
    if (entries_.back() == entry) {
        static_cast<void>(file_.publish());
        return;
    }
    entries_.back() = entry;
    static_cast<void>(AtomicFile::write(path_, encode(entries_)));
}

Journal::Journal(std::string path)
    : path_(std::move(path)) {}

Journal::Lock Journal::lock() {
    Lock lock{.threads = std::unique_lock{mutex_}, .processes = {}};
    const std::string file = path_ + ".lock";
    lock.processes =
        Platform::Descriptor{open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600)};
    // Without a lock file the journal goes on with the threads' lock alone.
    while (lock.processes && flock(lock.processes.number(), LOCK_EX) != 0 && errno == EINTR) {
    }
    return lock;
}

/// A missing file is an empty journal. Fails only when a file is there that can't be read.
std::expected<std::vector<JournalEntry>, Error> Journal::load() const {
    const auto text = readFile(path_, kLongestFile);
    if (!text && text.error().code != ENOENT) {
        return std::unexpected(text.error());
    }
    std::vector<JournalEntry> entries;
    if (!text) {
        return entries;
    }
    const auto document = Json::parse(*text);
    const Json::Array* elements = document ? document->if_array() : nullptr;
    if (elements == nullptr) {
        preserveCorrupt(path_);
        return entries;
    }
    entries.reserve(elements->size());
    for (const Json::Value& element : *elements) {
        if (auto entry = JournalEntry::decode(element)) {
            entries.push_back(*std::move(entry));
        }
    }
    if (entries.size() < elements->size()) {
        preserveCorrupt(path_);
    }
    return entries;
}

void Journal::mutate(const std::function<void(std::vector<JournalEntry>&)>& body) {
    const Lock held = lock();
    // A journal that is there and can't be read is not overwritten.
    if (auto entries = load()) {
        body(*entries);
        static_cast<void>(AtomicFile::write(path_, encode(*entries)));
    }
}

std::vector<JournalEntry> Journal::entries() {
    std::vector<JournalEntry> entries;
    {
        const Lock held = lock();
        entries = load().value_or(std::vector<JournalEntry>{});
    }
    std::ranges::stable_sort(entries, std::ranges::greater{}, &JournalEntry::date);
    return entries;
}

void Journal::append(const JournalEntry& entry) {
    mutate([&](std::vector<JournalEntry>& entries) { entries.push_back(entry); });
}

void Journal::update(const Uuid& id, const std::function<void(JournalEntry&)>& body) {
    mutate([&](std::vector<JournalEntry>& entries) {
        const auto found = std::ranges::find(entries, id, &JournalEntry::id);
        if (found != entries.end()) {
            body(*found);
        }
    });
}

std::expected<Journal::Pending, Error> Journal::prepare(const JournalEntry& entry) {
    Lock held = lock();
    auto entries = load();
    if (!entries) {
        return std::unexpected(entries.error());
    }
    entries->push_back(entry);
    auto file = AtomicFile::prepare(path_, encode(*entries));
    if (!file) {
        return std::unexpected(file.error());
    }
    return Pending{std::move(held), path_, *std::move(entries), *std::move(file)};
}

}  // namespace Brimlo
