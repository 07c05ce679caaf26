#include "BrimloToolTests/ToolTest.h"

namespace Brimlo::Testing {

namespace {

class TrashCommandTest : public ToolTest {
protected:
    [[nodiscard]] static std::int64_t bytes(const std::vector<std::string>& arguments) {
        return answer(arguments).at("bytes").as_int64();
    }
};

TEST_F(TrashCommandTest, PurgesOnlyWhatIsOldAndItsOwn) {
    write("old", std::string(9'000, 'o'));
    write(".local/share/Trash/files/foreign");
    write(".local/share/Trash/info/foreign.trashinfo");
    ASSERT_EQ(run({"clean", "old", "--yes"}).exitCode, 0);
    EXPECT_EQ(bytes({"trash", "purge"}), 0);
    EXPECT_THAT(trashed(), testing::ElementsAre("foreign", "old"));

    const std::int64_t size = answer({"history"}).at(0).at("size").as_int64();
    EXPECT_EQ(bytes({"trash", "purge", "--older-than", "0", "--dry-run"}), size);
    EXPECT_THAT(trashed(), testing::ElementsAre("foreign", "old"));
    EXPECT_EQ(bytes({"trash", "purge", "--older-than", "0"}), size);
    EXPECT_THAT(trashed(), testing::ElementsAre("foreign"));
    EXPECT_FALSE(exists(at(".local/share/Trash/info/old.trashinfo")));
    EXPECT_EQ(answer({"history"}).at(0).at("purgedFromTrash").as_bool(), true);
    EXPECT_EQ(run({"undo", "--last"}).exitCode, 1);
}

}  // namespace

}  // namespace Brimlo::Testing
