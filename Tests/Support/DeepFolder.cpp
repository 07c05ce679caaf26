#include "Support/DeepFolder.h"

#include <filesystem>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Testing {

DeepFolder::DeepFolder(std::string path, int depth)
    : path_{std::move(path)} {
    int folder = open(path_.c_str(), O_RDONLY | O_DIRECTORY);
    for (int level = 0; level < depth; ++level) {
        mkdirat(folder, "d", 0755);
        mkdirat(folder, "side", 0755);
        const int next = openat(folder, "d", O_RDONLY | O_DIRECTORY);
        close(folder);
        folder = next;
    }
    const int file = openat(folder, "file", O_WRONLY | O_CREAT, 0644);
    struct stat status {};
    if (write(file, "content", 7) == 7 && fstat(file, &status) == 0) {
        blocks_ = std::int64_t{status.st_blocks} * 512;
    }
    close(file);
    close(folder);
}

// Takes level after level off the top, as no path reaches the bottom.
DeepFolder::~DeepFolder() {
    const std::string next = path_ + ".next";
    std::error_code ignored;
    while (rename((path_ + "/d").c_str(), next.c_str()) == 0) {
        std::filesystem::remove_all(path_, ignored);
        std::filesystem::rename(next, path_, ignored);
    }
}

}  // namespace Brimlo::Testing
