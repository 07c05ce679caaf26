#include "BrimloApp/History/HistoryRows.h"

#include "BrimloApp/History/History.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloAppTests/Support/ModelTest.h"
#include "BrimloAppTests/Support/RowLines.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <QtTest/QAbstractItemModelTester>

namespace Brimlo {
namespace {

class HistoryRowsTest : public Testing::ModelTest {};

TEST_F(HistoryRowsTest, TellsWhatHasBecomeOfEachItem) {
    const std::string digits = "0123456789abcdef";
    const std::string image = "docker:image:sha256:" + digits + digits + digits + digits;
    std::vector<JournalEntry> entries(4);
    entries[0] = {.originalPath = at("c"), .trashPath = "/t", .size = 1, .undone = true};
    entries[1] = {.originalPath = "/\n", .trashPath = "/t", .purgedFromTrash = true};
    entries[2] = {
        .originalPath = at("a"), .trashPath = at(".local/share/Trash/files/t"), .size = 4};
    entries[3] = {.originalPath = image, .size = 5, .batchID = Uuid::random()};
    for (std::size_t i = 0; i < entries.size(); ++i) {
        entries[i].id.bytes[0] = static_cast<std::uint8_t>(i);  // The first one's is its batch's.
        entries[i].date += std::chrono::seconds{i};
        ASSERT_TRUE(Journal{StoragePaths::journal()}.append(entries[i]));
    }
    write(".local/share/Trash/files/t");
    write(
        ".local/share/Trash/info/t.trashinfo",
        "[Trash Info]\nPath=/t\nX-Brimlo-Entry=" + entries[2].id.text() + "\n");
    write("real/data");
    HistoryRows& list = *model().history()->rows();
    const QAbstractItemModelTester tester{
        &list, QAbstractItemModelTester::FailureReportingMode::Fatal};
    finish();
    for (const int place : {1, 0, 1, -1}) {  // The second time it is an entry's.
        list.toggleExpanded(place);
    }
    const QStringList old{
        "batch|Docker image 0123456789ab|Docker image 0123456789ab|0|1|5|false|true||",
        "entry|||0|0|5|false|false|Docker image 0123456789ab|removed",
        "batch|3 items|~/a, /\uFFFD|1|3|5|true|true||",
        "entry|||0|0|4|false|false|~/a|inTrash",
        "entry|||0|0|0|false|false|/\uFFFD|gone",
        "entry|||0|0|1|false|false|~/c|restored"};
    const auto shown = [&] {
        return Testing::lines(
            list,
            {"kind",
             "title",
             "summary",
             "otherCount",
             "itemCount",
             "size",
             "restorable",
             "expanded",
             "path",
             "state"});
    };
    EXPECT_EQ(shown(), old);
    EXPECT_TRUE(Testing::lines(list, {"date"}).at(2).contains(":00:02."));
    model().cleanup()->run(CleanPlan{{{.path = at("real"), .size = 9}}});
    finish();
    for (const int place : {-1, 2, 99, 0}) {
        EXPECT_EQ(shown(), QStringList{"batch|real|~/real|0|1|9|true|false||"} + old);
        list.undo(place);
        finish();
    }
    EXPECT_TRUE(Testing::exists(at("real/data")));
    EXPECT_EQ(shown(), QStringList{"batch|real|~/real|0|1|9|false|false||"} + old);
}

}  // namespace
}  // namespace Brimlo
