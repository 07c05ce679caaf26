#include "Support/TempHome.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Testing {

namespace fs = std::filesystem;

namespace {

/// The field has another name on macOS.
timespec modified(const auto& status) {
    if constexpr (requires { status.st_mtimespec; }) {
        return status.st_mtimespec;
    } else {
        return status.st_mtim;
    }
}

}  // namespace

TempHome::TempHome() {
    std::string pattern = fs::canonical(fs::temp_directory_path()).string() + "/brimlo-home-XXXXXX";
    home_ = mkdtemp(pattern.data());
    setenv("HOME", home_.c_str(), 1);
    setenv("CFFIXED_USER_HOME", home_.c_str(), 1);  // What macOS calls it.
    for (const char* name :
         {"XDG_DATA_HOME", "XDG_DATA_DIRS", "XDG_CONFIG_HOME", "BRIMLO_TIMING"}) {
        unsetenv(name);
    }
    static const std::string kPath = std::getenv("PATH");
    setenv("PATH", kPath.c_str(), 1);  // The case before may have changed it.
}

TempHome::~TempHome() {
    std::error_code ignored;
    // Folders that a test has closed are opened again for removal.
    for (fs::recursive_directory_iterator it{home_, ignored}, end; it != end;
         it.increment(ignored)) {
        if (it->is_directory(ignored) && !it->is_symlink(ignored)) {
            fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
        }
    }
    fs::remove_all(home_, ignored);
}

std::string TempHome::at(std::string_view relative) const {
    return home_ + "/" + std::string{relative};
}

std::string TempHome::makeFolder(std::string_view relative) const {
    fs::create_directories(at(relative));
    return at(relative);
}

std::string TempHome::write(std::string_view relative, std::string_view content) const {
    const std::string path = at(relative);
    fs::create_directories(fs::path{path}.parent_path());
    std::ofstream{path, std::ios::binary} << content;
    return path;
}

std::string TempHome::fill(std::string_view relative, std::size_t bytes) const {
    return write(relative, std::string(bytes, 'x'));
}

std::string TempHome::link(std::string_view relative, std::string_view target) const {
    const std::string path = at(relative);
    fs::create_directories(fs::path{path}.parent_path());
    fs::create_symlink(target, path);
    return path;
}

void TempHome::age(const std::string& path, double days) const {
    constexpr double kSecondsADay = 86'400;
    const auto seconds = std::time(nullptr) - static_cast<std::time_t>(days * kSecondsADay);
    const timespec moment{.tv_sec = seconds, .tv_nsec = 0};
    const std::array times{moment, moment};
    utimensat(AT_FDCWD, path.c_str(), times.data(), AT_SYMLINK_NOFOLLOW);
}

std::string contentOf(const std::string& path) {
    std::ifstream file{path, std::ios::binary};
    return {std::istreambuf_iterator<char>{file}, {}};
}

std::int64_t allocatedBytes(const std::string& path) {
    struct stat status{};
    return lstat(path.c_str(), &status) == 0 ? std::int64_t{status.st_blocks} * 512 : -1;
}

bool exists(const std::string& path) {
    struct stat status{};
    return lstat(path.c_str(), &status) == 0;
}

std::vector<std::string> describeTree(const std::string& folder) {
    std::vector<std::string> lines;
    const auto describe = [&](const fs::path& path) {
        struct stat status{};
        lstat(path.c_str(), &status);
        std::ostringstream line;
        line << path.lexically_relative(folder).string() << " mode " << std::oct << status.st_mode
             << std::dec << " time " << modified(status).tv_sec << "." << modified(status).tv_nsec;
        if (S_ISREG(status.st_mode)) {
            line << " content " << contentOf(path.string());
        } else if (S_ISLNK(status.st_mode)) {
            line << " -> " << fs::read_symlink(path).string();
        }
        lines.push_back(line.str());
    };
    describe(folder);
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator{folder}) {
        describe(entry.path());
    }
    std::ranges::sort(lines);
    return lines;
}

}  // namespace Brimlo::Testing
