#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"

#include "BrimloCore/DisabledRules/DisabledRules.h"
#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/RulePacks/Catalog.h"
#include "BrimloCore/UserRules/UserRules.h"
#include "Support/TempHome.h"

#include <algorithm>
#include <filesystem>

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
    std::string fill(const std::string& relative, std::size_t kilobytes) const {
        return write(relative, std::string(kilobytes * 1000, 'x'));
    }

    /// A project with build output, last worked on so many days ago.
    void makeProject(const std::string& name, double days, std::size_t kilobytes) const {
        age(write(name + "/package.json"), days);
        fill(name + "/node_modules/lib.js", kilobytes);
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
            EXPECT_LE(suggestion.preselectedPaths.size(), suggestion.items.size());
        }
        return lines;
    }

    Texts generated(const SuggestionOptions& options = {}) const {
        return described(SuggestionEngine::generate(options));
    }
};

TEST_F(SuggestionEngineTest, FindsWhatCanBeCleanedAndTicksWhatIsSafe) {
    fill(".npm/_cacache/blob", 300);
    fill("Library/Caches/Other/file", 10);
    fill("Library/Caches/Third/file", 60);
    fill("Library/Caches/com.apple.Safari/file", 900);
    fill("Library/Caches/Named/file", 30);
    fill("Library/Caches/Inner/deep/safe", 90);
    fill("Library/Caches/Inner/deep/more", 900);
    write("Library/Caches/Empty", "");
    save({.id = "custom.named", .risk = Risk::review, .paths = {"~/Library/Caches/Named"}});
    save({.id = "custom.inner", .risk = Risk::safe, .paths = {"~/Library/Caches/Inner/deep/safe"}});
    save({.id = "custom.off", .risk = Risk::safe, .paths = {"~/Library/Caches/Other"}});
    save({.id = "custom.empty", .risk = Risk::safe, .paths = {"~/empty/*"}});
    write("empty/nothing", "");
    DisabledRules::set("custom.off", true);
    makeProject("code/old", 200.5, 150);
    makeProject("code/older", 300.5, 450);
    makeProject("code/fresh", 5.5, 200);
    const Texts expected{
        "artifact.node_modules rebuild",
        "  * code/older/node_modules 300 older",
        "  - code/fresh/node_modules 5 fresh",
        "  * code/old/node_modules 200 old",
        "npm.cache safe",
        "  * .npm/_cacache 0 -",
        "custom.inner safe",
        "  * Library/Caches/Inner/deep/safe 0 -",
        "general.app-caches rebuild",
        "  - Library/Caches/Third 0 -",
        "  - Library/Caches/Other 0 -",
        "custom.named review",
        "  - Library/Caches/Named 0 -",
    };
    const std::vector<Suggestion> suggestions = SuggestionEngine::generate({});
    EXPECT_EQ(described(suggestions), expected);
    const auto& pattern =
        *std::ranges::find(ArtifactCatalog::all(), "artifact.node_modules", &ArtifactPattern::id);
    const Suggestion& artifacts = suggestions.at(0);
    EXPECT_EQ(artifacts.name, pattern.name);
    EXPECT_EQ(artifacts.group, pattern.group);
    EXPECT_EQ(artifacts.personas, pattern.personas);
    EXPECT_EQ(artifacts.officialCommand, std::nullopt);
    EXPECT_EQ(
        artifacts.regenerates, pattern.regenerates + " Preselected: projects idle for 90+ days.");
    const Suggestion& npm = suggestions.at(1);
    const auto& rule = *std::ranges::find(Catalog::builtInRules(), npm.id, &CleanupRule::id);
    EXPECT_EQ(npm.name, rule.name);
    EXPECT_EQ(npm.group, rule.group);
    EXPECT_EQ(npm.regenerates, rule.regenerates);
    EXPECT_EQ(npm.officialCommand, rule.officialCommand);
    EXPECT_EQ(npm.runningApps, Texts{});
}

