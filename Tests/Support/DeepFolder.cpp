#include "Support/DeepFolder.h"

#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Testing {

DeepFolder::DeepFolder(std::string path, int depth)
    : path_{std::move(path)}
    , depth_{depth} {
    int folder = open(path_.c_str(), O_RDONLY | O_DIRECTORY);
    for (int level = 0; level < depth; ++level) {
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

// From the bottom up, relative to open folders, because no path reaches the bottom.
DeepFolder::~DeepFolder() {
    int folder = open(path_.c_str(), O_RDONLY | O_DIRECTORY);
    for (int next = folder; next >= 0; next = openat(folder, kName, O_RDONLY | O_DIRECTORY)) {
        if (next != folder) {
            close(folder);
            folder = next;
        }
    }
    unlinkat(folder, "file", 0);
    for (int level = 0; level < depth_; ++level) {
        const int above = openat(folder, "..", O_RDONLY | O_DIRECTORY);
        close(folder);
        folder = above;
        unlinkat(folder, kName, AT_REMOVEDIR);
        unlinkat(folder, "side", AT_REMOVEDIR);
    }
    close(folder);
}

}  // namespace Brimlo::Testing
