#include "BrimloCore/LeftAlone/LeftAlone.h"

#include "Support/TempHome.h"

namespace Brimlo {
namespace {

using Testing::contentOf;

class LeftAloneTest : public Testing::TempHome {
protected:
    static constexpr const char* kFile = "Library/Application Support/Brimlo/left-alone.json";
};

TEST_F(LeftAloneTest, KeepsWhatIsLeftAloneAndNeverReplacesADamagedFile) {
    const LeftAlone list{
        .paths{"/a \"b\"", "docker:image:1"},
        .rules{"npm.cache"}
    };
    const auto become = [](const LeftAlone& wanted) {
        return LeftAlone::change([&](LeftAlone& all) { all = wanted; });
    };
    EXPECT_EQ(LeftAlone::load(), LeftAlone{});
    EXPECT_EQ(become(list), list);
    EXPECT_EQ(LeftAlone::load(), list);
    for (const LeftAlone& wrong :
         {LeftAlone{.paths{"/\xff"}}, LeftAlone{.paths{"a"}}, LeftAlone{.rules{"\xff"}}}) {
        EXPECT_FALSE(become(wrong));
        EXPECT_EQ(LeftAlone::load(), list);
    }
    for (const char* damaged :
         {"", "[]", R"({"paths":"a"})", R"({"paths":["a"]})", R"({"rules":[1]})", "{"}) {
        write(kFile, damaged);
        EXPECT_FALSE(LeftAlone::load()) << damaged;
        EXPECT_FALSE(become(list)) << damaged;
        EXPECT_EQ(contentOf(at(kFile)), damaged);
    }
}

}  // namespace
}  // namespace Brimlo
