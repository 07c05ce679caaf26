#include "BrimloCore/Platform/RunningApps.h"

#include "BrimloCore/Platform/Linux/DesktopEntry.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>
#include <string_view>
#include <system_error>

#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Platform {

namespace {

namespace fs = std::filesystem;

/// The executable of a process of this user; nullopt for kernel threads and other users'.
std::optional<fs::path> executable(const fs::path& process) {
    struct stat status {};
    if (stat(process.c_str(), &status) != 0 || status.st_uid != getuid()) {
        return std::nullopt;
    }
    std::error_code error;
    const std::string target = fs::read_symlink(process / "exe", error).string();
    if (error) {
        return std::nullopt;
    }
    // An application that was updated while it runs.
    constexpr std::string_view kDeleted = " (deleted)";
    const bool isDeleted = target.ends_with(kDeleted);
    return target.substr(0, target.size() - (isDeleted ? kDeleted.size() : 0));
}

bool isProcessFolder(const fs::path& path) {
    const std::string name = path.filename().string();
    return !name.empty() && std::ranges::all_of(name, [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

std::vector<std::string> runningAppNames() {
    const std::vector<DesktopEntry> entries = DesktopEntry::installed();
    std::set<std::string> names;
    std::error_code error;
    for (fs::directory_iterator process{"/proc", error}, end; !error && process != end;
         process.increment(error)) {
        if (!isProcessFolder(process->path())) {
            continue;
        }
        const std::optional<fs::path> program = executable(process->path());
        if (!program) {
            continue;
        }
        bool isApplication = false;
        for (const DesktopEntry& entry : entries) {
            if (entry.starts(program->string())) {
                names.insert(entry.name);
                isApplication = true;
            }
        }
        if (!isApplication) {
            names.insert(program->filename().string());
        }
    }
    return {names.begin(), names.end()};
}

}  // namespace Brimlo::Platform
