#include "BrimloCore/DisabledRules/DisabledRules.h"

#include "Support/TempHome.h"

#include <filesystem>
#include <tuple>

#include <sys/stat.h>

namespace Brimlo {
namespace {

using Testing::contentOf;
using Testing::exists;

using IDs = std::set<std::string>;

class DisabledRulesTest : public Testing::TempHome {
protected:
    static constexpr const char* kFile = "Library/Application Support/Brimlo/disabled-rules.json";

    std::string content() const { return contentOf(at(kFile)); }
};

TEST_F(DisabledRulesTest, KeepsASortedListOfUniqueIDs) {
    const std::tuple<std::string, bool, std::string> cases[] = {
        {"npm.cache",    false, "[]"                                         },
        {"npm.cache",    true,  R"(["npm.cache"])"                           },
        {"npm.cache",    true,  R"(["npm.cache"])"                           },
        {"general.logs", true,  R"(["general.logs","npm.cache"])"            },
        {"a \"b\"\n",    true,  R"(["a \"b\"\n","general.logs","npm.cache"])"},
        {"general.logs", false, R"(["a \"b\"\n","npm.cache"])"               },
    };
    for (const auto& [id, disabled, text] : cases) {
        const auto now = DisabledRules::set(id, disabled);
        EXPECT_EQ(now, DisabledRules::load());
        EXPECT_EQ(content(), text);
        EXPECT_EQ(DisabledRules::isDisabled(id), disabled) << text;
    }
}

TEST_F(DisabledRulesTest, ReplacesADamagedFile) {
    for (const char* damaged :
         {R"({"a":1})", R"(["a",1])", R"([["a"]])", R"("a")", "null", "", "[", "[\"\xff\"]"}) {
        SCOPED_TRACE(damaged);
        write(kFile, damaged);
        EXPECT_EQ(DisabledRules::load(), IDs{});
        EXPECT_FALSE(DisabledRules::isDisabled("a"));
        EXPECT_EQ(DisabledRules::set("b", true), IDs{"b"});
        EXPECT_EQ(content(), R"(["b"])");
    }
}

TEST_F(DisabledRulesTest, LosesNothingToAnIDThatIsNoText) {
    ASSERT_TRUE(DisabledRules::set("a", true));
    EXPECT_FALSE(DisabledRules::set("\xff", true));
    EXPECT_EQ(DisabledRules::load(), IDs{"a"});
    EXPECT_EQ(content(), R"(["a"])");
}

TEST_F(DisabledRulesTest, LeavesAloneWhatIsThereAndCannotBeReadOrWritten) {
    makeFolder("Library/Application Support/Brimlo");
    ASSERT_EQ(mkfifo(at(kFile).c_str(), 0600), 0);
    EXPECT_EQ(
        DisabledRules::set("a", true).error().description,
        "The change could not be saved: Invalid argument");
    EXPECT_TRUE(std::filesystem::is_fifo(at(kFile)));
    std::filesystem::remove_all(at("Library"));
    write("Library", "in the way");
    EXPECT_FALSE(DisabledRules::set("a", true));
}

}  // namespace
}  // namespace Brimlo
