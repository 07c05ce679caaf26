#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"
#include "Support/TempHome.h"

#include <algorithm>
#include <limits>
#include <tuple>

namespace Brimlo {
namespace {

using namespace std::string_literals;

class SuggestionEngineTargetsTest : public Testing::TempHome {
protected:
    using Found = std::vector<std::pair<std::string, std::int64_t>>;

    /// The targets' paths below the home and their ages, sorted where the directory decides.
    Found found(const CleanupRule& rule) const {
        Found found;
        for (const SuggestionItem& item : SuggestionEngine::targets(rule)) {
            EXPECT_EQ(item.size, 0);
            EXPECT_FALSE(item.detail || item.subtitle);
            EXPECT_THAT(item.path, testing::StartsWith(home() + "/"));
            found.emplace_back(item.path.substr(home().size() + 1), item.idleDays.value_or(-1));
        }
        std::ranges::sort(found);
        return found;
    }

    void writeAged(const std::string& relative, double days) const { age(write(relative), days); }
};

TEST_F(SuggestionEngineTargetsTest, AreWhatThePathsNameNow) {
    writeAged("Downloads/young.dmg", 29.5);
    writeAged("Downloads/old.dmg", 31.5);
    writeAged("cache/com.apple.Safari", 1.5);
    writeAged("cache/.hidden", 2.5);
    writeAged("cache/x.plist", 3.5);
    writeAged("cache/inner/deep", 4.5);
    age(at("cache/inner"), 5.5);
    writeAged("tomorrow", -1);
    writeAged("ancient", 30'000.5);
    age(link("dangling", "nowhere"), 7.5);
    age(link("toCache", "cache"), 8.5);
    writeAged(".ssh/key", 1.5);
    age(link("toKeys", ".ssh"), 9.5);
    write("Documents/letter");
    link("toLetters", "Documents");
    const auto kHuge = std::numeric_limits<std::int64_t>::max();
    const std::tuple<const char*, CleanupRule, Found> cases[] = {
        {"the home folder",                  {.paths = {"~"}},                                          {}                         },
        {"a protected folder",               {.paths = {"~/Documents", "~/Library"}},                   {}                         },
        {"what holds keys",                  {.paths = {"~/.ssh/*", "~/.ssh/key"}},                     {}                         },
        {"keys by another way",              {.paths = {"~/toKeys/*", "~/toKeys/key"}},                 {}                         },
        {"a link to keys is no key",         {.paths = {"~/toKeys"}},                                   {{"toKeys", 9}}            },
        {"outside the home",                 {.paths = {"/etc/hosts", "/etc/*"}, .contentsOnly = true}, {}                         },
        {"age",                              {.paths = {"~/Downloads/*.dmg"}, .minAgeDays = 30},        {{"Downloads/old.dmg", 31}}},
        {"age of the link",                  {.paths = {"~/dangling"}, .minAgeDays = 8},                {}                         },
        {"a dangling link",
         {.paths = {"~/dangling", "~/dang*"}},
         {{"dangling", 7}, {"dangling", 7}}                                                                                        },
        {"the future",                       {.paths = {"~/tomorrow"}},                                 {{"tomorrow", 0}}          },
        {"nothing is so old",                {.paths = {"~/ancient"}, .minAgeDays = kHuge},             {}                         },
        {"contents but for some",
         {.paths = {"~/cache"}, .contentsOnly = true, .excludes = {"com.apple.*", "*.plist"}},
         {{"cache/.hidden", 2}, {"cache/inner", 5}}                                                                                },
        {"a personal folder by another way", {.paths = {"~/toLetters"}, .contentsOnly = true},          {}                         },
        {"what lies in it",                  {.paths = {"~/toLetters/*"}},                              {}                         },
        {"contents through a link",
         {.paths = {"~/toCache"}, .contentsOnly = true, .minAgeDays = 5},
         {{"toCache/inner", 5}}                                                                                                    },
    };
    for (const auto& [name, rule, targets] : cases) {
        EXPECT_EQ(found(rule), targets) << name;
    }
}

}  // namespace
}  // namespace Brimlo
