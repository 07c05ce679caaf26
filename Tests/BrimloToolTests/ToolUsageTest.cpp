#include "BrimloCore/Platform/Processes.h"
#include "BrimloCore/Support/Text.h"
#include "BrimloToolTests/ToolTest.h"
#include "Support/Proof.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

namespace Brimlo::Testing {

namespace {

class ToolUsageTest : public ToolTest {
protected:
    /// Something for each command to tell of.
    void prepare() const {
        write(".local/share/containers/storage/overlay/a", std::string(70'000, 'a'));
        write(".cache/thumbnails/large/a", std::string(50'000, 'a'));
        write(".npm/_cacache/content-v2/a", std::string(90'000, 'a'));
        write("gone", "gone");
        EXPECT_EQ(run({"clean", at("gone"), "--yes"}).exitCode, 0);
    }
};

/// Whether a terminal would take it as nothing but lines of text.
bool isHarmless(std::string_view text) {
    std::string lines{text};
    std::ranges::replace(lines, '\n', ' ');
    return Text::printable(lines) == lines;
}

TEST_F(ToolUsageTest, TellsWrongUsageInOneSentence) {
    const std::string any;  // Where the words are the parsing library's.
    const std::string nobody = "Not a terminal: pass --yes to ";
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{},                                            "A subcommand is required."                                  },
        {{"foo"},                                       "\"foo\" is not understood; \"brimlo --help\" tells what is."},
        {{"clean"},                                     any                                                          },
        {{"clean", "--yes", "--safe", "--preselected"}, any                                                          },
        {{"clean", "--safe"},                           nobody + "clean, or --dry-run to preview."                   },
        {{"clean", "file", "no/../file", "--yes"},
         "paths: \"no/../file\" leads through \"" + at("no") + "\", which is not a folder."                          },
        {{"clean", "--rule", "no", "--yes"},            "No rule and no project pattern is called \"no\"."           },
        {{"trash", "empty"},                            nobody + "empty the Trash."                                  },
        {{"undo", "--last", "--batch", "A"},            any                                                          },
        {{"config", "foo"},                             "There is no setting \"foo\"; \"brimlo config\" lists them." },
        {{"config", "stale-days", "36501"},
         "stale-days takes a whole number from 0 to 36500, not \"36501\"."                                           },
        {{"scan", "--since", "2026-02-30"},
         "--since: \"2026-02-30\" is neither \"last\" nor a day such as 2026-03-01."                                 },
        {{"scan", "--since", "last", "--forget"},       any                                                          },
        {{"rules", "show", "\x1b[31m\n\xff"},           "No rule is called \"\uFFFD[31m\uFFFD\uFFFD\"."              },
    };
    write("file");
    for (const auto& [arguments, sentence] : cases) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.exitCode, 2);
        EXPECT_EQ(outcome.out, "");
        EXPECT_THAT(outcome.err, testing::MatchesRegex("brimlo: [^\n]+\\.\n"));
        if (sentence != any) {
            EXPECT_EQ(outcome.err, "brimlo: " + sentence + "\n");
        }
    }
    EXPECT_TRUE(exists(at("file")));
}

TEST_F(ToolUsageTest, AnswersWithOneDocumentOfTheTypesFields) {
    const std::string plan =
        "plan{items[{path,size,ruleID,risk}],dropped[],totalBytes,freedBytes}}";
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"suggest"},
         "[{id,name,group,personas[],risk,regenerates,officialCommand,runningApps[],"
         "items[{path,size,idleDays,freedBytes}],preselectedPaths[],totalSize,freedBytes}]"             },
        {{"suggest", "--no-docker", "--why"},
         "[{id,name,group,personas[],risk,regenerates,officialCommand,runningApps[],"
         "items[{path,size,idleDays,freedBytes}],preselectedPaths[],totalSize,freedBytes,why[{"
         "label,text}]}]"                                                                               },
        {{"clean", "--safe", "--dry-run"},
         "{movedToTrashBytes,freedNowBytes,failures[],refused[],unrecorded[],notes[],goneForGood[],"
         "journalIDs[],processed,untouched[]," +
             plan                                                                                       },
        {{"size", ".cache"},                         "[{path,size,freedBytes}]"                         },
        {{"safety", ".cache"},                       "[{path,canonical,refusal}]"                       },
        {{"system"},                                 "[{name,about,paths[],commands[],size,isComplete}]"},
        {{"backup", ".npm"},                         "[{path,covered[],warnings[]}]"                    },
        {{"history"},
         "[{id,date,originalPath,trashPath,size,undone,purgedFromTrash,trashID,batchID}]"               },
        {{"autoclean"},
         "{skippedReason,planned[],purge{bytes,removed,failures[]},purgedFromTrash}"                    },
        {{"config"},
         "{autoCleanEnabled,freeSpaceThresholdGB,staleDays,trashRetentionDays,"
         "autoCleanIncludesCustomRules,cliInstallOffered,rememberScans}"                                },
        {{"config", "stale-days", "60"},             "{staleDays}"                                      },
        {{"config", "--never-suggest", "npm.cache"}, "{paths[],rules[]}"                                },
        {{"rules", "disable", "npm.cache"},          "{id,enabled}"                                     },
        {{"trash", "empty", "--yes"},                "{bytes,removed,failures[],freedBytes}"            },
    };
    prepare();
    for (const auto& [arguments, fields] : cases) {
        EXPECT_EQ(shape(answer(arguments)), fields) << testing::PrintToString(arguments);
        EXPECT_FALSE(Json::parse(run(arguments).out) && arguments.size() == 1);
    }
    EXPECT_TRUE(shape(answer({"rules", "list"})).starts_with("{rules[{id,name,group,personas[],"));
    EXPECT_TRUE(shape(answer({"rules", "show", "npm.cache"})).starts_with("{id,name,group,"));
}

TEST_F(ToolUsageTest, AsksDockerUnlessToldNotTo) {
    // Whether its tool is here or not, no daemon answers a test.
    const std::string complaint = run({"docker"}).err;
    const Json::Value document = answer({"docker"}, 1, complaint);
    EXPECT_EQ(document.at("available"), false);
    EXPECT_EQ("brimlo: " + std::string{document.at("error").as_string()} + "\n", complaint);
    EXPECT_TRUE(shape(document).ends_with("error,summary[],objects[],vmDisks[],reclaimableTotal}"));
    setenv("BRIMLO_TIMING", "1", 1);
    EXPECT_TRUE(run({"suggest"}).err.contains("[timing] docker:"));
    EXPECT_FALSE(run({"suggest", "--no-docker"}).err.contains("docker"));
    unsetenv("BRIMLO_TIMING");
    EXPECT_EQ(run({"clean", "--rule", "docker.build-cache", "--dry-run"}).exitCode, 0);
}

TEST_F(ToolUsageTest, MakesHostileTextHarmless) {
    const std::string name = "a\nb\x1b[31mc\u009bd";
    const std::string broken = "e\xff\x1b]0;title\x07";
    const std::string rules = R"({"pack": "p", "version": 1, "rules": [{"id": "custom.x",
        "name": "n\u001b[2J", "group": "g\u0007\n", "personas": ["general"], "risk": "safe",
        "paths": ["~/cache\u001b/x"], "regenerates": "It is\u001b[1m fetched again by the app.",
        "officialCommand": "c\u001b"}, {"id": "\u001b[0m"}, {"id": "custom.\u001b[0m", "name": "",
        "group": "", "personas": [], "risk": "safe", "paths": ["\u001b"], "regenerates": ""}]})";
    write("cache\x1b/x");
    write(support("Rules/hostile.json"), rules);
    const std::vector<std::string> commands[] = {
        {"size", name, broken, "no\x1b"},
        {"suggest"},
        {"rules", "list"},
        {"rules", "preview", support("Rules/hostile.json")},
        {"rules", "validate", support("Rules/hostile.json")},
        {"clean", name, broken, "--dry-run"},
        {"history"},
        {"undo", "--last"},
        {"\x1b\n"},
    };
    for (const auto& command : commands) {
        SCOPED_TRACE(testing::PrintToString(command));
        write(name);
        write(broken);
        const Outcome plain = run(command);
        EXPECT_TRUE(isHarmless(plain.out)) << plain.out;
        EXPECT_TRUE(isHarmless(plain.err)) << plain.err;
        std::vector<std::string> asJson = command;
        asJson.emplace_back("--json");
        const Outcome json = run(asJson);
        EXPECT_TRUE(json.out.empty() || Json::parse(json.out)) << json.out;
        EXPECT_EQ(std::ranges::count(json.out, '\n'), json.out.empty() ? 0 : 1);
        EXPECT_TRUE(isHarmless(json.err)) << json.err;
    }
}

