#include "BrimloCore/Platform/Privacy.h"

#include <gtest/gtest.h>

namespace Brimlo {
namespace {

TEST(PrivacyReasonsTest, TellsWhatFullDiskAccessWouldShow) {
    const char* trash =
        "The Trash is protected by macOS. Full Disk Access lets Brimlo see and size it.";
    const char* hidden =
        "Private Apple or app data that macOS only shows to apps with Full Disk Access.";
    const char* denied =
        "macOS or the folder's owner denied access. If it is yours, check its permissions.";
    const std::pair<const char*, const char*> cases[] = {
        {"~/.Trash",                   trash },
        {"~/Library/Mail",             hidden},
        {"~/Library/Group Containers", hidden},
        {"~/Library/com.apple.foo",    hidden},
        {"~/Library/mail",             denied},
    };
    for (const auto& [area, reason] : cases) {
        EXPECT_EQ(Platform::reasonUnreadable(area), reason) << area;
    }
}

}  // namespace
}  // namespace Brimlo
