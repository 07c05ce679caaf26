#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace Brimlo {

/// What a walk and the one who waits for it share: a cancel flag one way, running totals and the
/// unreadable paths the other. Serves one walk. Any thread.
class ScanControl {
public:
    /// One consistent reading of the totals.
    struct Progress {
        std::int64_t files = 0;
        std::int64_t bytes = 0;
        std::string path;  ///< The directory last finished.

        bool operator==(const Progress&) const = default;
    };

    /// Asks the walk to end. Can't be taken back.
    void cancel();
    [[nodiscard]] bool isCancelled() const;

    [[nodiscard]] Progress progress() const;

    /// The paths that the walk could not read or chose to leave out, in the order it met them;
    /// then those for which there was no descriptor.
    [[nodiscard]] std::vector<std::string> inaccessible() const;

    /// The folders that could not be opened because too many files were open.
    [[nodiscard]] std::vector<std::string> withoutDescriptor() const;

    /// The folders that belong to other volumes and were not entered, sorted.
    [[nodiscard]] std::vector<std::string> otherVolumes() const;

    /// Adds to the totals and names the directory last finished.
    void record(std::int64_t files, std::int64_t bytes, std::string path);

    /// Notes a path as `inaccessible`.
    void skip(std::string path);

    /// Notes a folder that could not be opened, by the system's `code`. One that is gone by now, or
    /// no folder any more, is not noted: nothing of it is missing.
    void couldNotOpen(std::string path, int code);

    /// Notes a folder of another volume.
    void leaveOut(std::string path);

private:
    mutable std::mutex lock_;
    bool cancelled_ = false;                      // guarded by lock_
    Progress progress_;                           // guarded by lock_
    std::vector<std::string> skipped_;            // guarded by lock_
    std::vector<std::string> withoutDescriptor_;  // guarded by lock_
    std::vector<std::string> otherVolumes_;       // guarded by lock_
};

}  // namespace Brimlo
