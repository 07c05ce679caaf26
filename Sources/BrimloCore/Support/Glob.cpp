#include "BrimloCore/Support/Glob.h"

#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <cstddef>

#include <fnmatch.h>
#include <glob.h>
#include <sys/stat.h>

namespace Brimlo::Glob {

std::vector<std::string> expand(std::string_view pattern) {
    const std::string expanded = StoragePaths::expandTilde(pattern);
    if (!Path::isUsable(expanded)) {
        return {};
    }
    if (expanded.find_first_of("*?[") == std::string::npos) {
        struct stat status {};
        // A dangling link is there too, and lstat finds all that stat does.
        return lstat(expanded.c_str(), &status) == 0 ? std::vector{expanded}
                                                     : std::vector<std::string>{};
    }
    std::vector<std::string> paths;
    glob_t found{};
    // NOLINTNEXTLINE(concurrency-mt-unsafe): it shares only the environment, which is set at start
    if (glob(expanded.c_str(), GLOB_NOSORT, nullptr, &found) == 0) {
        paths.assign(found.gl_pathv, found.gl_pathv + found.gl_pathc);
    }
    globfree(&found);
    return paths;
}

bool matches(const std::string& name, const std::string& pattern) {
    return fnmatch(pattern.c_str(), name.c_str(), 0) == 0;
}

}  // namespace Brimlo::Glob
