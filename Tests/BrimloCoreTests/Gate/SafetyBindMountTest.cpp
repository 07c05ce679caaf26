#include "BrimloCore/Gate/Safety.h"
#include "Support/TempHome.h"

#include <sched.h>
#include <sys/mount.h>

namespace Brimlo {
namespace {

class SafetyBindMountTest : public Testing::TempHome {};

TEST_F(SafetyBindMountTest, RefusesAMountedCredentialsFolder) {
    const std::string ssh = makeFolder(".ssh/keys").substr(0, at(".ssh").size());
    const std::string kube = makeFolder(".kube/cache").substr(0, at(".kube").size());
    makeFolder("work/ssh");
    makeFolder("work/kube");
    // The mounts are this process's own and end with it.
    const auto bind = [](const std::string& from, const std::string& to) {
        return mount(from.c_str(), to.c_str(), nullptr, MS_BIND, nullptr) == 0;
    };
    if (unshare(CLONE_NEWNS) != 0 ||
        mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        !bind(ssh, at("work/ssh")) || !bind(kube, at("work/kube"))) {
        GTEST_SKIP() << "mounting a folder is not permitted here";
    }
    EXPECT_EQ(Safety::judge(at("work/ssh")).refusal, "protected location");
    EXPECT_EQ(
        Safety::judge(at("work/ssh/keys")).refusal, "holds credentials, settings or agent memory");
    EXPECT_EQ(
        Safety::judge(at("work/kube/config")).refusal,
        "holds credentials, settings or agent memory");
    EXPECT_EQ(Safety::judge(at("work/kube/cache")).refusal, std::nullopt);
    EXPECT_EQ(Safety::judge(at("work/other")).refusal, std::nullopt);
    // Of a part of the folder, no folder above is the protected one.
    EXPECT_EQ(Safety::judge(at("work/part/id")).refusal, std::nullopt);
    ASSERT_TRUE(bind(ssh + "/keys", makeFolder("work/part")));
    EXPECT_EQ(
        Safety::judge(at("work/part/id")).refusal, "holds credentials, settings or agent memory");
    // What is shown at a protected place lies elsewhere, and must not go from there.
    ASSERT_TRUE(bind(makeFolder("vault/deep/aws"), makeFolder(".aws")));
    EXPECT_EQ(Safety::judge(at("vault")).refusal, "holds credentials, settings or agent memory");
    umount(at(".aws").c_str());
    umount(at("work/part").c_str());
    umount(at("work/ssh").c_str());
    umount(at("work/kube").c_str());
}

}  // namespace
}  // namespace Brimlo