TEST_F(ToolUsageTest, LeavesNothingOfRootsInAnothersHome) {
    if (chown(home().c_str(), 12'345, 12'345) != 0) {
        GTEST_SKIP() << "making a home another's takes root";
    }
    const std::vector<std::string> commands[] = {
        {"suggest"},
        {"config", "stale-days", "5"},
        {"history"}
    };
    for (const auto& arguments : commands) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_EQ(outcome.out, "");
        EXPECT_THAT(outcome.err, testing::StartsWith("brimlo: Brimlo runs as root, but \""));
    }
    EXPECT_EQ(run({"--help"}).exitCode, 0);
    const auto left = describeTree(home());
    EXPECT_EQ(left.size(), 1U);
    told("commands of root in another's home", std::ssize(commands), std::ssize(left) - 1);
    EXPECT_EQ(chown(home().c_str(), 0, 0), 0);
    EXPECT_EQ(run({"history"}).exitCode, 0);
}

TEST_F(ToolUsageTest, FailsWhenItsAnswerIsLost) {
    const Platform::Descriptor full{open("/dev/full", O_WRONLY | O_CLOEXEC)};
    if (!full) {
        GTEST_SKIP() << "there is no /dev/full";
    }
    const Outcome outcome = start({"config"}, {.out = full.number()}).wait();
    EXPECT_EQ(outcome, (Outcome{1, "", "brimlo: The answer could not be written.\n"}));
}

