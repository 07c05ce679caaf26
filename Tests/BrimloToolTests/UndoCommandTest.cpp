#include "BrimloToolTests/ToolTest.h"

#include <gmock/gmock.h>

namespace Brimlo::Testing {

namespace {

class UndoCommandTest : public ToolTest {
protected:
    /// Cleans an item, and returns a text of its entry.
    std::string clean(const std::string& name, const char* key = "id") const {
        write(name);
        EXPECT_EQ(run({"clean", name, "--yes"}).exitCode, 0);
        return std::string{std::string_view{answer({"history"}).at(0).at(key).as_string()}};
    }
};

TEST_F(UndoCommandTest, RestoresWhatIsNamed) {
    const std::string first = clean("first");
    const std::string second = clean("second", "batchID");
    clean("third");
    EXPECT_EQ(run({"undo", first.substr(0, 12)}).exitCode, 0);
    EXPECT_EQ(run({"undo", "--batch", second}).exitCode, 0);
    EXPECT_EQ(run({"undo", "--last"}), (Outcome{0, "restored  ~/third\nRestored 1 item.\n", ""}));
    EXPECT_THAT(trashed(), testing::IsEmpty());
    for (const std::string name : {"first", "second", "third"}) {
        EXPECT_EQ(contentOf(at(name)), "content");
    }
    const Outcome nothing{1, "", "brimlo: Nothing is left that could be put back.\n"};
    EXPECT_EQ(run({"undo", "--last"}), nothing);
}

TEST_F(UndoCommandTest, FindsNothingOnceTheTrashWasPurged) {
    clean("old");
    const std::int64_t size = answer({"history"}).at(0).at("size").as_int64();
    write(".local/share/Trash/files/foreign");
    write(".local/share/Trash/info/foreign.trashinfo");
    const std::pair<std::vector<std::string>, std::vector<std::string>> cases[] = {
        {{"trash", "purge"},                                   {"foreign", "old"}},
        {{"trash", "purge", "--older-than", "0", "--dry-run"}, {"foreign", "old"}},
        {{"trash", "purge", "--older-than", "0"},              {"foreign"}       },
    };
    for (const auto& [arguments, left] : cases) {
        const bool isKept = arguments.size() == 2;
        EXPECT_EQ(answer(arguments).at("bytes").as_int64(), isKept ? 0 : size);
        EXPECT_EQ(trashed(), left);
    }
    EXPECT_FALSE(exists(at(".local/share/Trash/info/old.trashinfo")));
    EXPECT_EQ(answer({"history"}).at(0).at("purgedFromTrash").as_bool(), true);
    EXPECT_EQ(run({"undo", "--last"}).exitCode, 1);
}

TEST_F(UndoCommandTest, ListsRestoresAndPurgesItemsOfTheTrash) {
    const auto foreign = [&](const std::string& name) {
        write(".local/share/Trash/files/" + name);
        write(".local/share/Trash/info/" + name + ".trashinfo", "Path=" + at("old") + "\n");
    };
    foreign("first");
    foreign("second");
    clean("own");
    EXPECT_EQ(
        shape(answer({"trash", "list"})),
        "{items[{trashPath,originalPath,date,size,entryID}],bytes,failures[],freedBytes}");
    const std::string lines = run({"trash", "list"}).out;
    EXPECT_TRUE(lines.contains("  Brimlo  own  ~/own\n")) << lines;
    EXPECT_TRUE(lines.contains("          second  ~/old\n")) << lines;
    EXPECT_TRUE(run({"trash", "restore", "old"}).err.contains("name one by its path there"));
    EXPECT_EQ(run({"trash", "restore", "none"}).exitCode, 1);
    EXPECT_EQ(
        run({"trash", "restore", "first"}),
        (Outcome{0, "restored  ~/old\nRestored 1 item.\n", ""}));
    EXPECT_EQ(run({"trash", "purge", "own"}).exitCode, 2);
    EXPECT_EQ(run({"trash", "purge", "own", "--dry-run"}).exitCode, 0);
    EXPECT_THAT(trashed(), testing::ElementsAre("own", "second"));
    EXPECT_EQ(answer({"trash", "purge", "own", "--yes"}).at("removed").as_int64(), 1);
    EXPECT_EQ(answer({"history"}).at(0).at("purgedFromTrash").as_bool(), true);
    EXPECT_THAT(trashed(), testing::ElementsAre("second"));
}

TEST_F(UndoCommandTest, RefusesIdsThatMeanNothingOrTooMuch) {
    const auto entry = [](const std::string& id) {
        return R"({"id":")" + id +
               R"(-0F3B-4A55-8E4E-0C5C4F0B7A11","date":"2024-01-02T03:04:05Z",)" +
               R"("originalPath":"/tmp/none/x","trashPath":"/tmp/none/Trash/x","size":4096,)" +
               R"("undone":false,"purgedFromTrash":false})";
    };
    const std::string journal =
        "[" + entry("ABCD0001") + "," + entry("ABCD0002") + "," + entry("00000003") + "]";
    write(support("journal.json"), journal);
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"undo", "ffff"},            "No entry of the journal has the id \"ffff\"."},
        {{"undo", "abcd"},
         "More than one entry of the journal has an id that begins with \"abcd\"."  },
        {{"undo", "--batch", "ffff"}, "No clean has the id \"ffff\"."               },
    };
    for (const auto& [arguments, sentence] : cases) {
        EXPECT_EQ(run(arguments), (Outcome{1, "", "brimlo: " + sentence + "\n"}));
    }
    EXPECT_EQ(
        Json::compact(answer({"undo", "abcd0002"}, 1)),
        R"({"restored":[],"failures":["/tmp/none/x: Nothing left to restore from"],"unrecorded":[]})");
    EXPECT_EQ(contentOf(at(support("journal.json"))), journal);
}

}  // namespace

}  // namespace Brimlo::Testing
