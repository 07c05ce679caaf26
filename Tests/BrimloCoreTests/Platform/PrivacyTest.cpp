#include "BrimloCore/Platform/Privacy.h"

#include "Support/TempHome.h"

namespace Brimlo::Platform {
namespace {

using PrivacyTest = Testing::TempHome;

TEST_F(PrivacyTest, TakesAFolderThatIsThereForTheTest) {
    EXPECT_TRUE(canReadProtectedFolders());
    link("Library/Safari", "Safari");  // Not even root can list it.
    EXPECT_FALSE(canReadProtectedFolders());
}

}  // namespace
}  // namespace Brimlo::Platform
