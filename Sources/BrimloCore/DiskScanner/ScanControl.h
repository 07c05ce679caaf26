#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace Brimlo {

/// Shared by a walk and its caller: a cancel flag one way, running totals and the unreadable paths
/// the other. Serves one walk. Any thread.
class ScanControl {
public:
    /// One consistent reading of the totals.
    struct Progress {
        std::int64_t files = 0;
        std::int64_t bytes = 0;
        std::string path;  ///< A directory finished lately.

        bool operator==(const Progress&) const = default;
    };

    /// Asks the walk to end. Can't be undone.
    void cancel() { cancelled_ = true; }
    [[nodiscard]] bool isCancelled() const { return cancelled_; }

    [[nodiscard]] Progress progress() const;

    /// The paths that the walk could not read or left out, in the order it met them; then those for
    /// which it had no file descriptor.
    [[nodiscard]] std::vector<std::string> inaccessible() const;

    /// The folders that could not be opened because too many files were open.
    [[nodiscard]] std::vector<std::string> withoutDescriptor() const;

    /// The folders that belong to other volumes and were not entered, sorted.
    [[nodiscard]] std::vector<std::string> otherVolumes() const;

    /// Adds to the totals, and tells the directory that was finished: `path` is called only if
    /// somebody has read the progress since it was called last.
    void record(std::int64_t files, std::int64_t bytes, const std::function<std::string()>& path);

    /// Records a path as `inaccessible`.
    void skip(std::string path);

    /// Records a folder that could not be opened, with the system's `code`. One that is gone by
    /// now, or not a folder any more, is not recorded: nothing of it is missing.
    void couldNotOpen(std::string path, int code);

    /// Records a folder of another volume.
    void leaveOut(std::string path);

private:
    std::atomic<bool> cancelled_ = false;
    mutable std::mutex lock_;
    Progress progress_;                           // guarded by lock_
    mutable bool isPathOld_ = true;               // guarded by lock_
    std::vector<std::string> skipped_;            // guarded by lock_
    std::vector<std::string> withoutDescriptor_;  // guarded by lock_
    std::vector<std::string> otherVolumes_;       // guarded by lock_
};

}  // namespace Brimlo
