#include "BrimloCore/Gate/Safety.h"
#include "BrimloCoreTests/Cleaner/OwnMounts.h"
#include "Support/TempHome.h"

namespace Brimlo {
namespace {

class SafetyBindMountTest : public Testing::TempHome {
protected:
    [[nodiscard]] bool bind(const std::string& from, const std::string& to) const {
        return mount(makeFolder(from).c_str(), makeFolder(to).c_str(), nullptr, MS_BIND, nullptr) ==
               0;
    }
};

TEST_F(SafetyBindMountTest, RefusesAMountedCredentialsFolder) {
    const char* const credentials = "holds credentials, settings or agent memory";
    Testing::withOwnMounts([&] {
        makeFolder(".kube/cache");
        // `vault` shows a folder at a protected place, so the folder must not go from there.
        if (!bind(".ssh", "work/ssh") || !bind(".kube", "work/kube") ||
            !bind(".ssh/keys", "work/part") || !bind("vault/deep/aws", ".aws")) {
            GTEST_SKIP() << "mounting a folder is not permitted here";
        }
        const std::pair<const char*, std::optional<std::string>> cases[] = {
            {"work/ssh",         "protected location"},
            {"work/ssh/keys",    credentials         },
            {"work/part/id",     credentials         },
            {"work/kube/config", credentials         },
            {"work/kube/cache",  std::nullopt        },
            {"work/other",       std::nullopt        },
            {"vault",            credentials         },
        };
        for (const auto& [path, refusal] : cases) {
            EXPECT_EQ(Safety::judge(at(path)).refusal, refusal) << path;
        }
    });
}

}  // namespace
}  // namespace Brimlo
