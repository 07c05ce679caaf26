#include "BrimloToolTests/ToolTest.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <tuple>

namespace Brimlo::Testing {
namespace {

struct CommandsTest : ToolTest {
    void prepare() const {
        fill("a/1", 2'000'000);
        fill("a/2", 2'000'000);
        write("a/3", std::string(2'000'000, 'y'));
    }
};

TEST_F(CommandsTest, ListsLargeFiles) {
    prepare();
    fill("a/new\nline\xff", 3'000'000);
    EXPECT_EQ(run({"large"}), (Outcome{0, "No file takes 52.4 MB or more.\n", ""}));
    EXPECT_EQ(
        shape(answer({"large", "a", "--min-size", "1"})),
        "[{name,path,size,isDirectory,isAggregate,modified,fileCount,freedBytes}]");
    EXPECT_TRUE(run({"large", "a", "--limit", "1", "--min-size", "1"})
                    .out.ends_with("  ~/a/new\uFFFDline\uFFFD\n1 file, 3 MB\n"));
    std::filesystem::create_hard_link(at("a/new\nline\xff"), at("outside"));
    EXPECT_TRUE(run({"large", "a", "--min-size", "2500000"})
                    .out.ends_with(", frees 0 bytes\n1 file, 3 MB, frees 0 bytes\n"));
    age(write("a/film.mkv", std::string(1'000'000, 'x')), 9);
    for (const std::string days : {"8", "10"}) {
        EXPECT_EQ(
            run({"large",
                 "--kind",
                 "video",
                 "--kind",
                 "audio",
                 "--older-than",
                 days,
                 "a",
                 "--min-size",
                 "1000"})
                .out.ends_with("  ~/a/film.mkv\n1 file, 1 MB\n"),
            days == "8");
    }
    EXPECT_EQ(run({"large", "--kind", "film"}).exitCode, 2);
}

TEST_F(CommandsTest, TellsWhatIsWrong) {
    const std::tuple<std::vector<std::string>, int, std::string> cases[] = {
        {{"large", "a/1"},                            1, "a/1 is not a readable folder."              },
        {{"large", "--limit", "0"},                   2, "The limit is 1 or more."                    },
        {{"scan", "a/1"},                             1, "a/1 is not a readable folder."              },
        {{"duplicates", "a/1"},                       1, "a/1 is not a readable folder."              },
        {{"duplicates", "--trash-extras", "--json"},
         2,                                              "Not a terminal: pass --yes to change files."},
        {{"duplicates", "--clone", "--trash-extras"}, 2, "--clone excludes --trash-extras."           },
    };
    prepare();
    for (const auto& [arguments, exitCode, sentence] : cases) {
        EXPECT_EQ(run(arguments), (Outcome{exitCode, "", "brimlo: " + sentence + "\n"}));
    }
    for (const char* command :
         {"scan", "size", "large", "duplicates", "backup", "safety", "clean"}) {
        const Outcome outcome = run({command, ""});
        EXPECT_EQ(outcome.exitCode, 2) << command;
        EXPECT_TRUE(outcome.err.ends_with("An empty path names nothing.\n")) << outcome.err;
    }
    EXPECT_EQ(run({"clean", "--dry-run", "--", "a/1"}).exitCode, 0);
    // As the system reads it: ".." behind a link is the folder above the link's target.
    link("b/link", makeFolder("a/in"));
    for (const char* command : {"large", "duplicates", "size", "scan"}) {
        const Outcome there = run({command, "a"});
        EXPECT_EQ(run({command, "b/link/.."}), there) << command;
        EXPECT_EQ(there.exitCode, 0) << there.err;
    }
    EXPECT_EQ(run({"backup", "a/1/.."}).exitCode, 2);
}

TEST_F(CommandsTest, TellsWhatGrewSinceAnEarlierScan) {
    const auto growth = [](const std::string& since) {
        return run({"scan", "a", "--since", since});
    };
    const std::string none = "is on record, so there is nothing to compare with.\n";
    fill("a/old/1", 3'000'000);
    fill("a/kept/sub/1", 3'000'000);
    fill("a/moving/1", 3'000'000);
    EXPECT_EQ(growth("last"), (Outcome{1, "", "brimlo: No scan of " + at("a") + " " + none}));
    fill("a/kept/sub/2", 5'000'000);
    fill("a/new/1", 7'000'000);
    std::filesystem::remove_all(at("a/old"));
    std::filesystem::rename(at("a/moving"), at("a/kept/moved"));
    const Outcome outcome = growth("2999-12-31");
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_THAT(
        outcome.out,
        testing::MatchesRegex("~/a has 18 MB, \\+9 MB since [^\n]+\\.\n"
                              " +\\+[67][^\n]* MB  ~/a/new  new, or too small to be listed before\n"
                              " +\\+5 MB  ~/a/kept/sub\n"
                              " +0 bytes  ~/a/kept/moved  moved from ~/a/moving\n"
                              " +-[23][^\n]* MB  ~/a/old  gone, or too small to be listed now\n"));
    EXPECT_EQ(
        growth("2001-01-01").err,
        "brimlo: No scan of " + at("a") + " from 2001-01-01 or earlier " + none);
    EXPECT_EQ(
        shape(answer({"scan", "a", "--since", "last", "--depth", "0"}).at("growth")),
        "{since,before{size,fileCount},now{size,fileCount},folders[]}");
    EXPECT_EQ(run({"scan", "--forget"}).exitCode, 0);
    EXPECT_EQ(growth("last").exitCode, 1);
}

TEST_F(CommandsTest, TrashesTheExtrasAndPutsThemBack) {
    prepare();
    EXPECT_EQ(
        shape(answer({"duplicates"})), "[{id,size,paths[],wastedBytes,staying[{path,reason}]}]");
    const Json::Value report = answer({"duplicates", "a", "--trash-extras", "--yes"});
    EXPECT_EQ(report.at("movedToTrashBytes").as_int64(), 2'000'000);
    EXPECT_EQ(trashed(), std::vector<std::string>{"2"});
    // What lies in the Trash is no copy to rely on.
    EXPECT_THAT(
        run({"duplicates"}).out,
        testing::StartsWith(
            "No two files of 1 MB or more are equal.\nLeft out: 1 file shorter than 1 MB"));
    EXPECT_EQ(run({"undo", "--last"}).exitCode, 0);
    EXPECT_EQ(contentOf(at("a/2")), contentOf(at("a/1")));
}

TEST_F(CommandsTest, KeepsTheCopiesThatWereChosen) {
    prepare();
    age(at("a/1"), 2);
    fill("a/old/4", 2'000'000);
    age(at("a/old/4"), 9);
    const auto extras = [&](std::vector<std::string> options) {
        options.insert(options.begin(), {"duplicates", "--trash-extras", "--dry-run", "a"});
        std::string lines;
        const Json::Value report = answer(options);
        for (const Json::Value& item : report.at("plan").at("items").as_array()) {
            for (const char* key : {"path", "copyOf"}) {
                lines += item.at(key).as_string().c_str() + home().size() + 1;
                lines += *key == 'p' ? " of " : "\n";
            }
        }
        return lines;
    };
    EXPECT_EQ(extras({}), "a/2 of a/1\na/old/4 of a/1\n");
    EXPECT_EQ(extras({"--keep", "newest"}), "a/1 of a/2\na/old/4 of a/2\n");
    EXPECT_EQ(
        extras({"--keep", "newest", "--keep-under", "a/old"}), "a/1 of a/old/4\na/2 of a/old/4\n");
    EXPECT_EQ(extras({"--keep-under", "a/old", "--keep-under", "a/old/.."}), "");
    EXPECT_TRUE(
        run({"duplicates", "--keep", "oldest"}).out.contains("keep  ~/a/old/4  the oldest\n"));
    const Outcome preview = run({"duplicates", "--clone", "--dry-run"});
    EXPECT_TRUE(
        preview.out.ends_with("2 files would be replaced by clones. Nothing was changed.\n"));
    EXPECT_EQ(
        run({"duplicates", "--keep-under", "b", "--trash-extras", "--yes"}),
        (Outcome{2, "", "brimlo: b is not a folder.\n"}));
    EXPECT_EQ(trashed(), std::vector<std::string>{});
}

TEST_F(CommandsTest, ReportsWhatCouldNotBeCloned) {
    prepare();
    write("a/2.brimlo-clone", "left over");
    EXPECT_TRUE(run({"duplicates", "--clone", "--yes"})
                    .out.ends_with("failed   ~/a/2: clonefile failed: File exists\n"
                                   "Cloned some duplicates; 1 failed (different volume?).\n"));
    const Json::Value report = answer({"duplicates", "--clone", "--yes"}, 1);
    EXPECT_EQ(
        shape(report),
        "{groups[{id,size,paths[],wastedBytes,staying[{path,reason}]}],sharedBytes,failures[]}");
}

}  // namespace
}  // namespace Brimlo::Testing
