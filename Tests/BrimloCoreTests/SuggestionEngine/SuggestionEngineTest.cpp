#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"

#include "BrimloCore/DisabledRules/DisabledRules.h"
#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/LeftAlone/LeftAlone.h"
#include "BrimloCore/Platform/Processes.h"
#include "BrimloCore/UserRules/UserRules.h"
#include "Support/TempHome.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <limits>
#include <thread>
#include <tuple>

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Brimlo {
namespace {

namespace fs = std::filesystem;

using Texts = std::vector<std::string>;

class SuggestionEngineTest : public Testing::TempHome {
protected:
    static void save(CleanupRule rule) {
        rule.name = "Rule " + rule.id;
        rule.group = "Group";
        rule.regenerates = "It is made again.";
        if (rule.personas.empty()) {
            rule.personas = {Persona::general};
        }
        ASSERT_TRUE(UserRules::save(rule, UserRules::defaultDirectory()));
    }

    /// Writes a file of so many kilobytes.
    std::string fillKilobytes(const std::string& relative, std::size_t kilobytes) const {
        return fill(relative, kilobytes * 1000);
    }

    /// A project with build output, last worked on so many days ago.
    void makeProject(const std::string& name, double days, std::size_t kilobytes) const {
        age(write(name + "/package.json"), days);
        fillKilobytes(name + "/node_modules/lib.js", kilobytes);
    }

    /// One line a suggestion, then one an item: "*" for a tick, its path below the home, its idle
    /// days and its detail.
    Texts described(const std::vector<Suggestion>& suggestions) const {
        Texts lines;
        for (const Suggestion& suggestion : suggestions) {
            lines.push_back(suggestion.id + " " + std::string{rawValue(suggestion.risk)});
            std::int64_t previous = suggestion.items.front().size;
            std::int64_t total = 0;
            for (const SuggestionItem& item : suggestion.items) {
                EXPECT_EQ(item.size, DiskScanner::quickSize(item.path));
                EXPECT_LE(item.size, previous);
                EXPECT_FALSE(item.subtitle);
                previous = item.size;
                total += item.size;
                lines.push_back(
                    (suggestion.preselectedPaths.contains(item.path) ? "  * " : "  - ") +
                    item.path.substr(home().size() + 1) + " " +
                    std::to_string(item.idleDays.value_or(-1)) + " " + item.detail.value_or("-"));
            }
            EXPECT_EQ(suggestion.totalSize(), total);
        }
        return lines;
    }

    using Found = std::vector<std::pair<std::string, std::int64_t>>;

    /// The targets' paths below the home and their ages, sorted where the directory decides.
    Found found(const CleanupRule& rule) const {
        Found found;
        for (const auto& [item, isFolder] : SuggestionEngine::targets(rule)) {
            EXPECT_FALSE(item.detail || item.subtitle);
            EXPECT_THAT(item.path, testing::StartsWith(home() + "/"));
            found.emplace_back(item.path.substr(home().size() + 1), item.idleDays.value_or(-1));
        }
        std::ranges::sort(found);
        return found;
    }

    void writeAged(const std::string& relative, double days) const { age(write(relative), days); }

    Texts generated(const SuggestionOptions& options = {}) const {
        return described(SuggestionEngine::generate(options));
    }
};

TEST_F(SuggestionEngineTest, FindsWhatCanBeCleanedAndTicksWhatIsSafe) {
    fillKilobytes(".cache/thumbnails/large/a.png", 300);
    fillKilobytes("Library/Caches/Other/file", 10);
    fillKilobytes("Library/Caches/Third/file", 60);
    fillKilobytes("Library/Caches/com.apple.Safari/file", 900);
    fillKilobytes("Library/Caches/Named/file", 30);
    fillKilobytes("Library/Caches/Inner/deep/safe", 90);
    fillKilobytes("Library/Caches/Inner/deep/more", 900);
    write("Library/Caches/Empty", "");
    save({.id = "custom.named", .risk = Risk::review, .paths = {"~/Library/Caches/Named"}});
    save({.id = "custom.inner", .risk = Risk::safe, .paths = {"~/Library/Caches/Inner/deep/safe"}});
    save({.id = "custom.off", .risk = Risk::safe, .paths = {"~/Library/Caches/Other"}});
    save({.id = "custom.empty", .risk = Risk::safe, .paths = {"~/empty/*"}});
    write("empty/nothing", "");
    ASSERT_TRUE(DisabledRules::set("custom.off", true));
    makeProject("code/old", 90.5, 150);
    makeProject("code/older", 300.5, 450);
    makeProject("code/fresh", 89.5, 200);
    const Texts expected{
        "artifact.node_modules rebuild",
        "  * code/older/node_modules 300 older",
        "  - code/fresh/node_modules 89 fresh",
        "  * code/old/node_modules 90 old",
        "photos.thumbnails safe",
        "  * .cache/thumbnails/large 0 -",
        "custom.inner safe",
        "  * Library/Caches/Inner/deep/safe 0 -",
        "general.app-caches rebuild",
        "  - Library/Caches/Third 0 -",
        "custom.named review",
        "  - Library/Caches/Named 0 -",
    };
    EXPECT_EQ(generated(), expected);
    const auto found = SuggestionEngine::generate({.includeDocker = false});
    const auto named = std::ranges::find(found, "custom.named", &Suggestion::id);
    ASSERT_NE(named, found.end());
    const std::vector<Reason> why = reasons(*named);
    EXPECT_EQ(why[0], (Reason{"Rule", "custom.named, one of your own"}));
    EXPECT_EQ(why[1], (Reason{"Looks at", "~/Library/Caches/Named"}));
    EXPECT_EQ(reasons(found.front())[1], (Reason{"Looks at", "node_modules"}));
}

TEST_F(SuggestionEngineTest, OffersNothingThatTouchesWhatIsLeftAlone) {
    fillKilobytes("Library/Caches/App/deep/file", 90);
    fillKilobytes("Library/Caches/Third/file", 60);
    fillKilobytes("young/file", 30);
    makeProject("code/old", 90.5, 150);
    save({.id = "custom.part", .risk = Risk::safe, .paths = {"~/Library/Caches/App/deep"}});
    save({.id = "custom.young", .risk = Risk::safe, .paths = {"~/young"}, .minAgeDays = 9});
    save({.id = "custom.young2", .risk = Risk::safe, .paths = {"~/young"}});
    link("other", at("Library/Caches"));
    const Texts all{"artifact.node_modules", "custom.part", "general.app-caches", "custom.young2"};
    const std::pair<LeftAlone, Texts> cases[] = {
        {{},                                                  all                     },
        {{.paths = {at("code/old/node_modules")}},            {all[1], all[2], all[3]}},
        {{.paths = {at("code/old/node_modules/lib.js")}},     {all[1], all[2], all[3]}},
        {{.paths = {at("other/App")}},                        {all[0], all[2], all[3]}},
        {{.paths = {at("other")}},                            {all[0], all[3]}        },
        {{.paths = {home()}},                                 {}                      },
        {{.rules = {"artifact.node_modules", "custom.part"}}, {all[2], all[3]}        },
        {{.rules = {"general.app-caches", "custom.young"}},   {all[0], all[1]}        },
    };
    for (const auto& [wanted, expected] : cases) {
        ASSERT_TRUE(LeftAlone::change([&](LeftAlone& list) { list = wanted; }));
        Texts ids;
        for (const Suggestion& suggestion : SuggestionEngine::generate({.includeDocker = false})) {
            ids.push_back(suggestion.id);
        }
        EXPECT_EQ(ids, expected) << testing::PrintToString(std::pair{wanted.paths, wanted.rules});
    }
    ASSERT_TRUE(LeftAlone::change([](LeftAlone& list) { list = {}; }));
    ASSERT_TRUE(DisabledRules::set("artifact.node_modules", true));
    ASSERT_TRUE(DisabledRules::set("artifact.lang.node-modules", true));
    EXPECT_EQ(generated({.includeDocker = false}).front(), "custom.part safe");
    write("Library/Application Support/Brimlo/left-alone.json", "{");
    EXPECT_TRUE(SuggestionEngine::generate({}).empty());
}

TEST_F(SuggestionEngineTest, FindsWhatThePathsNameNow) {
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

TEST_F(SuggestionEngineTest, NeverTicksWhatIsToBeReviewed) {
    write("infra/Pulumi.yaml");
    fillKilobytes("infra/.pulumi/stacks/prod.json", 100);
    age(at("infra"), 400.5);
    const auto suggestions = SuggestionEngine::generate({.staleDays = 0});
    const Texts expected{"artifact.pulumi-stack-state review", "  - infra/.pulumi 400 infra"};
    EXPECT_EQ(described(suggestions), expected);
    EXPECT_FALSE(suggestions.front().regenerates.contains("Preselected"));
}

TEST_F(SuggestionEngineTest, OffersAPlaceOnceByAnyOfItsNames) {
    fillKilobytes(".cache/big/in/x", 90);
    fillKilobytes(".cache/big/y", 300);
    makeProject("code/p", 200.5, 150);
    link("way", ".cache/./");
    link(".cache/twice", "big");
    link("src", at("code"));
    save({.id = "custom.review", .risk = Risk::review, .paths = {"~/way/big"}});
    save({
        .id = "custom.safe", .risk = Risk::safe, .paths = {"~/.cache/big/in", "~/way/big/in"}
    });
    save({.id = "custom.twice", .risk = Risk::rebuild, .paths = {"~/.cache/twice/y"}});
    save({.id = "custom.output", .risk = Risk::review, .paths = {"~/src/p/node_modules"}});
    const Texts expected{
        "custom.twice rebuild",
        "  - .cache/twice/y 0 -",
        "artifact.node_modules rebuild",
        "  * code/p/node_modules 200 p",
        "custom.safe safe",
        "  * .cache/big/in 0 -",
    };
    EXPECT_EQ(generated(), expected);
}

TEST_F(SuggestionEngineTest, ServesOneAudience) {
    save({.id = "custom.a", .personas = {Persona::video}, .paths = {"~/a"}});
    save({.id = "custom.b", .paths = {"~/b"}});
    fillKilobytes("a", 10);
    fillKilobytes("b", 90);
    makeProject("p", 5.5, 50);
    const Texts a{"custom.a review", "  - a 0 -"};
    EXPECT_EQ(generated({.personas = std::set<Persona>{}}), Texts{});
    EXPECT_EQ(
        generated({
            .personas = std::set{Persona::video, Persona::music}
    }),
        a);
    EXPECT_EQ(generated().size(), 6U) << "everybody's";
    EXPECT_EQ(generated({.includeArtifacts = false}).size(), 4U);
}

TEST_F(SuggestionEngineTest, TicksNothingWhileItsApplicationRuns) {
    std::error_code error;
    const std::string program = at("bin/testsleeper");
    makeFolder("bin");
    fs::copy_file("/bin/sleep", program, error);
    if (error) {
        GTEST_SKIP() << "there is no program to run";
    }
    write("a");
    save({
        .id = "custom.a",
        .risk = Risk::safe,
        .paths = {"~/a"},
        .quitApps = {"Other App", "TestSleeper", "testSLEEPER"},
    });
    EXPECT_EQ(generated(), (Texts{"custom.a safe", "  * a 0 -"}));

    pid_t process = 0;
    std::string name = "testsleeper";
    std::string seconds = "60";
    char* arguments[] = {name.data(), seconds.data(), nullptr};
    ASSERT_EQ(
        posix_spawn(
            &process, program.c_str(), nullptr, nullptr, arguments, Platform::environment()),
        0);
    // The program is named only some time after it was started.
    const auto latest = std::chrono::steady_clock::now() + std::chrono::minutes{1};
    while (std::ranges::count(Platform::runningAppNames(), name) == 0 &&
           std::chrono::steady_clock::now() < latest) {
        std::this_thread::yield();
    }
    const std::vector<Suggestion> found = SuggestionEngine::generate({});
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
    EXPECT_EQ(described(found), (Texts{"custom.a safe", "  - a 0 -"}));
    EXPECT_EQ(found.at(0).runningApps, (Texts{"TestSleeper", "testSLEEPER"}));
}

TEST_F(SuggestionEngineTest, KnowsARunningApplicationByItsName) {
    const std::tuple<const char*, const char*, bool> cases[] = {
        {"Xcode",          "xcode-beta",        true },
        {"Xcode",          "my xcode",          false},
        {"Code",           "code - insiders",   true },
        {"\u00c9t\u00e9s", "\u00e9t\u00e9sien", false},
        {"\u00c9t\u00e9s", "\u00e9t\u00e9s 2",  true },
    };
    for (const auto& [app, running, is] : cases) {
        EXPECT_EQ(SuggestionEngine::isRunning(app, {"a", running, "z"}), is) << running;
    }
}

}  // namespace
}  // namespace Brimlo
