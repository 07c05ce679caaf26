#include "Benchmarks/BareSystemCalls.h"

#include "BrimloCore/SuggestionEngine/ProjectArtifactFinder.h"

#include <array>
#include <atomic>
#include <memory>
#include <string_view>
#include <thread>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

// A folder is read to its end before its children are, so the children's names have to be kept for
// a while. They are, as plain bytes in one buffer a thread that grows and shrinks like a stack;
// nothing else is allocated.

namespace Brimlo::Benchmarks::Bare {

namespace {

constexpr std::size_t kBufferBytes = std::size_t{64} << 10U;
constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NOFOLLOW;

/// Calls `visit` with each record of the folder but "." and "..".
template <typename Visit>
void readFolder(int descriptor, const Visit& visit) {
    thread_local const auto buffer = std::make_unique<std::array<char, kBufferBytes>>();
    long length = 0;
    while ((length = syscall(SYS_getdents64, descriptor, buffer->data(), buffer->size())) > 0) {
        for (long offset = 0; offset < length;) {
            // The kernel aligns each record for this type.
            const auto* record = reinterpret_cast<const dirent64*>(buffer->data() + offset);
            offset += record->d_reclen;
            const std::string_view name = record->d_name;
            if (name != "." && name != "..") {
                visit(*record);
            }
        }
    }
}

/// Reads the folder `name` and then the folders in it that `visit` wants entered.
template <typename Visit>
void walk(int parent, const char* name, int flags, int depth, std::string& names, Visit& visit) {
    const int descriptor = openat(parent, name, flags);
    if (descriptor < 0) {
        return;
    }
    const std::size_t start = names.size();
    readFolder(descriptor, [&](const dirent64& record) {
        if (visit(descriptor, record, depth)) {
            names.append(record.d_name).push_back('\0');
        }
    });
    const std::size_t end = names.size();
    for (std::size_t at = start; at < end;) {
        // Those below may make the buffer move, so nothing is read from it after the call.
        const std::size_t next = names.find('\0', at) + 1;
        walk(descriptor, names.data() + at, kFolderFlags, depth + 1, names, visit);
        at = next;
    }
    names.resize(start);
    close(descriptor);
}

}  // namespace

std::size_t walkProjects(
    const std::string& root, int maxDepth, const std::unordered_set<std::uint64_t>& notEntered) {
    std::size_t entries = 0;
    std::string names;
    auto visit = [&](int, const dirent64& record, int depth) {
        ++entries;
        return record.d_type == DT_DIR && depth < maxDepth &&
               !ProjectArtifactFinder::isSkipped(record.d_name) &&
               !notEntered.contains(record.d_ino);
    };
    walk(AT_FDCWD, root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0, names, visit);
    return entries;
}

std::int64_t size(const std::string& path) {
    constexpr std::int64_t kBlockBytes = 512;
    constexpr int kStatFlags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC;
    std::int64_t total = 0;
    const auto addFile = [&](int descriptor, const char* name) {
        struct statx status{};
        if (statx(descriptor, name, kStatFlags, STATX_BLOCKS, &status) == 0) {
            total += static_cast<std::int64_t>(status.stx_blocks) * kBlockBytes;
        }
    };
    struct stat status{};
    if (lstat(path.c_str(), &status) != 0) {
        return 0;
    }
    if (!S_ISDIR(status.st_mode)) {
        return static_cast<std::int64_t>(status.st_blocks) * kBlockBytes;
    }
    auto visit = [&](int descriptor, const dirent64& record, int) {
        if (record.d_type == DT_DIR) {
            return true;
        }
        addFile(descriptor, record.d_name);
        return false;
    };
    std::string names;
    walk(AT_FDCWD, path.c_str(), kFolderFlags, 0, names, visit);
    return total;
}

std::int64_t sizeAll(const std::vector<std::string>& paths, unsigned threads) {
    std::atomic<std::size_t> next{0};
    std::atomic<std::int64_t> total{0};
    const auto work = [&] {
        for (std::size_t i = next++; i < paths.size(); i = next++) {
            total += size(paths[i]);
        }
    };
    std::vector<std::thread> others;
    for (unsigned i = 1; i < threads; ++i) {
        others.emplace_back(work);
    }
    work();
    for (std::thread& other : others) {
        other.join();
    }
    return total;
}

std::unordered_set<std::uint64_t> inodes(const std::vector<std::string>& paths) {
    std::unordered_set<std::uint64_t> found;
    struct stat status{};
    for (const std::string& path : paths) {
        if (lstat(path.c_str(), &status) == 0) {
            found.insert(status.st_ino);
        }
    }
    return found;
}

}  // namespace Brimlo::Benchmarks::Bare
