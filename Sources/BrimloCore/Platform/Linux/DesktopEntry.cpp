#include "BrimloCore/Platform/Linux/DesktopEntry.h"

#include "BrimloCore/Platform/Linux/KeyFile.h"
#include "BrimloCore/Platform/Linux/UserFolders.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <unistd.h>

namespace Brimlo::Platform {

namespace {

namespace fs = std::filesystem;

/// Folders that many programs share: being in the same one is no evidence.
constexpr std::array<std::string_view, 8> kSharedFolders{
    "/bin", "/sbin", "/usr/bin", "/usr/sbin", "/usr/local/bin", "/usr/games", "/snap/bin", ""};

constexpr std::array<std::string_view, 11> kLaunchers{
    "sh", "bash", "dash", "zsh", "flatpak", "snap", "perl", "java", "node", "gjs-console", "wine"};

/// The first word of a command line, without its quotes.
std::string firstWord(std::string_view command) {
    if (command.starts_with('"')) {
        command.remove_prefix(1);
        return std::string{command.substr(0, command.find('"'))};
    }
    return std::string{command.substr(0, command.find(' '))};
}

/// The path of the program with this name or path, symlinks resolved.
std::optional<std::string> locate(const std::string& program) {
    const char* path = std::getenv("PATH");  // NOLINT(concurrency-mt-unsafe): set at start only
    const std::vector<std::string> folders =
        program.contains('/') ? std::vector<std::string>{""} : splitFolders(path ? path : "");
    for (const std::string& folder : folders) {
        std::error_code error;
        const fs::path found =
            fs::canonical(folder.empty() ? program : folder + "/" + program, error);
        if (!error && fs::is_regular_file(found, error) && access(found.c_str(), X_OK) == 0) {
            return found.string();
        }
    }
    return std::nullopt;
}

/// The word that names the application's own program, after "env" and its assignments.
std::string programWord(std::string_view command) {
    std::string word = firstWord(command);
    if (fs::path{word}.filename() != "env") {
        return word;
    }
    while (true) {
        const std::size_t space = command.find(' ');
        if (space == std::string_view::npos) {
            return word;
        }
        command.remove_prefix(space + 1);
        word = firstWord(command);
        if (!word.contains('=') && !word.starts_with('-')) {
            return word;
        }
    }
}

/// `dataFolders`, and the folders of packages, which not every desktop session lists.
std::vector<std::string> entryFolders() {
    std::vector<std::string> folders = dataFolders();
    folders.push_back(dataHome() + "/flatpak/exports/share");
    folders.emplace_back("/var/lib/flatpak/exports/share");
    folders.emplace_back("/var/lib/snapd/desktop");
    return folders;
}

}  // namespace

bool DesktopEntry::isLauncher(std::string_view path) {
    const std::string_view name = path.substr(path.rfind('/') + 1);
    return name.starts_with("python") || name.starts_with("electron") ||
           std::ranges::find(kLaunchers, name) != kLaunchers.end();
}

bool DesktopEntry::starts(std::string_view path) const {
    if (program.empty()) {
        return false;
    }
    if (path == program) {
        return true;
    }
    const std::string_view folder = path.substr(0, path.rfind('/'));
    return folder == std::string_view{program}.substr(0, program.rfind('/')) &&
           std::ranges::find(kSharedFolders, folder) == kSharedFolders.end();
}

std::optional<DesktopEntry> DesktopEntry::parse(std::string_view text) {
    std::string name;
    std::string command;
    std::string package;
    KeyFile::readEntries(
        text, [&](std::string_view group, std::string_view key, std::string_view value) {
            if (group != "Desktop Entry") {
                return;
            }
            if (key == "Name") {
                name = value;
            } else if (key == "Exec") {
                command = value;
            } else if (key == "X-Flatpak") {
                package = "flatpak " + std::string{value};
            } else if (key == "X-SnapInstanceName") {
                package = "snap " + std::string{value};
            }
        });
    std::string program = locate(programWord(command)).value_or("");
    if (isLauncher(program)) {
        program.clear();
    }
    if (name.empty() || (program.empty() && package.empty())) {
        return std::nullopt;
    }
    return DesktopEntry{.name = name, .program = program, .package = package};
}

std::vector<DesktopEntry> DesktopEntry::installed() {
    std::vector<DesktopEntry> entries;
    for (const std::string& folder : entryFolders()) {
        std::error_code error;
        for (fs::directory_iterator file{folder + "/applications", error}, end;
             !error && file != end;
             file.increment(error)) {
            if (file->path().extension() != ".desktop") {
                continue;
            }
            if (auto entry = parse(KeyFile::contentOf(file->path()))) {
                entries.push_back(*std::move(entry));
            }
        }
    }
    return entries;
}

}  // namespace Brimlo::Platform