TEST_F(SuggestionEngineTest, TicksProjectsByTheirIdleness) {
    makeProject("a", 29.5, 10);
    makeProject("b", 30.5, 50);
    makeProject("c", 45.5, 90);
    struct Case {
        std::int64_t staleDays;
        std::string ticks;
    };
    for (const auto& [staleDays, ticks] : {
             Case{30, "**-"},
             Case{0,  "***"},
             Case{46, "---"}
    }) {
        SCOPED_TRACE(staleDays);
        const std::vector<Suggestion> found = SuggestionEngine::generate({.staleDays = staleDays});
        EXPECT_EQ(
            described(found),
            (Texts{
                "artifact.node_modules rebuild",
                std::string{"  "} + ticks[0] + " c/node_modules 45 c",
                std::string{"  "} + ticks[1] + " b/node_modules 30 b",
                std::string{"  "} + ticks[2] + " a/node_modules 29 a"}));
        EXPECT_THAT(
            found.at(0).regenerates,
            testing::EndsWith(
                " Preselected: projects idle for " + std::to_string(staleDays) + "+ days."));
    }
}

TEST_F(SuggestionEngineTest, ServesOneAudience) {
    save({.id = "custom.a", .personas = {Persona::video}, .paths = {"~/a"}});
    save({
        .id = "custom.b", .personas = {Persona::music, Persona::photo},
             .paths = {"~/b"             }
    });
    fill("a", 10);
    fill("b", 90);
    makeProject("p", 5.5, 50);
    fill("q/__pycache__/x.pyc", 30);
    const Texts a{"custom.a review", "  - a 0 -"};
    const Texts b{"custom.b review", "  - b 0 -"};
    struct Case {
        std::optional<std::set<Persona>> personas;
        Texts found;
    };
    const Case cases[] = {
        {std::set<Persona>{},                      {}},
        {std::set{Persona::video},                 a },
        {std::set{Persona::photo},                 b },
        {std::set{Persona::music, Persona::photo}, b },
        {std::set{Persona::gaming},                {}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(generated({.personas = c.personas}), c.found);
    }
    EXPECT_EQ(generated().size(), 8U) << "everybody's";
    EXPECT_EQ(generated({.includeArtifacts = false}).size(), 4U);
    EXPECT_THAT(
        generated({.personas = std::set{Persona::developer}}),
        testing::ElementsAre(
            "artifact.node_modules rebuild", "  - p/node_modules 5 p", testing::_, testing::_));
}

TEST_F(SuggestionEngineTest, LetsTheSafestPatternClaimAFolder) {
    const auto has = [](const Texts& list, const std::string& text) {
        return std::ranges::find(list, text) != list.end();
    };
    struct Case {
        std::string folder;
        Texts markers;
    };
    const Case cases[] = {
        {"target", {"Cargo.toml", "pom.xml"}  }, // Equal risks: the earlier pattern.
        {"vendor", {"go.mod", "composer.json"}}, // A later pattern that is safer.
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.folder);
        std::vector<ArtifactPattern> knowing;
        for (const ArtifactPattern& pattern : ArtifactCatalog::all()) {
            const bool isProven = std::ranges::any_of(
                pattern.markers, [&](const std::string& marker) { return has(c.markers, marker); });
            if (has(pattern.names, c.folder) && isProven) {
                knowing.push_back(pattern);
            }
        }
        ASSERT_GE(knowing.size(), 2U);
        const ArtifactPattern first =
            *std::ranges::min_element(knowing, {}, &ArtifactPattern::risk);
        for (const std::string& marker : c.markers) {
            write("p/" + marker);
        }
        fill("p/" + c.folder + "/out", 20);
        const std::string risk{rawValue(first.risk)};
        EXPECT_EQ(generated(), (Texts{first.id + " " + risk, "  - p/" + c.folder + " 0 p"}));
        fs::remove_all(at("p"));
    }
}

