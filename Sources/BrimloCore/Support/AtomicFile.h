#pragma once

#include "BrimloCore/Models/Error.h"

#include <cstddef>
#include <expected>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

/// New content for a file, complete and on the disk under a temporary name beside it, waiting to
/// replace the file in one step. Never published, it is removed.
class AtomicFile {
public:
    /// Writes `bytes` beside `path` and waits until the disk has them. The file will be readable
    /// by its owner alone.
    [[nodiscard]] static std::expected<AtomicFile, Error> prepare(
        std::string path, std::string_view bytes);

    AtomicFile(AtomicFile&& other) noexcept;
    AtomicFile& operator=(AtomicFile&&) = delete;
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;
    ~AtomicFile();

    /// Removes what a process that was killed has left of new content for `path`. Only for one who
    /// alone writes to it.
    static void removeLeftovers(const std::string& path);

    /// The same for all files of a folder whose names end with `suffix`.
    static void removeLeftovers(const std::string& folder, std::string_view suffix);

    /// Puts the content in place. Call once.
    [[nodiscard]] std::expected<void, Error> publish();

    /// `prepare` and `publish` in one.
    [[nodiscard]] static std::expected<void, Error> write(std::string path, std::string_view bytes);

    /// Writes many files of one folder, each in one step, with far fewer waits for the disk than
    /// one by one. None is in its place unless all are on the disk, so that a full disk shows
    /// before; then, in their order, until one fails.
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
/// Fails with EFBIG for a longer one, and with EINVAL for what is no regular file, such as a pipe
/// that nobody writes to. `Owner::trusted` fails with EPERM for a file that is neither the user's
/// own nor the system's: somebody else could have written it.
enum class Owner { any, trusted };
[[nodiscard]] std::expected<std::string, Error> readFile(
    const std::string& path, std::size_t limit, Owner owner = Owner::any);

/// Copies a file that could not be understood to the same name plus ".corrupt", over an earlier
/// copy. Errors are ignored.
void preserveCorrupt(const std::string& path);

}  // namespace Brimlo
