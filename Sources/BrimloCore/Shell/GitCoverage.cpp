#include "BrimloCore/Shell/GitCoverage.h"

#include "BrimloCore/Shell/Shell.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/Text.h"

#include <array>
#include <filesystem>
#include <sstream>
#include <system_error>
#include <vector>

namespace Brimlo::GitCoverage {

namespace {

// The configuration of a repository can name programs for git to run, and the repository may have
// come in a downloaded archive. What the command line says outranks it.
constexpr std::array kSettings{
    "core.fsmonitor=false",      // A program to be asked for changed files.
    "core.hooksPath=/dev/null",  // One hook is called when the index is written.
    // In a partial clone git fetches what it misses: by a program for some addresses, with a
    // password asked for others. The narrower settings would outrank the first.
    "protocol.allow=never",
    "protocol.ext.allow=never",
    "protocol.file.allow=never",
    "protocol.git.allow=never",
    "protocol.http.allow=never",
    "protocol.https.allow=never",
    "protocol.ssh.allow=never",
    // Some people switch it off for a home folder under git; it would hide what is kept nowhere.
    "status.showUntrackedFiles=normal",
};

constexpr std::array kSwitches{
    "--no-optional-locks",  // A question need not write the index.
    "--literal-pathspecs",  // A folder called ":(top)src" is itself, not another that is pushed.
};

/// The folder that `path` lies in, or is, with a ".git" of whatever kind in it.
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

/// The questions to one repository about one path in it.
class Repository {
public:
    Repository(std::string git, std::string root, std::string path)
        : git_(std::move(git))
        , root_(std::move(root))
        , path_(std::move(path)) {}

    /// The branch that the current one is pushed to.
    [[nodiscard]] std::optional<std::string> upstream() const {
        const auto name = run({"rev-parse", "--symbolic-full-name", "@{u}"});
        constexpr std::string_view kRemotes = "refs/remotes/";
        // One of the repository's own branches is nowhere else.
        if (!name || name->status != 0 || !name->out.starts_with(kRemotes)) {
            return std::nullopt;
        }
        return std::string{trimmedLine(std::string_view{name->out}.substr(kRemotes.size()))};
    }

    [[nodiscard]] bool isPushed() const {
        const auto count = run({"rev-list", "--count", "@{u}..HEAD"});
        return count && count->status == 0 && trimmedLine(count->out) == "0";
    }

    /// Whether the repository itself names programs that change files on their way into git: asked
    /// about a file, git would run them. They have names of their own, so no option takes them all
    /// away. The user's own settings, as for large files, are not meant.
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

    /// Whether there are tracked files, all of them watched for changes (skip-worktree and
    /// assume-unchanged tell git not to look) and no repository of another's among them: what that
    /// one holds is pushed, if at all, by itself, and git would look into it by its configuration.
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

    /// Whether nothing goes with the repository itself, where it is meant as a whole: other
    /// branches, tags and stashes that no remote branch holds.
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
    std::string path_;  ///< From the root on.
};

}  // namespace

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

}  // namespace Brimlo::GitCoverage
