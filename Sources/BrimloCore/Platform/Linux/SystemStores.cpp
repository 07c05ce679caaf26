#include "BrimloCore/Platform/SystemStores.h"

#include "BrimloCore/Platform/Linux/KeyFile.h"
#include "BrimloCore/Platform/Linux/UserFolders.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <set>
#include <string_view>
#include <system_error>

namespace Brimlo::Platform {

namespace {

namespace fs = std::filesystem;

/// The entries of a folder, sorted; none when it can't be read.
std::vector<fs::path> entriesOf(const fs::path& folder) {
    std::vector<fs::path> entries;
    std::error_code error;
    for (fs::directory_iterator entry{folder, error}, end; !error && entry != end;
         entry.increment(error)) {
        entries.push_back(entry->path());
    }
    std::ranges::sort(entries);
    return entries;
}

// ---- Snap ---------------------------------------------------------------------------------------

/// Whether a word can stand in a command as it is.
bool isPlain(std::string_view word) {
    return !word.empty() && std::ranges::all_of(word, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
    });
}

/// The revision of a snap that runs; empty when unknown. Its link is where the distribution mounts
/// snaps.
std::string currentRevision(const std::string& root, const std::string& name) {
    for (const char* const mounts : {"snap/", "var/lib/snapd/snap/"}) {
        std::error_code error;
        const fs::path revision = fs::read_symlink(root + mounts + name + "/current", error);
        if (!error) {
            return revision.filename().string();
        }
    }
    return {};
}

/// snapd keeps a file NAME_REVISION.snap of each installed revision, and mounts the current one.
SystemStore oldSnaps(const std::string& root) {
    SystemStore store{
        .name = "Old snap revisions",
        .about = "Earlier versions of installed snaps, kept so that an update can be taken back.",
        .paths = {},
        .commands = {}};
    for (const fs::path& file : entriesOf(root + "var/lib/snapd/snaps")) {
        const std::string stem = file.stem().string();
        const std::size_t line = stem.rfind('_');
        if (file.extension() != ".snap" || line == std::string::npos) {
            continue;
        }
        const std::string name = stem.substr(0, line);
        const std::string revision = stem.substr(line + 1);
        const std::string current = currentRevision(root, name);
        if (!current.empty() && current != revision && isPlain(name) && isPlain(revision)) {
            store.paths.push_back(file.string());
            store.commands.push_back("sudo snap remove " + name + " --revision=" + revision);
        }
    }
    return store;
}

// ---- Flatpak ------------------------------------------------------------------------------------

/// What Flatpak's metadata tells of an installed application or runtime.
struct Deployed {
    fs::path folder;             ///< INSTALLATION/KIND/NAME/ARCHITECTURE/BRANCH.
    std::string reference;       ///< NAME/ARCHITECTURE/BRANCH.
    std::set<std::string> uses;  ///< References of the runtime and the SDK.
    bool isExtension = false;
};

Deployed deployedAt(const fs::path& branch) {
    const fs::path architecture = branch.parent_path();
    Deployed found{
        .folder = branch,
        .reference =
            architecture.parent_path().filename() / architecture.filename() / branch.filename(),
        .uses = {}};
    const std::string metadata = KeyFile::contentOf(branch / "active/metadata");
    KeyFile::readEntries(
        metadata, [&](std::string_view group, std::string_view key, std::string_view value) {
            found.isExtension = found.isExtension || group == "ExtensionOf";
            if (group == "Application" && (key == "runtime" || key == "sdk")) {
                found.uses.emplace(value);
            }
        });
    return found;
}

/// "app" or "runtime" of an installation.
std::vector<Deployed> deployed(const std::string& installation, const char* kind) {
    std::vector<Deployed> all;
    for (const fs::path& name : entriesOf(fs::path{installation} / kind)) {
        for (const fs::path& architecture : entriesOf(name)) {
            // "current" is a link to a branch.
            if (architecture.filename() != "current") {
                std::ranges::transform(
                    entriesOf(architecture), std::back_inserter(all), deployedAt);
            }
        }
    }
    return all;
}

/// The runtimes that no application names. Extensions are left out, since Flatpak alone knows which
/// of them a runtime still needs.
SystemStore unusedRuntimes(const std::string& root) {
    SystemStore store{
        .name = "Unused Flatpak runtimes",
        .about = "Runtimes that no installed application names. Flatpak lists them and asks.",
        .paths = {},
        .commands = {"flatpak uninstall --unused"}};
    const std::string installations[] = {root + "var/lib/flatpak", dataHome() + "/flatpak"};
    std::set<std::string> used;
    for (const std::string& installation : installations) {
        for (Deployed& application : deployed(installation, "app")) {
            used.merge(application.uses);
        }
    }
    for (const std::string& installation : installations) {
        for (const Deployed& runtime : deployed(installation, "runtime")) {
            if (!runtime.isExtension && !used.contains(runtime.reference)) {
                store.paths.push_back(runtime.folder.string());
            }
        }
    }
    return store;
}

}  // namespace

std::vector<SystemStore> systemStores(const std::string& root) {
    const auto packages = [&](const char* manager, const char* folder, const char* command) {
        return SystemStore{
            .name = std::string{"Packages of "} + manager,
            .about = "Packages downloaded to be installed, no longer needed once they are.",
            .paths = {root + folder},
            .commands = {command}};
    };
    const auto images = [](const char* tool, const char* folder, const char* command) {
        return SystemStore{
            .name = std::string{"Storage of "} + tool,
            .about = "Images, containers and volumes, also those in use.",
            .paths = {dataHome() + folder},
            .commands = {command}};
    };
    return {
        {.name = "System journal",
         .about = "What the system and its services have logged. It has a limit of its own.",
         .paths = {root + "var/log/journal"},
         .commands = {"sudo journalctl --vacuum-size=200M"}},
        {.name = "Crash dumps",
         .about = "The memory of programs that crashed, for those who look for the cause.",
         .paths = {root + "var/lib/systemd/coredump"},
         .commands = {"sudo systemd-tmpfiles --clean"}     },
        packages("apt", "var/cache/apt/archives", "sudo apt-get clean"),
        packages("dnf", "var/cache/dnf", "sudo dnf clean all"),
        packages("dnf 5", "var/cache/libdnf5", "sudo dnf5 clean all"),
        packages("pacman", "var/cache/pacman/pkg", "sudo pacman -Sc"),
        packages("zypper", "var/cache/zypp/packages", "sudo zypper clean"),
        oldSnaps(root),
        unusedRuntimes(root),
        images("Podman", "/containers/storage", "podman system prune"),
        images("rootless Docker", "/docker", "docker system prune"),
    };
}

}  // namespace Brimlo::Platform
