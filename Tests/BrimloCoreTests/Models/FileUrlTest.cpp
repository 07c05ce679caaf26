#include "BrimloCore/Models/FileUrl.h"

#include <utility>

namespace Brimlo {
namespace {

TEST(FileUrlTest, EncodesPathsByteByByte) {
    const std::pair<std::string, std::string> cases[] = {
        {"",            ""                           },
        {"/a-b._~/C9",  "/a-b._~/C9"                 },
        {"/a b%\n",     "/a%20b%25%0A"               },
        {"é\xFF#?&+:@", "%C3%A9%FF%23%3F%26%2B%3A%40"},
    };
    for (const auto& [path, encoded] : cases) {
        EXPECT_EQ(FileUrl::encodePath(path), encoded);
        EXPECT_EQ(FileUrl::decodePath(encoded), path);
    }
    EXPECT_EQ(FileUrl::decodePath("a%c3%a9+b"), "aé+b");
    for (const char* text : {"%", "a%2", "%zz", "%+1", "%-1", "% 1", "%0x"}) {
        EXPECT_EQ(FileUrl::decodePath(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace Brimlo