TEST_F(ToolUsageTest, TellsWhatCouldNotBeSaved) {
    makeFolder(support("config.json/occupied"));
    makeFolder(support("disabled-rules.json/occupied"));
    const std::string unread = "brimlo: The settings could not be read: Is a directory";
    const std::string defaults = unread + "; these are the defaults.\n";
    EXPECT_EQ(run({"config", "stale-days", "60"}), (Outcome{1, "", unread + ".\n"}));
    EXPECT_EQ(run({"config", "stale-days"}), (Outcome{1, "90\n", defaults}));
    EXPECT_EQ(
        run({"rules", "disable", "npm.cache"}),
        (Outcome{1, "", "brimlo: The change could not be saved: Is a directory.\n"}));
    std::filesystem::remove_all(at(support("config.json")));
    write(support("config.json"), R"({"trashRetentionDays": -1})");
    EXPECT_EQ(
        run({"config", "stale-days"}).err,
        "brimlo: The settings could not be read: trashRetentionDays is -1, not from 0 to 36500; "
        "these are the defaults.\n");
    // Nothing is deleted by a retention that nobody has set.
    EXPECT_EQ(run({"trash", "purge"}).exitCode, 1);
    EXPECT_EQ(run({"trash", "purge", "--older-than", "1"}).exitCode, 0);
    EXPECT_EQ(run({"autoclean", "--force"}).exitCode, 1);
}

TEST_F(ToolUsageTest, SumsNoSizesToLessThanOneOfThem) {
    const auto entry = [](const std::string& digit) {
        const std::string rest = "0000000-0F3B-4A55-8E4E-0C5C4F0B7A11";
        return R"({"id":")" + digit + rest + R"(","batchID":"A)" + rest +
               R"(","date":"2024-01-02T03:04:05Z","originalPath":"/a","undone":false,)" +
               R"("size":9223372036854775807,"purgedFromTrash":false})";
    };
    write(support("journal.json"), "[" + entry("1") + "," + entry("2") + "]");
    EXPECT_THAT(run({"history"}).out, testing::HasSubstr("2 items, 9.22 EB"));
}

TEST_F(ToolUsageTest, FinishesAnUndoThatNobodyReads) {
    // More than what the library holds back before it writes.
    std::vector<std::string> arguments{"clean", "--yes"};
    for (int i = 0; i < 25; ++i) {
        arguments.push_back(write(std::string(200, 'n') + std::to_string(i)));
    }
    ASSERT_EQ(run(arguments).exitCode, 0);
    auto pipe = Platform::openPipe();
    ASSERT_TRUE(pipe);
    pipe->readEnd = Platform::Descriptor{};
    EXPECT_EQ(start({"undo", "--last"}, {.out = pipe->writeEnd.number()}).wait().exitCode, 1);
    EXPECT_THAT(trashed(), testing::IsEmpty());
}

}  // namespace

}  // namespace Brimlo::Testing
