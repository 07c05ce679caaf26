#include "BrimloToolTests/ToolTest.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>

namespace Brimlo::Testing {

namespace {

class ToolInterruptTest : public ToolTest {};

TEST_F(ToolInterruptTest, EndsALookAtOnce) {
    // Each rule of these walks the same folders anew, which keeps the tool busy for seconds.
    for (int i = 0; i < 200; ++i) {
        makeFolder("Wide/" + std::to_string(i) + "/deep/deeper");
    }
    std::string rules;
    for (int i = 0; i < 1'000; ++i) {
        rules += (i == 0 ? "" : ",") + rule("custom.r" + std::to_string(i), "~/Wide/*/*/*/none");
    }
    write(support("Rules/many.json"), pack(rules));
    for (const std::string option : {"--no-artifacts", "--json"}) {
        Running running = start({"suggest", option}, {});
        ASSERT_TRUE(comesTrue([&] { return running.isReady(); }));
        running.interrupt();
        EXPECT_EQ(running.wait(), (Outcome{130, "", "\n"}));
    }
}

TEST_F(ToolInterruptTest, ListsWhatASearchHasFinishedAndChangesNothing) {
    // Equal, and nobody reads 8 TB of holes to their end.
    for (const char* name : {"1", "2"}) {
        std::filesystem::resize_file(write(name, ""), std::uintmax_t{8} << 40U);
    }
    const std::string words = "\nbrimlo: the search stops here; what was found so far is listed.\n";
    const std::pair<std::string, std::string> cases[] = {
        {"--trash-extras",
         "No group of equal files was finished.\n"
         "The search was interrupted, so there may be more. Nothing was changed.\n"},
        {"--json",         "[]\n"                                                  },
    };
    for (const auto& [option, text] : cases) {
        Running running = start({"duplicates", option, "--yes"}, {});
        ASSERT_TRUE(comesTrue([&] { return running.notesInterrupts(); }));
        running.interrupt();
        EXPECT_EQ(running.wait(), (Outcome{130, text, words}));
    }
    EXPECT_TRUE(exists(at("1")) && exists(at("2")));
}

TEST_F(ToolInterruptTest, StopsACleanBeforeItsNextItem) {
    write("one");
    write("two");
    // Another process at work keeps the journal from the tool, so that nothing moves yet.
    const std::string path = write(support("journal.json.lock"), "");
    Platform::Descriptor lock{open(path.c_str(), O_RDWR | O_CLOEXEC)};
    ASSERT_EQ(flock(lock.number(), LOCK_EX), 0);
    Running running = start({"clean", "one", "two", "--yes", "--json"}, {});
    // The notes in the Trash are there before the journal is asked for.
    ASSERT_TRUE(comesTrue([&] { return exists(at(".local/share/Trash/info/two.trashinfo")); }));
    running.interrupt();
    EXPECT_TRUE(comesTrue([&] { return running.errSoFar().contains("the clean stops here"); }));
    lock = {};
    const Outcome outcome = running.wait();
    EXPECT_EQ(outcome.exitCode, 130);
    const auto report = Json::parse(outcome.out);
    ASSERT_TRUE(report) << outcome.out;
    EXPECT_EQ(report->at("processed").as_int64(), 0);
    EXPECT_EQ(
        Json::compact(report->at("untouched")),
        R"([")" + at("one") + R"(",")" + at("two") + R"("])");
    EXPECT_TRUE(exists(at("one")) && exists(at("two")));
    EXPECT_EQ(answer({"history"}).as_array().size(), 0);
}

}  // namespace

}  // namespace Brimlo::Testing
