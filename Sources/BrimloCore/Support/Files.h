#pragma once

#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <cstddef>
#include <expected>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

/// New content for a file, complete and synced to disk under a temporary name beside it, ready to
/// replace the file in one step. Removed if never published.
class AtomicFile {
public:
    /// Writes `bytes` beside `path` and syncs them to disk. The file will be readable by its owner
    /// only.
    [[nodiscard]] static std::expected<AtomicFile, Error> prepare(
        std::string path, std::string_view bytes);

    AtomicFile(AtomicFile&& other) noexcept;
    AtomicFile& operator=(AtomicFile&&) = delete;
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;
    ~AtomicFile();

    /// Removes temporary files that a killed process left for `path`. The caller must be its only
    /// writer.
    static void removeLeftovers(const std::string& path);

    /// The same for all files of a folder whose names end with `suffix`.
    static void removeLeftovers(const std::string& folder, std::string_view suffix);

    /// Puts the content in place. Call once.
    [[nodiscard]] std::expected<void, Error> publish();

    /// `prepare` and `publish` in one.
    [[nodiscard]] static std::expected<void, Error> write(std::string path, std::string_view bytes);

    /// Writes many files of one folder, each in one step, with far fewer syncs than one by one.
    /// None replaces its file unless all are on disk, so that a full disk shows first; then, in
    /// order, until one fails.
    struct NewFile {
        std::string path;
        std::string bytes;
    };
    [[nodiscard]] static std::expected<void, Error> writeAll(const std::vector<NewFile>& files);

private:
    using Write = bool (*)(int descriptor, std::string_view bytes);

    AtomicFile(std::string path, std::string temporary);
    [[nodiscard]] static std::expected<AtomicFile, Error> create(
        std::string path, std::string_view bytes, Write write);
    [[nodiscard]] std::expected<void, Error> sync() const;
    [[nodiscard]] std::expected<void, Error> moveIntoPlace();

    std::string path_;
    std::string temporary_;  ///< Empty when there is nothing left to remove.
};

/// The whole content of a regular file of at most `limit` bytes.
///
/// Fails with EFBIG for a longer one, and with EINVAL for anything but a regular file, such as a
/// pipe without a writer. `Owner::trusted` fails with EPERM for a file that is neither the user's
/// own nor the system's: somebody else could have written it.
enum class Owner { any, trusted };
[[nodiscard]] std::expected<std::string, Error> readFile(
    const std::string& path, std::size_t limit, Owner owner = Owner::any);

/// Whether `readFile` could read the file now, however long it is; fails as that does.
[[nodiscard]] std::expected<void, Error> checkReadable(const std::string& path, Owner owner);

/// Copies a file that could not be understood to the same name plus ".corrupt", over an earlier
/// copy. Errors are ignored.
void preserveCorrupt(const std::string& path);

/// An exclusive advisory lock for reading, changing and writing a file, against other threads and
/// processes that ask for it, too. Released at the end of its scope.
class FileLock {
public:
    /// Waits for the lock on `path` + ".lock", which is created if missing, and removes temporary
    /// files that a killed holder left for `path`.
    explicit FileLock(const std::string& path);

    /// False when there can be no lock: in a folder that can't be written to, or on a volume
    /// without locks.
    [[nodiscard]] bool isHeld() const { return static_cast<bool>(file_); }

    /// A short text for the next holder, kept in the lock file and not synced; empty without a
    /// lock.
    [[nodiscard]] std::string note() const;
    void setNote(std::string_view note) const;

private:
    Platform::Descriptor file_;
};

}  // namespace Brimlo

/// Making and listing folders.
namespace Brimlo::Folders {

/// The access rights of a new folder.
enum class Access { ownerOnly, asUmaskAllows };

/// Creates the folder with all missing parents. An existing one is left as it is.
[[nodiscard]] std::expected<void, Error> create(const std::string& path, Access access);

/// The names in a folder, hidden ones included, in directory order, without "." and "..".
[[nodiscard]] std::expected<std::vector<std::string>, Error> names(const std::string& path);

}  // namespace Brimlo::Folders
