#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo::Testing {

/// A home folder of the test's own, fresh and empty, removed afterwards. `HOME` points to it and
/// the XDG variables are unset, so that nothing reaches the real one.
class TempHome : public testing::Test {
protected:
    TempHome();
    ~TempHome() override;

    /// The home folder, absolute and free of links.
    [[nodiscard]] const std::string& home() const { return home_; }

    /// A path below the home folder.
    [[nodiscard]] std::string at(std::string_view relative) const;

    /// Makes a folder with all above it, and returns its path.
    std::string makeFolder(std::string_view relative) const;

    /// Writes a file and makes the folders above it; returns its path.
    std::string write(std::string_view relative, std::string_view content = "content") const;

    /// Writes a file of so many bytes and makes the folders above it; returns its path.
    std::string fill(std::string_view relative, std::size_t bytes) const;

    /// Makes a link and the folders above it; returns its path.
    std::string link(std::string_view relative, std::string_view target) const;

    /// Sets the modification time of an entry, a link's own, to so many days ago.
    void age(const std::string& path, double days) const;

private:
    std::string home_;
};

/// The content of a file; "" when it can't be read.
[[nodiscard]] std::string contentOf(const std::string& path);

/// The bytes that an entry takes on the disk, a link's own; -1 when it can't be read.
[[nodiscard]] std::int64_t allocatedBytes(const std::string& path);

/// Whether an entry is there, dangling links included.
[[nodiscard]] bool exists(const std::string& path);

/// All entries below a folder, relative to it and sorted, each with its kind, mode, modification
/// time and content or target: two trees with equal listings are the same to their user.
[[nodiscard]] std::vector<std::string> describeTree(const std::string& folder);

}  // namespace Brimlo::Testing
