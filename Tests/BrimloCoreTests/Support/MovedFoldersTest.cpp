#include "BrimloCore/Support/MovedFolders.h"

#include "Support/TempHome.h"

#include <cstdlib>
#include <tuple>

namespace Brimlo {
namespace {

using MovedFoldersTest = Testing::TempHome;

TEST_F(MovedFoldersTest, FollowsAbsolutePathsBelowTheHome) {
    const std::string registry = "~/.cargo/registry";
    const std::tuple<const char*, std::string, std::string, std::string> cases[] = {
        {"CARGO_HOME",     at("tools/../cargo//"),      registry,       "~/cargo/registry"},
        {"CARGO_HOME",     at("a:b"),                   registry,       ""                },
        {"CARGO_HOME",     at("a*"),                    registry,       ""                },
        {"CARGO_HOME",     at(".cargo/"),               registry,       ""                },
        {"CARGO_HOME",     home() + "/..",              registry,       ""                },
        {"CARGO_HOME",     home(),                      registry,       ""                },
        {"CARGO_HOME",     home() + "x",                registry,       ""                },
        {"CARGO_HOME",     "tools/cargo",               registry,       ""                },
        {"CARGO_HOME",     at("c"),                     "~/.cargo-x/y", ""                },
        {"GOPATH",         at("one") + ":" + at("two"), "~/go/pkg/mod", "~/one/pkg/mod"   },
        // The folder itself goes only if its name tells its use.
        {"PIP_CACHE_DIR",  at("scratch/pip"),           "~/.cache/pip", "~/scratch/pip"   },
        {"PIP_CACHE_DIR",  at("PipCache"),              "~/.cache/pip", "~/PipCache"      },
        {"XDG_CACHE_HOME", at("Projects"),              "~/.cache",     ""                },
        {"XDG_CACHE_HOME", at("Projects"),              "~/.cache/pip", "~/Projects/pip"  },
    };
    for (const auto& [variable, value, place, moved] : cases) {
        setenv(variable, value.c_str(), 1);
        std::vector<std::string> expected{place};
        if (!moved.empty()) {
            expected.push_back(moved);
        }
        EXPECT_EQ(MovedFolders::withMoved({place}, MovedFolders::ofEnvironment()), expected)
            << value;
        unsetenv(variable);
    }
}

}  // namespace
}  // namespace Brimlo
