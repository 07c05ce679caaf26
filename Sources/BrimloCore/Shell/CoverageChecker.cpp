#include "BrimloCore/Shell/CoverageChecker.h"

#include "BrimloCore/Platform/SystemPaths.h"
#include "BrimloCore/Shell/Shell.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <memory>
#include <sstream>
#include <system_error>

#include <sys/stat.h>
#include <unicode/datefmt.h>
#include <unicode/smpdtfmt.h>
#include <unistd.h>

namespace Brimlo::CoverageChecker {

namespace {

// The configuration of a repository can name programs that git runs, and the repository may come
// from a downloaded archive. Settings on the command line take precedence over it.
constexpr std::array kSettings{
    "core.fsmonitor=false",      // A program that git asks for changed files.
    "core.hooksPath=/dev/null",  // A hook runs when the index is written.
    // In a partial clone git fetches missing objects: some protocols run a program, others ask for
    // a password. A setting for one protocol would take precedence over the first.
    "protocol.allow=never",
    "protocol.ext.allow=never",
    "protocol.file.allow=never",
    "protocol.git.allow=never",
    "protocol.http.allow=never",
    "protocol.https.allow=never",
    "protocol.ssh.allow=never",
    // Often "no" in a home folder under git, which would hide files that are not in any commit.
    "status.showUntrackedFiles=normal",
};

constexpr std::array kSwitches{
    "--no-optional-locks",  // Reading the state must not write the index.
    "--literal-pathspecs",  // A folder may be called ":(top)src".
};

/// `path` or the nearest folder above it that contains a ".git" of any kind.
std::optional<std::string> rootOf(const std::string& path) {
    for (std::string_view folder = path; folder != "/"; folder = Path::parent(folder)) {
        std::error_code error;
        if (std::filesystem::exists(std::string{folder} + "/.git", error)) {
            return std::string{folder};
        }
    }
    return std::nullopt;
}

std::string_view trimmedLine(std::string_view text) {
    while (text.ends_with('\n') || text.ends_with('\r')) {
        text.remove_suffix(1);
    }
    return Text::trimmed(text);
}

/// Answers about one path in a repository.
class Repository {
public:
    Repository(std::string git, std::string root, std::string path)
        : git_{std::move(git)}
        , root_{std::move(root)}
        , path_{std::move(path)} {}

    /// The remote branch that the current branch tracks.
    [[nodiscard]] std::optional<std::string> upstream() const {
        const auto name = run({"rev-parse", "--symbolic-full-name", "@{u}"});
        constexpr std::string_view kRemotes = "refs/remotes/";
        // A local branch is not a backup.
        if (!name || name->status != 0 || !name->out.starts_with(kRemotes)) {
            return std::nullopt;
        }
        return std::string{trimmedLine(std::string_view{name->out}.substr(kRemotes.size()))};
    }

    [[nodiscard]] bool isPushed() const {
        const auto count = run({"rev-list", "--count", "@{u}..HEAD"});
        return count && count->status == 0 && trimmedLine(count->out) == "0";
    }

    /// Whether the repository's own configuration names filters: git would run them when it
    /// compares a file. Filters have arbitrary names, so no option disables them all. The user's
    /// own filters, as for large files, are fine.
    [[nodiscard]] bool bringsPrograms() const {
        const auto names = run(
            {"config",
             "--show-scope",
             "--name-only",
             "--get-regexp",
             "^(filter|lfs\\.extension)\\."});
        constexpr int kNoneFound = 1;
        if (!names || (names->status != 0 && names->status != kNoneFound)) {
            return true;
        }
        const std::string lines = "\n" + names->out;
        return lines.contains("\nlocal\t") || lines.contains("\nworktree\t");
    }

