#include "BrimloCore/Support/MovedFolders.h"

#include "Support/TempHome.h"

#include <cstdlib>
#include <utility>

namespace Brimlo {
namespace {

using Texts = std::vector<std::string>;

class MovedFoldersTest : public Testing::TempHome {
protected:
    /// Where a place also is while the variable has this value; "" if nowhere else.
    static std::string moved(const char* variable, const std::string& value, std::string place) {
        setenv(variable, value.c_str(), 1);
        Texts paths = MovedFolders::withMoved({place}, MovedFolders::ofEnvironment());
        unsetenv(variable);
        return paths == Texts{place} ? "" : paths.at(1);
    }
};

TEST_F(MovedFoldersTest, FollowsAbsolutePathsBelowTheHome) {
    const std::pair<std::string, std::string> cases[] = {
        {at("tools/cargo"),      "~/tools/cargo/registry"},
        {at("tools/../cargo//"), "~/cargo/registry"      },
        {at("a:b"),              ""                      },
        {at("a*"),               ""                      },
        {at(".cargo/"),          ""                      },
        {home(),                 ""                      },
        {home() + "/..",         ""                      },
        {home() + "x",           ""                      },
        {"/usr/local/cargo",     ""                      },
        {"tools/cargo",          ""                      },
        {"~/tools/cargo",        ""                      },
        {"",                     ""                      },
    };
    for (const auto& [value, expected] : cases) {
        EXPECT_EQ(moved("CARGO_HOME", value, "~/.cargo/registry"), expected) << value;
    }
    EXPECT_EQ(moved("CARGO_HOME", at("c"), "~/.cargo-other/registry"), "");
    EXPECT_EQ(moved("GOPATH", at("one") + ":" + at("two"), "~/go/pkg/mod"), "~/one/pkg/mod");
}

TEST_F(MovedFoldersTest, TakesAFolderAsAWholeOnlyIfItsNameTellsItsUse) {
    EXPECT_EQ(moved("PIP_CACHE_DIR", at("scratch/pip"), "~/.cache/pip"), "~/scratch/pip");
    EXPECT_EQ(moved("PIP_CACHE_DIR", at("PipCache"), "~/.cache/pip"), "~/PipCache");
    EXPECT_EQ(moved("PIP_CACHE_DIR", at("Projects"), "~/.cache/pip"), "");
    EXPECT_EQ(moved("XDG_CACHE_HOME", at("Projects"), "~/.cache"), "");
    EXPECT_EQ(moved("XDG_CACHE_HOME", at("Projects"), "~/.cache/pip"), "~/Projects/pip");
}

}  // namespace
}  // namespace Brimlo
