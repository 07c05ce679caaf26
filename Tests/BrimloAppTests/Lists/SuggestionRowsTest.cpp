#include "BrimloApp/Lists/SuggestionRows.h"

#include "BrimloAppTests/Lists/RowLines.h"
#include "BrimloAppTests/Support/ModelTest.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <QtGui/QDesktopServices>
#include <QtTest/QAbstractItemModelTester>

namespace Brimlo {
namespace {

using Testing::lines;

/// Two suggestions: one of two items, and one of 62 whose app "runs" (this very program).
struct SuggestionRowsTest : Testing::ModelTest {
    SuggestionRowsTest() {
        save({.id = "custom.odd", .name = "Ödd", .paths = {"~/odd/*"}, .officialCommand = "odd"});
        save({.name = "Many", .group = "Tools", .paths = {"~/many/*"}, .quitApps = {"ListsTests"}});
        age(write("odd/a\xFF\n", std::string(900'000, 'a')), 31.5);
        age(write("odd/b", std::string(90'000, 'a')), 30.5);
        for (int i = 0; i < 62; ++i) {
            write("many/" + std::to_string(i));
        }
        list.setSource(&model());
        suggest();
        list.toggleExpanded(0);
    }

    static void save(UserRules::Draft draft) {
        draft.regenerates = "It comes back.";
        draft.personas = {Persona::general};
        ASSERT_TRUE(UserRules::save(UserRules::make(draft), UserRules::defaultDirectory()));
    }

    SuggestionRows list;
    const QAbstractItemModelTester tester{
        &list, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(SuggestionRowsTest, ListsWhatIsExpandedAndNoMoreThanSixtyItems) {
    suggest();  // What is expanded stays so.
    const QString odd = QString::fromStdString(at("odd/"));
    const QStringList expanded{
        "suggestion|Ödd||2|true||||-1",
        "details|||0|false|odd|It comes back.||-1",
        "item|||0|false|||" + odd + "a\uFFFD\uFFFD|31",
        "item|||0|false|||" + odd + "b|-1",
        "suggestion|Many|ListsTests|62|false||||-1"};
    EXPECT_EQ(
        lines(
            list,
            {"kind",
             "name",
             "runningApps",
             "itemCount",
             "expanded",
             "officialCommand",
             "regenerates",
             "path",
             "idleDays"}),
        expanded);
    EXPECT_EQ((QList{list.head(3), list.head(0), list.head(4)}), (QList{0, 0, 4}));
    list.toggleExpanded(4);
    EXPECT_EQ(list.count(), 4 + 1 + 1 + 60 + 1);
    EXPECT_EQ(lines(list, {"kind", "itemCount"}).back(), "more|2");
}

TEST_F(SuggestionRowsTest, TicksItemsAndWholeSuggestions) {
    const std::pair<int, QStringList> steps[] = {
        {2,  {"some", "none", "all", "none", "none"} },
        {0,  {"all", "none", "all", "all", "none"}   },
        {2,  {"some", "none", "none", "all", "none"} },
        {1,  {"some", "none", "none", "all", "none"} },
        {99, {"some", "none", "none", "all", "none"} },
        {3,  {"none", "none", "none", "none", "none"}},
    };
    for (const auto& [place, ticks] : steps) {
        list.toggle(place);
        EXPECT_EQ(lines(list, {"tick"}), ticks);
    }
}

TEST_F(SuggestionRowsTest, SearchesInNamesAndGroupsOfTheAudience) {
    list.toggleExpanded(0);
    const std::pair<const char*, QStringList> cases[] = {
        {"\t ödD ", {"Ödd"}        },
        {"TOOL",     {"Many"}        },
        {"d m",      {}              },
        {" ",        {"Ödd", "Many"}},
    };
    for (const auto& [query, names] : cases) {
        list.setQuery(QString::fromUtf8(query));
        EXPECT_EQ(lines(list, {"name"}), names) << query;
        EXPECT_EQ(list.visibleCount(), 2);
    }
    model().setPersonaFilter(Persona::video);
    EXPECT_EQ(list.count() + list.visibleCount(), 0);
}

TEST_F(SuggestionRowsTest, RevealsItemsAndOutlivesItsSource) {
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    // In place of a file manager: the folder that is opened gets scanned.
    QDesktopServices::setUrlHandler("file", &model(), "scanDropped");
    for (const int place : {-1, 0, 1, 99, 3}) {
        list.reveal(place);
        EXPECT_EQ(model().isScanning(), place == 3);
    }
    finish();
    QDesktopServices::unsetUrlHandler("file");
    EXPECT_EQ(model().root()->path, at("odd"));
    restart();
    EXPECT_EQ(list.count() + list.visibleCount(), 0);
    list.toggle(0);
}

}  // namespace
}  // namespace Brimlo
