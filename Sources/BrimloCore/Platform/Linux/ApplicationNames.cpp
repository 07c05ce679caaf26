#include "BrimloCore/Platform/Linux/ApplicationNames.h"

#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <set>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Platform {

namespace {

namespace fs = std::filesystem;

/// Binaries and packages whose names are not those of their applications, by how a path or
/// "/" and an id ends.
struct Alias {
    std::string_view end;
    std::string_view name;
};
constexpr std::array kAliases{
    Alias{"/google/chrome/chrome",           "Google Chrome"  },
    Alias{"/google/chrome-beta/chrome",      "Google Chrome"  },
    Alias{"/google/chrome-unstable/chrome",  "Google Chrome"  },
    Alias{"/com.google.Chrome",              "Google Chrome"  },
    Alias{"/msedge",                         "Microsoft Edge" },
    Alias{"/com.microsoft.Edge",             "Microsoft Edge" },
    Alias{"/brave",                          "Brave Browser"  },
    Alias{"/com.brave.Browser",              "Brave Browser"  },
    Alias{"/zen-bin",                        "Zen"            },
    Alias{"/zoom",                           "zoom.us"        },
    Alias{"/zoom-client",                    "zoom.us"        },
    Alias{"/us.zoom.Zoom",                   "zoom.us"        },
    Alias{"/teams",                          "Microsoft Teams"},
    Alias{"/code-insiders",                  "Code - Insiders"},
    Alias{"/com.visualstudio.code.insiders", "Code - Insiders"},
    Alias{"/codium",                         "VSCodium"       },
    Alias{"/com.vscodium.codium",            "VSCodium"       },
    Alias{"/zed-editor",                     "Zed"            },
    Alias{"/com.sublimetext.three",          "Sublime Text"   },
    Alias{"/idea",                           "IntelliJ IDEA"  },
    Alias{"/idea.sh",                        "IntelliJ IDEA"  },
    Alias{"/IntelliJIdea",                   "IntelliJ IDEA"  },
    Alias{"/IdeaIC",                         "IntelliJ IDEA"  },
    Alias{"/studio",                         "Android Studio" },
    Alias{"/studio.sh",                      "Android Studio" },
    Alias{"/AndroidStudio",                  "Android Studio" },
    Alias{"/com.google.AndroidStudio",       "Android Studio" },
    Alias{"/unityhub-bin",                   "Unity Hub"      },
    Alias{"/unityhub",                       "Unity Hub"      },
    Alias{"/prismlauncher",                  "Prism Launcher" },
    Alias{"/prusa-slicer",                   "PrusaSlicer"    },
    Alias{"/resolve",                        "DaVinci Resolve"},
    Alias{"/maya.bin",                       "Maya"           },
    Alias{"/ghb",                            "HandBrake"      },
    Alias{"/fr.handbrake.ghb",               "HandBrake"      },
    Alias{"/com.obsproject.Studio",          "OBS Studio"     },
};

/// All fields that are read lie within this length.
constexpr std::size_t kLongestFile = std::size_t{64} << 10U;

/// The content of a small file; empty when it can't be read. Follows no symlink and does not block,
/// because the root of a sandbox may hold anything.
std::string contentOf(const fs::path& path) {
    const Descriptor file{open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)};
    struct stat status{};
    if (file.number() < 0 || fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return {};
    }
    std::string content(kLongestFile, '\0');
    std::size_t length = 0;
    while (length < content.size()) {
        const ssize_t count = read(file.number(), content.data() + length, content.size() - length);
        if (count <= 0) {
            break;
        }
        length += static_cast<std::size_t>(count);
    }
    content.resize(length);
    return content;
}

/// The value of a key, up to the end of its line, in the lines from `group` on.
std::string_view value(std::string_view text, std::string_view group, std::string_view key) {
    bool isInGroup = group.empty();
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (line.starts_with('[')) {
            isInGroup = line == group;
        } else if (isInGroup && line.starts_with(key)) {
            return line.substr(key.size());
        }
    }
    return {};
}

/// Whether the process runs as this user. The owner of its folder is no evidence: it is root when
/// the program forbids others to read its memory.
bool isOurs(const fs::path& process) {
    const std::string status = contentOf(process / "status");
    std::string_view user = value(status, "", "Uid:\t");
    user = user.substr(0, user.find('\t'));
    uid_t number = 0;
    const auto read = std::from_chars(user.data(), user.data() + user.size(), number);
    return read.ec == std::errc{} && number == getuid();
}

/// The words of the command line; none for a kernel thread or a process that has ended.
std::vector<std::string> commandLine(const fs::path& process) {
    const std::string text = contentOf(process / "cmdline");
    std::vector<std::string> words;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\0', start), text.size());
        words.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return words;
}

/// The path of the executable, as the process sees it; else the first word of the command line.
std::string executable(const fs::path& process, const std::vector<std::string>& words) {
    std::error_code error;
    std::string target = fs::read_symlink(process / "exe", error).string();
    if (error) {
        return words.front().substr(0, words.front().find(" -"));
    }
    // The application was updated while running.
    constexpr std::string_view kDeleted = " (deleted)";
    if (target.ends_with(kDeleted)) {
        target.resize(target.size() - kDeleted.size());
    }
    return target;
}