    /// Whether there are tracked files, all of them are watched for changes (skip-worktree and
    /// assume-unchanged tell git not to look), and none is a submodule: that has a remote of its
    /// own, and git would read its configuration.
    [[nodiscard]] bool isTracked() const {
        const auto files = run({"ls-files", "-v", "--stage", "--", path_});
        if (!files || files->out.empty()) {
            return false;
        }
        std::istringstream lines{files->out};
        for (std::string line; std::getline(lines, line);) {
            if (!line.starts_with("H ") || line.starts_with("H 160000 ")) {
                return false;
            }
        }
        return true;
    }

    /// Whether the repository, when it is removed as a whole, takes no branch, tag or stash with it
    /// that is on no remote branch.
    [[nodiscard]] bool keepsNothingElse() const {
        if (path_ != ".") {
            return true;
        }
        const auto commits =
            run({"rev-list", "--max-count=1", "--all", "HEAD", "--not", "--remotes"});
        return commits && commits->status == 0 && commits->out.empty();
    }

    [[nodiscard]] bool isClean() const {
        const auto changes = run({"status", "--porcelain", "--", path_});
        return changes && changes->status == 0 && changes->out.empty();
    }

    [[nodiscard]] bool hidesNothing() const {
        const auto ignored =
            run({"ls-files", "--others", "--ignored", "--exclude-standard", "--", path_});
        return ignored && ignored->out.empty();
    }

private:
    [[nodiscard]] std::optional<Shell::Result> run(const std::vector<std::string>& command) const {
        constexpr double kSeconds = 20;
        std::vector<std::string> arguments{kSwitches.begin(), kSwitches.end()};
        for (const char* setting : kSettings) {
            arguments.insert(arguments.end(), {"-c", setting});
        }
        arguments.insert(arguments.end(), {"-C", root_});
        arguments.insert(arguments.end(), command.begin(), command.end());
        return Shell::run(git_, arguments, std::nullopt, kSeconds);
    }

    std::string git_;
    std::string root_;
    std::string path_;  ///< Relative to the root.
};

/// The sentence about the repository of `path`, using the git at the absolute path `git`. Runs up
/// to seven commands.
std::optional<std::string> sentence(const std::string& git, const std::string& path) {
    if (!Path::isUsable(path)) {
        return std::nullopt;
    }
    const std::optional<std::string> root = rootOf(path);
    if (!root) {
        return std::nullopt;
    }
    const std::string inRoot = path == *root ? "." : path.substr(root->size() + 1);
    const Repository repository{git, *root, inRoot};
    const std::optional<std::string> upstream = repository.upstream();
    if (!upstream || !repository.isPushed() || repository.bringsPrograms() ||
        !repository.keepsNothingElse() || !repository.isTracked() || !repository.isClean() ||
        !repository.hidesNothing()) {
        return std::nullopt;
    }
    return "git: clean and pushed to " + *upstream;
}

constexpr double kTimeoutSeconds = 20;
constexpr double kMillisecondsPerSecond = 1000;

void removeAll(std::string& text, std::string_view part) {
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at)) {
        text.erase(at, part.size());
    }
}

std::optional<std::chrono::sys_seconds> parsed(const std::string& text) {
    UErrorCode status = U_ZERO_ERROR;
    icu::SimpleDateFormat format{"yyyy-MM-dd-HHmmss", icu::Locale{"en_US_POSIX"}, status};
    if (U_FAILURE(status)) {
        return std::nullopt;
    }
    format.setLenient(0);
    const auto written = icu::UnicodeString::fromUTF8(text);
    icu::ParsePosition position{0};
    const UDate date = format.parse(written, position);
    if (position.getErrorIndex() >= 0 || position.getIndex() != written.length()) {
        return std::nullopt;
    }
    return std::chrono::sys_seconds{
        std::chrono::seconds{static_cast<std::int64_t>(date / kMillisecondsPerSecond)}};
}

std::optional<std::string> inUsersWords(std::chrono::sys_seconds time) {
    const std::unique_ptr<icu::DateFormat> format{
        icu::DateFormat::createDateTimeInstance(icu::DateFormat::kMedium, icu::DateFormat::kShort)};
    if (format == nullptr) {
        return std::nullopt;
    }
    icu::UnicodeString words;
    format->format(
        static_cast<double>(time.time_since_epoch().count()) * kMillisecondsPerSecond, words);
    std::string text;
    return words.toUTF8String(text);
}

