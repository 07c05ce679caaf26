#pragma once

#include <cstdint>
#include <string>

namespace Brimlo::Testing {

/// Makes a folder so deep that the path of its bottom is too long for the system, with a file at
/// the bottom and two folders, `kName` and the empty "side", at every level; removes it again.
class DeepFolder {
public:
    /// Long, so that few levels make a long path.
    static constexpr const char* kName = "a-folder-whose-name-is-forty-letters-long";
    /// The path is four times as long as the system allows.
    static constexpr int kDepth = 400;

    explicit DeepFolder(std::string path);
    ~DeepFolder();

    DeepFolder(const DeepFolder&) = delete;
    DeepFolder& operator=(const DeepFolder&) = delete;
    DeepFolder(DeepFolder&&) = delete;
    DeepFolder& operator=(DeepFolder&&) = delete;

    /// The allocated bytes of the file.
    [[nodiscard]] std::int64_t fileBlocks() const { return blocks_; }

private:
    std::string path_;
    std::int64_t blocks_ = 0;
};

}  // namespace Brimlo::Testing