TEST_F(SuggestionEngineTest, TellsItsPhasesInOrder) {
    write("a");
    makeProject("p", 5.5, 1);
    save({
        .id = "custom.a", .paths = {"~/a", "~/p", "~/p/package.json"}
    });
    Texts phases;
    SuggestionOptions options;
    options.onPhase = [&](std::string_view phase) { phases.emplace_back(phase); };
    EXPECT_FALSE(SuggestionEngine::generate(options).empty());
    EXPECT_EQ(
        phases,
        (Texts{
            "Checking known apps and tools\u2026",
            "Looking for project folders (node_modules, build outputs)\u2026",
            "Measuring 4 folders\u2026"}));
    phases.clear();
    options.includeArtifacts = false;
    EXPECT_FALSE(SuggestionEngine::generate(options).empty());
    EXPECT_EQ(phases, (Texts{"Checking known apps and tools\u2026", "Measuring 3 folders\u2026"}));
}

TEST_F(SuggestionEngineTest, CancelsTheWalkOverProjectsAlone) {
    write("a");
    makeProject("p", 5.5, 1);
    save({.id = "custom.a", .paths = {"~/a"}});
    ScanControl control;
    control.cancel();
    EXPECT_EQ(
        described(SuggestionEngine::generate({}, &control)),
        (Texts{"custom.a review", "  - a 0 -"}));
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
        .paths = {"~/a"         },
        .quitApps = { "Other App", "TestSleeper", "testSLEEPER"},
    });
    EXPECT_EQ(generated(), (Texts{"custom.a safe", "  * a 0 -"}));

    pid_t process = 0;
    std::string name = "testsleeper";
    std::string seconds = "60";
    char* arguments[] = {name.data(), seconds.data(), nullptr};
    ASSERT_EQ(posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments, environ), 0);
    const std::vector<Suggestion> found = SuggestionEngine::generate({});
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
    EXPECT_EQ(described(found), (Texts{"custom.a safe", "  - a 0 -"}));
    EXPECT_EQ(found.at(0).runningApps, (Texts{"TestSleeper", "testSLEEPER"}));
}

TEST_F(SuggestionEngineTest, KnowsARunningApplicationByItsName) {
    const struct {
        const char* quitApp;
        const char* running;
        bool is;
    } cases[] = {
        {"Xcode",           "xcode",             true },
        {"Xcode",           "xcode-beta",        true },
        {"Xcode",           "my xcode",          false},
        {"Arc",             "archive utility",   false},
        {"Arc",             "arc search",        true },
        {"Arc",             "arc",               true },
        {"Code",            "codex",             false},
        {"Code",            "code - insiders",   true },
        {"Slack",           "slacker",           true },
        {"Slack",           "slac",              false},
        {"\u00c9t\u00e9s",  "\u00e9t\u00e9sien", false},
        {"\u00c9t\u00e9s",  "\u00e9t\u00e9s 2",  true },
        {"\u00c9t\u00e9sx", "\u00e9t\u00e9sxy",  true },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string{c.quitApp} + " and " + c.running);
        EXPECT_EQ(SuggestionEngine::isRunning(c.quitApp, {"a", c.running, "z"}), c.is);
    }
    EXPECT_FALSE(SuggestionEngine::isRunning("Slack", {}));
}

TEST_F(SuggestionEngineTest, TellsTimesWhenAsked) {
    const auto output = [](std::string_view label) {
        int calls = 0;
        testing::internal::CaptureStderr();
        SuggestionEngine::timed(label, [&] { ++calls; });
        EXPECT_EQ(calls, 1);
        return testing::internal::GetCapturedStderr();
    };
    EXPECT_EQ(output("walk"), "");
    for (const char* value : {"1", "", "0"}) {
        setenv("BRIMLO_TIMING", value, 1);
        EXPECT_THAT(
            output("size 3% paths"),
            testing::MatchesRegex("  \\[timing\\] size 3% paths: 0\\.0[0-9]s\n"));
    }
    write("a");
    save({.id = "custom.a", .paths = {"~/a"}});
    testing::internal::CaptureStderr();
    EXPECT_EQ(generated().size(), 2U);
    EXPECT_THAT(
        testing::internal::GetCapturedStderr(),
        testing::MatchesRegex("  .timing. artifact walk: [0-9.]+s\n"
                              "  .timing. resolve overlaps .1 candidates.: [0-9.]+s\n"
                              "  .timing. size 1 paths: [0-9.]+s\n"));
    unsetenv("BRIMLO_TIMING");
}

}  // namespace
}  // namespace Brimlo
