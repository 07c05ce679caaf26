#include "BrimloCore/Journal/JournalLog.h"

#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/Json.h"
#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo {

namespace {

using Platform::Descriptor;
using Kind = JournalLog::Kind;

constexpr std::size_t kLongestFile = std::size_t{512} << 20U;

/// The key of a line's only field, in the order of the kinds.
constexpr std::array<std::string_view, 4> kKeys{"leaves", "returns", "added", "changed"};

std::unexpected<Error> failure() {
    return std::unexpected(Error::fromSystem(errno));
}

std::string textOf(Kind kind, const std::vector<JournalEntry>& entries) {
    std::string text;
    for (const JournalEntry& entry : entries) {
        text += "{\"";
        text += kKeys.at(static_cast<std::size_t>(kind));
        text += "\":";
        entry.encode(text);
        text += "}\n";
    }
    return text;
}

std::expected<Descriptor, Error> openLog(const std::string& path) {
    Descriptor file{
        open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600)};
    struct stat status{};
    if (!file || fstat(file.number(), &status) != 0) {
        return failure();
    }
    if (!S_ISREG(status.st_mode) || status.st_uid != geteuid()) {
        return std::unexpected(Error::fromSystem(EPERM));
    }
    return file;
}

std::optional<JournalLog::Line> parse(std::string_view text) {
    const auto value = Json::parse(text);
    if (!value || !value->is_object() || value->get_object().size() != 1) {
        return std::nullopt;
    }
    const auto& field = *value->get_object().begin();
    const auto* const key = std::ranges::find(kKeys, std::string_view{field.key()});
    auto entry = JournalEntry::decode(field.value());
    if (key == kKeys.end() || !entry) {
        return std::nullopt;
    }
    return JournalLog::Line{
        .kind = static_cast<Kind>(key - kKeys.begin()), .entry = *std::move(entry)};
}

}  // namespace

JournalLog::JournalLog(std::string path)
    : path_{std::move(path)} {}

std::expected<std::vector<JournalLog::Line>, Error> JournalLog::read() const {
    const auto text = readFile(path_, kLongestFile, Owner::trusted);
    if (!text && text.error().code != ENOENT) {
        return std::unexpected(text.error());
    }
    std::vector<Line> lines;
    std::string_view rest = text ? std::string_view{*text} : "";
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        if (auto line = parse(rest.substr(0, end))) {
            lines.push_back(*std::move(line));
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return lines;
}

std::expected<void, Error> JournalLog::checkWritable() const {
    const auto file = openLog(path_);
    if (!file) {
        return std::unexpected(file.error());
    }
    return lseek(file->number(), 0, SEEK_END) == 0 ? remove() : std::expected<void, Error>{};
}

std::expected<void, Error> JournalLog::append(
    Kind kind, const std::vector<JournalEntry>& entries, Durability durability) const {
    const auto opened = openLog(path_);
    if (!opened) {
        return std::unexpected(opened.error());
    }
    const Descriptor& file = *opened;
    const off_t end = lseek(file.number(), 0, SEEK_END);
    char last = '\n';
    if (end > 0 && pread(file.number(), &last, 1, end - 1) != 1) {
        return failure();
    }
    // The line end closes what a power cut has torn.
    const std::string text = (last == '\n' ? "" : "\n") + textOf(kind, entries);
    const bool isDone = Platform::writeBytes(file.number(), text) &&
                        (durability == Durability::written || Platform::syncFile(file.number()));
    if (!isDone) {
        const auto reason = failure();
        // What stays of a line is skipped by readers.
        const int isLeft = end == 0 ? unlink(path_.c_str()) : ftruncate(file.number(), end);
        static_cast<void>(isLeft);
        return reason;
    }
    if (end == 0 && durability == Durability::synced) {
        const Descriptor folder{
            open(std::string{Path::parent(path_)}.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
        Platform::syncFolder(folder.number());
    }
    return {};
}

std::expected<void, Error> JournalLog::remove() const {
    if (unlink(path_.c_str()) != 0 && errno != ENOENT) {
        return failure();
    }
    return {};
}

}  // namespace Brimlo
