#include "Support/DeepFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Testing {

DeepFolder::DeepFolder(std::string path)
    : path_{std::move(path)} {
    int folder = open(path_.c_str(), O_RDONLY | O_DIRECTORY);
    for (int level = 0; level < kDepth; ++level) {
        mkdirat(folder, kName, 0755);
        mkdirat(folder, "side", 0755);
        const int next = openat(folder, kName, O_RDONLY | O_DIRECTORY);
        close(folder);
        folder = next;
    }
    const int file = openat(folder, "file", O_WRONLY | O_CREAT, 0644);
    struct stat status{};
    if (write(file, "content", 7) == 7 && fstat(file, &status) == 0) {
        blocks_ = std::int64_t{status.st_blocks} * 512;
    }
    close(file);
    close(folder);
}

// rm works relative to open folders, because no path reaches the bottom.
DeepFolder::~DeepFolder() {
    const std::string command = "/bin/rm -rf '" + path_ + "/" + kName + "' '" + path_ + "/side'";
    EXPECT_EQ(std::system(command.c_str()), 0);
}

}  // namespace Brimlo::Testing
