#include "BrimloCore/ScanRecords/ScanHistory.h"

#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Support/AppConfig.h"
#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <string_view>
#include <system_error>
#include <utility>

#include <unistd.h>

namespace Brimlo::ScanHistory {

namespace {

using Kind = Platform::EntryStatus::Kind;
using std::chrono::sys_seconds;

constexpr std::string_view kSuffix = ".scan";
/// A full record with names of the greatest length takes 2.5 MB.
constexpr std::size_t kLongestFile = std::size_t{4} << 20U;

/// A file of a record: its name is the hash of the root, "-", the time in seconds and the suffix.
struct Kept {
    std::string path;
    std::string root;  ///< The hash, 16 digits.
    sys_seconds time;
};

std::string folderPath() {
    return StoragePaths::support() + "/Scans";
}

std::string hashed(const std::string& root) {
    constexpr std::size_t kDigits = 16;
    std::array<char, kDigits> digits{};
    const auto end =
        std::to_chars(digits.begin(), digits.end(), ScanRecord::hash(root), kDigits).ptr;
    const std::string_view text{digits.begin(), end};
    return std::string(kDigits - text.size(), '0').append(text);
}

std::string fileName(const ScanRecord& record) {
    return hashed(record.root)
        .append("-")
        .append(std::to_string(record.time.time_since_epoch().count()))
        .append(kSuffix);
}

std::optional<Kept> kept(const std::string& folder, std::string_view name) {
    const std::size_t dash = name.find('-');
    if (dash == std::string_view::npos || !name.ends_with(kSuffix)) {
        return std::nullopt;
    }
    const char* const end = name.data() + name.size() - kSuffix.size();
    std::int64_t seconds = 0;
    const auto [stop, error] = std::from_chars(name.data() + dash + 1, end, seconds);
    if (error != std::errc{} || stop != end || seconds < 0) {
        return std::nullopt;
    }
    return Kept{
        .path = folder + "/" + std::string{name},
        .root = std::string{name.substr(0, dash)},
        .time = sys_seconds{std::chrono::seconds{seconds}}};
}

/// All files of records, the newest first.
std::vector<Kept> allKept() {
    const std::string folder = folderPath();
    const auto status = Platform::entryStatus(folder.c_str());
    std::vector<Kept> all;
    if (!status || status->kind != Kind::directory) {
        return all;  // Nor is a symlink followed.
    }
    for (const std::string& name : Folders::names(folder).value_or(std::vector<std::string>{})) {
        if (auto file = kept(folder, name)) {
            all.push_back(*std::move(file));
        }
    }
    std::ranges::sort(all, std::ranges::greater{}, &Kept::time);
    return all;
}

std::vector<Kept> keptOf(const std::string& root) {
    std::vector<Kept> all = allKept();
    std::erase_if(all, [hash = hashed(root)](const Kept& file) { return file.root != hash; });
    return all;
}

/// Which of three or more, the newest first, is missed least.
std::size_t leastMissed(const std::vector<Kept>& files) {
    const auto gapForAge = [&](std::size_t i) {
        const std::chrono::duration<double> gap = files[i - 1].time - files[i + 1].time;
        const std::chrono::duration<double> age = files.front().time - files[i + 1].time;
        return age.count() > 0 ? gap / age : 0;
    };
    std::size_t least = 1;
    for (std::size_t i = 2; i + 1 < files.size(); ++i) {
        if (gapForAge(i) < gapForAge(least)) {
            least = i;
        }
    }
    return least;
}

void thin(const std::string& root) {
    std::vector<Kept> ofRoot = keptOf(root);
    while (ofRoot.size() > kMostOfOneRoot) {
        const auto spare = ofRoot.begin() + static_cast<std::ptrdiff_t>(leastMissed(ofRoot));
        unlink(spare->path.c_str());
        ofRoot.erase(spare);
    }
    const std::vector<Kept> all = allKept();
    for (std::size_t i = kMost; i < all.size(); ++i) {
        unlink(all[i].path.c_str());
    }
}

std::expected<ScanRecord, std::string> load(const std::string& path) {
    const auto status = Platform::entryStatus(path.c_str());
    if (!status || status->kind != Kind::file) {
        return std::unexpected("it is no regular file");
    }
    const auto bytes = readFile(path, kLongestFile, Owner::trusted);
    return bytes ? ScanRecord::decode(*bytes) : std::unexpected(bytes.error().description);
}

}  // namespace

std::expected<void, Error> remember(const ScanRecord& record) {
    const auto config = AppConfig::read();
    if (!config || !config->rememberScans) {
        return {};
    }
    const std::string folder = folderPath();
    const FileLock held{folder};
    if (auto made = Folders::create(folder, Folders::Access::ownerOnly); !made) {
        return made;
    }
    AtomicFile::removeLeftovers(folder, kSuffix);
    auto written = AtomicFile::write(folder + "/" + fileName(record), record.encode());
    if (written) {
        thin(record.root);
    }
    return written;
}

Found newest(const std::string& root, std::optional<sys_seconds> latest) {
    Found found;
    for (const Kept& file : keptOf(root)) {
        if (latest && file.time > *latest) {
            continue;
        }
        auto record = load(file.path);
        if (record && (record->root != root || record->time != file.time)) {
            record = std::unexpected("its name is not its own");
        }
        if (record) {
            found.record = *std::move(record);
            break;
        }
        found.refused.push_back(
            "The record " + file.path + " could not be used: " + record.error() + ".");
    }
    return found;
}

std::expected<void, Error> forget() {
    const FileLock held{folderPath()};
    for (const Kept& file : allKept()) {
        if (unlink(file.path.c_str()) != 0 && errno != ENOENT) {
            return std::unexpected(Error::fromSystem(errno));
        }
    }
    return {};
}

}  // namespace Brimlo::ScanHistory
