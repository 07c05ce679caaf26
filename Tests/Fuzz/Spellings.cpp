#include "BrimloCore/Gate/Safety.h"
#include "BrimloCore/Support/Glob.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCoreTests/Gate/SafetyOracle.h"
#include "Fuzz/Targets.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>

namespace Brimlo::Fuzz {

namespace {

namespace fs = std::filesystem;

bool isAscii(const std::string& text) {
    return std::ranges::all_of(text, [](char c) { return c > 0; });
}

/// A second opinion on wildcards without brackets: with two marks it needs no recursion, because
/// only the last star can take back what it matched.
bool matchesPlainly(std::string_view name, std::string_view pattern) {
    std::size_t at = 0;
    std::size_t in = 0;
    std::size_t star = std::string_view::npos;
    std::size_t resume = 0;
    while (at < name.size()) {
        const bool isEscape = in + 1 < pattern.size() && pattern[in] == '\\';
        if (in < pattern.size() && pattern[in] == '*') {
            star = in++;
            resume = at;
        } else if (
            in < pattern.size() && (isEscape ? pattern[in + 1] == name[at]
                                             : pattern[in] == '?' || pattern[in] == name[at])) {
            in += isEscape ? 2 : 1;
            ++at;
        } else if (star != std::string_view::npos) {
            in = star + 1;
            at = ++resume;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', in) == std::string_view::npos;
}

/// The name, a line end, the pattern.
void wildcard(const std::string& bytes) {
    const std::size_t end = std::min(bytes.find('\n'), bytes.size());
    const std::string name = bytes.substr(0, end);
    const std::string pattern = bytes.substr(std::min(end + 1, bytes.size()));
    const bool verdict = Glob::matches(name, pattern);
    // A lone backslash at the end means nothing, and what it then does is the system's business.
    const bool isPlain = pattern.find('[') == std::string::npos && !pattern.ends_with('\\');
    if (isPlain && isAscii(bytes)) {
        demand(verdict == matchesPlainly(name, pattern), "both agree on a wildcard");
    }
}

/// A home with credentials and links that lead to them.
const Testing::Oracle& oracle() {
    static const Testing::Oracle kOracle = [] {
        const std::string home = StoragePaths::home();
        for (const char* folder : {".ssh/a", ".kube/cache", ".claude/projects", "x/y"}) {
            fs::create_directories(home + "/" + folder);
        }
        std::error_code ignored;
        for (const auto& [name, target] : {
                 std::pair{"l",   ".ssh"    },
                 {"x/u", ".."      },
                 {"x/k", "../.kube"},
                 {"x/d", "no/where"}
        }) {
            fs::create_symlink(target, home + "/" + name, ignored);
        }
        return Testing::Oracle{home};
    }();
    return kOracle;
}

/// A path below the home folder.
void path(const std::string& bytes) {
    constexpr std::ptrdiff_t kMostFolders = 12;  // The second gate looks at each of them often.
    if (std::ranges::count(bytes, '/') > kMostFolders) {
        return;
    }
    const Testing::Oracle& second = oracle();
    const std::string path = StoragePaths::home() + "/" + bytes;
    const std::string canonical = Safety::canonical(path);
    demand(Safety::canonical(canonical) == canonical, "the canonical form is its own");
    demand(canonical == Testing::Oracle::canonical(path), "both agree on the canonical form");
    const Safety::Verdict judged = Safety::judge(path);
    const auto& verdict = judged.refusal;
    std::string twisted = "/./x/..//";
    twisted += path;
    demand(Safety::judge(twisted + "//.").refusal == verdict, "a spelling changes no verdict");
    // The system cuts a path at a NUL, and the second gate knows few letters.
    if (!isAscii(bytes) || canonical == "/") {
        return;
    }
    demand(
        judged.resolved == Testing::Oracle::resolvedParent(canonical),
        "both agree on where links lead");
    demand(second.opinion(canonical).allows(verdict), "both agree on the verdict");
}

}  // namespace

std::span<const Target> spellings() {
    static constexpr std::array kTargets{
        Target{"wildcard", wildcard},
        Target{"path",     path    }
    };
    return kTargets;
}

}  // namespace Brimlo::Fuzz
