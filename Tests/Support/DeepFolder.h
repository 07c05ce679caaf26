#pragma once

#include <cstdint>
#include <string>

namespace Brimlo::Testing {

/// Makes a folder of more depth than a path can name, with a file at its bottom and two folders,
/// "d" and the empty "side", at every level; removes it again.
class DeepFolder {
public:
    DeepFolder(std::string path, int depth);
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