constexpr const char* kTmutil = "/usr/bin/tmutil";

bool isProgram(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) && access(path.c_str(), X_OK) == 0;
}

std::optional<std::string> findGit() {
    // "/usr/bin/git" is left out: without developer tools, macOS has a stub there that opens a
    // window to install them.
    std::vector<std::string> places{
        "/opt/homebrew/bin/git",
        "/usr/local/bin/git",
        "/Library/Developer/CommandLineTools/usr/bin/git",
        "/Applications/Xcode.app/Contents/Developer/usr/bin/git",
    };
    std::ranges::move(Platform::systemToolPaths("git"), std::back_inserter(places));
    const auto place = std::ranges::find_if(places, isProgram);
    return place == places.end() ? std::nullopt : std::optional{*place};
}

const std::optional<std::string>& gitPath() {
    static const std::optional<std::string> kPath = findGit();
    return kPath;
}

std::optional<std::chrono::sys_seconds> latestTimeMachineBackup() {
    static const std::optional<std::chrono::sys_seconds> kTime = latestBackup(kTmutil);
    return kTime;
}

}  // namespace

std::vector<std::string> covered(const std::string& path) {
    std::vector<std::string> sentences;
    for (auto& sentence : {gitCoverage(path), timeMachineCoverage(path)}) {
        if (sentence) {
            sentences.push_back(*sentence);
        }
    }
    return sentences;
}

std::vector<std::string> warnings(std::string_view path) {
    constexpr std::array kFolders{
        "/Library/Mobile Documents",
        "/Library/CloudStorage",
        "/Dropbox",
        "/Google Drive",
        "/OneDrive",
    };
    const std::string home = StoragePaths::home();
    const auto holds = [&](const char* folder) {
        return Path::below(home + folder, path).has_value();
    };
    if (std::ranges::any_of(kFolders, holds)) {
        return {"synced folder: deleting also removes the cloud copy"};
    }
    return {};
}

std::optional<std::string> gitCoverage(const std::string& path) {
    return gitPath() ? sentence(*gitPath(), path) : std::nullopt;
}

std::optional<std::string> timeMachineCoverage(const std::string& path) {
    const auto backup = latestTimeMachineBackup();
    return backup ? timeMachineCoverage(kTmutil, path, *backup) : std::nullopt;
}

std::optional<std::chrono::sys_seconds> latestBackup(const std::string& tmutil) {
    const auto answer = Shell::run(tmutil, {"latestbackup"}, std::nullopt, kTimeoutSeconds);
    if (!answer || answer->status != 0) {
        return std::nullopt;
    }
    // Such as "/Volumes/Backup/2024-05-01-101500.backup".
    constexpr std::string_view kAround = " \t\r\n/";
    constexpr std::size_t kLength = 17;
    const std::size_t last = answer->out.find_last_not_of(kAround);
    std::string name{Path::name(std::string_view{answer->out}.substr(0, last + 1))};
    name.erase(0, name.find_first_not_of(kAround));
    removeAll(name, ".backup");
    removeAll(name, ".previous");
    return parsed(name.substr(0, kLength));
}

std::optional<std::string> timeMachineCoverage(
    const std::string& tmutil, const std::string& path, std::chrono::sys_seconds backup) {
    struct stat status{};
    if (!Path::isUsable(path) || lstat(path.c_str(), &status) != 0 ||
        status.st_mtime >= backup.time_since_epoch().count()) {
        return std::nullopt;
    }
    const auto answer = Shell::run(tmutil, {"isexcluded", path}, std::nullopt, kTimeoutSeconds);
    if (!answer || !answer->out.contains("[Included]")) {
        return std::nullopt;
    }
    return inUsersWords(backup).transform(
        [](const std::string& words) { return "Time Machine backup from " + words; });
}

}  // namespace Brimlo::CoverageChecker