/// What an interpreter runs: its first argument that is not an option. A development environment on
/// Java gives its name in a property, followed by its version.
std::string script(const std::vector<std::string>& words) {
    constexpr std::string_view kSelector = "-Didea.paths.selector=";
    for (const std::string& word : words) {
        if (word.starts_with(kSelector)) {
            const std::string name = word.substr(kSelector.size());
            return "/" + name.substr(0, name.find_first_of("0123456789"));
        }
    }
    const auto found = std::ranges::find_if(words.begin() + 1, words.end(), [](const auto& word) {
        return !word.empty() && !word.starts_with('-');
    });
    return found != words.end() ? *found : "";
}

/// The name of a unit without systemd's escapes ("\x2d" for a dash).
std::string unescaped(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        unsigned char byte = 0;
        if (text.starts_with("\\x") && text.size() >= 4 &&
            std::from_chars(text.data() + 2, text.data() + 4, byte, 16).ptr == text.data() + 4) {
            plain += static_cast<char>(byte);
            text.remove_prefix(4);
        } else {
            plain += text.front();
            text.remove_prefix(1);
        }
    }
    return plain;
}

/// The Flatpak or Snap to which a process belongs, in the form of `DesktopEntry::package`.
std::string package(const fs::path& process) {
    const std::string info = contentOf(process / "root/.flatpak-info");
    if (const std::string_view id = value(info, "[Application]", "name="); !id.empty()) {
        return "flatpak " + std::string{id};
    }
    // ".../app-flatpak-ID-NUMBER.scope" or ".../snap.NAME.APP-UUID.scope"
    const std::string groups = contentOf(process / "cgroup");
    constexpr std::string_view kFlatpak = "/app-flatpak-";
    constexpr std::string_view kSnap = "/snap.";
    if (const std::size_t at = groups.find(kFlatpak); at != std::string::npos) {
        std::string_view id = std::string_view{groups}.substr(at + kFlatpak.size());
        id = id.substr(0, id.find_first_of("/\n"));
        return "flatpak " + unescaped(id.substr(0, id.rfind('-')));
    }
    if (const std::size_t at = groups.find(kSnap); at != std::string::npos) {
        const std::string_view name = std::string_view{groups}.substr(at + kSnap.size());
        return "snap " + unescaped(name.substr(0, name.find_first_of("./\n")));
    }
    return {};
}

std::string_view behindLast(std::string_view text, char separator) {
    return text.substr(text.rfind(separator) + 1);
}

/// Adds a name, and the same with spaces for dashes: "lm-studio" is "LM Studio".
void add(std::set<std::string>& names, std::string_view name) {
    std::string spaced{name};
    std::ranges::replace_if(spaced, [](char c) { return c == '-' || c == '_'; }, ' ');
    names.insert(std::move(spaced));
    names.emplace(name);
}

/// Adds the names that vendors use for a binary or package with this ending.
void addAliases(std::set<std::string>& names, std::string_view path) {
    for (const Alias& alias : kAliases) {
        if (path.ends_with(alias.end)) {
            names.emplace(alias.name);
        }
    }
}

void addNames(
    std::set<std::string>& names,
    const fs::path& process,
    const std::vector<DesktopEntry>& entries) {
    const std::vector<std::string> words = commandLine(process);
    if (words.empty()) {
        return;
    }
    std::string program = executable(process, words);
    if (DesktopEntry::isLauncher(program)) {
        program = script(words);
    }
    const std::string packed = package(process);
    bool hasEntry = false;
    for (const DesktopEntry& entry : entries) {
        if (packed.empty() ? entry.starts(program) : entry.package == packed) {
            names.insert(entry.name);
            hasEntry = true;
        }
    }
    if (hasEntry || program.empty()) {
        return;
    }
    add(names, behindLast(program, '/'));
    if (packed.empty()) {
        addAliases(names, program);
        // A shared Electron gets the archive or folder of the application as an argument.
        if (program.ends_with("/app.asar") || program.ends_with("/app")) {
            add(names, behindLast(program.substr(0, program.rfind('/')), '/'));
        }
    } else {
        const std::string_view id = behindLast(packed, ' ');
        add(names, behindLast(id, '.'));
        addAliases(names, "/" + std::string{id});
    }
}

bool isProcessFolder(const fs::path& path) {
    const std::string name = path.filename().string();
    return !name.empty() && std::ranges::all_of(name, [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

std::vector<std::string> applicationNames(
    const std::string& proc, const std::vector<DesktopEntry>& entries) {
    std::set<std::string> names;
    std::error_code error;
    for (fs::directory_iterator process{proc, error}, end; !error && process != end;
         process.increment(error)) {
        if (isProcessFolder(process->path()) && isOurs(process->path())) {
            addNames(names, process->path(), entries);
        }
    }
    return {names.begin(), names.end()};
}

}  // namespace Brimlo::Platform
