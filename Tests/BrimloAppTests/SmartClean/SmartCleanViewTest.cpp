#include "BrimloApp/History/History.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/SmartClean/SmartClean.h"
#include "BrimloAppTests/Support/WindowTest.h"
#include "BrimloCore/LeftAlone/LeftAlone.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <tuple>

namespace Brimlo {
namespace {

using testing::ElementsAre;
using Testing::exists;
using testing::IsEmpty;

constexpr auto kRow = QAccessible::ListItem;
constexpr auto kTick = QAccessible::CheckBox;

class SmartCleanViewTest : public Testing::WindowTest {
protected:
    /// An engine with one image of so many gigabytes that nothing uses.
    void installDocker(const std::string& size) const {
        const std::string image =
            R"({"ID":"sha256:abc","Repository":"builder","Tag":"1","Containers":"0",)"
            R"("CreatedSince":"5 months ago","Size":")" +
            size + R"(","UniqueSize":")" + size + R"("})";
        writeProgram(
            "docker",
            "case \"$*\" in 'context show') echo default;; info*) echo 28;;\n"
            "'system df -v --format json') echo '{\"Images\":[" +
                image +
                "]}';;\n"
                "rmi*) touch \"$HOME/removed\";; esac");
    }

    void openScanned(const QSize size = {1000, 660}) {
        addSampleRules();
        open(Section::Clean, size);
        ASSERT_FALSE(model().smartClean()->suggestions().empty());
    }

    [[nodiscard]] std::vector<std::string> planned() {
        std::vector<std::string> names;
        const CleanPlan plan = model().smartClean()->currentPlan();
        for (const CleanItem& item : plan.items()) {
            names.push_back(
                item.path.starts_with('/') ? item.path.substr(home().size() + 1) : item.path);
        }
        return names;
    }

    [[nodiscard]] QPointF box(const char* row) {
        QQuickItem* const found = find(kRow, row);
        return found->mapToScene({22, found->height() / 2});
    }
};

TEST_F(SmartCleanViewTest, ShowsTheFirstStateThatHolds) {
    const char* const empty = "Nothing to clean";
    const std::vector<const char*> states{
        "*s · usually 20 to 30 seconds", empty, "No Results for “zzz”", "Suggestions"};
    open(Section::Clean);
    EXPECT_THAT(seen(states), ElementsAre(empty));
    EXPECT_TRUE(sees("No rule finds anything on this disk now."));
    addSampleRules();
    {
        const Testing::HeldWork held;
        press("Rescan");
        EXPECT_TRUE(model().smartClean()->isSuggesting());
        waitToSee("*s · usually 20 to 30 seconds");
        EXPECT_FALSE(sees(empty));
        EXPECT_FALSE(isEnabled("Rescan"));
        EXPECT_TRUE(sees(model().smartClean()->suggestPhase()));
    }
    finish();
    EXPECT_THAT(seen(states), ElementsAre("Suggestions"));

    // Without a match nothing but that is shown.
    click(QAccessible::EditableText, "Search apps and tools");
    type("zzz");
    EXPECT_THAT(seen(states), ElementsAre("No Results for “zzz”"));
    // An audience without a suggestion has none, whatever is searched for.
    model().smartClean()->rows()->setAudience("gaming");
    EXPECT_THAT(seen(states), ElementsAre(empty));
}

TEST_F(SmartCleanViewTest, SearchesNamesAndGroupsWithinTheAudience) {
    openScanned();
    const std::tuple<const char*, const char*, std::vector<std::string>> cases[] = {
        {"",      "",         {"Caches, *", "Running, *", "Mine, *"}},
        {"",      "  cAcHe ", {"Caches, *"}                         },
        {"",      "gROUP",    {"Running, *"}                        },
        {"video", "",         {"Running, *"}                        },
        {"video", "mine",     {}                                    },
    };
    for (const auto& [audience, query, rows] : cases) {
        SCOPED_TRACE(testing::Message() << audience << ' ' << query);
        model().smartClean()->rows()->setAudience(audience);
        click(QAccessible::EditableText, "Search apps and tools");
        key(Qt::Key_Escape);
        type(query);
        EXPECT_EQ(seen({"Caches, *", "Running, *", "Mine, *"}), rows);
    }
}

TEST_F(SmartCleanViewTest, TicksByBoxAndKeyAndByTheToolbar) {
    openScanned({1000, 900});
    EXPECT_THAT(planned(), ElementsAre("caches/large", "caches/small"));
    EXPECT_TRUE(sees("2 items"));
    clickAt(box("Caches, *"));
    EXPECT_THAT(planned(), IsEmpty());
    EXPECT_FALSE(isEnabled("Preview"));
    EXPECT_FALSE(isEnabled("Review & Clean…"));
    clickAt(box("Mine, *"));
    EXPECT_THAT(planned(), ElementsAre("mine/data"));
    press("Select safe");
    EXPECT_THAT(planned(), ElementsAre("caches/large", "caches/small"));

    click(kRow, "Caches, *");  // Beside the box it unfolds.
    EXPECT_TRUE(sees("It comes back."));
    EXPECT_TRUE(sees("Goes to Trash. It can be regenerated."));
    const QString why = "Looks at: ~/caches/*";
    EXPECT_FALSE(sees(why));
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    EXPECT_TRUE(sees(why) && sees("Safety gate: *"));
    press("Why?");
    EXPECT_FALSE(sees(why));
    click(kTick, QString::fromStdString(at("caches/large")));
    EXPECT_THAT(planned(), ElementsAre("caches/small"));
    const QQuickItem* const group = find(kTick, "Select all items in this group");
    EXPECT_EQ(group->property("checkState").toInt(), Qt::PartiallyChecked);
    press("Clear selection");
    EXPECT_THAT(planned(), IsEmpty());
    EXPECT_EQ(group->property("checkState").toInt(), Qt::Unchecked);

    click(QAccessible::ComboBox, "Audience");
    click(kRow, "Video");
    EXPECT_EQ(model().smartClean()->rows()->audience(), "video");
    EXPECT_TRUE(sees("Close WindowTests first"));
}

TEST_F(SmartCleanViewTest, NeverSuggestsAgainWhatIsLeftAlone) {
    openScanned({1000, 1500});  // The settings in one view.
    const std::string list = StoragePaths::support() + "/left-alone.json";
    const QString large = QString::fromStdString(at("caches/large")) + ", *";
    click(kRow, "Caches, *");
    click(kRow, large, Qt::RightButton);
    choose("Never Suggest This");
    EXPECT_EQ(find(kRow, large), nullptr);
    EXPECT_THAT(planned(), ElementsAre("caches/small"));
    press("Rescan");
    finish();
    EXPECT_EQ(find(kRow, large), nullptr);
    key(Qt::Key_Z, Qt::ControlModifier);  // Looks anew: the list is another one by now.
    finish();
    EXPECT_THAT(planned(), ElementsAre("caches/large", "caches/small"));

    click(kRow, "Mine, *");
    key(Qt::Key_F10, Qt::ShiftModifier);
    choose("Never Suggest What This Rule Finds");
    EXPECT_EQ(find(kRow, "Mine, *"), nullptr);
    press("Undo");
    EXPECT_NE(find(kRow, "Mine, *"), nullptr);
    click(kRow, "Mine, *", Qt::RightButton);
    choose("Never Suggest What This Rule Finds");
    model().setSection(Section::Settings);
    press("Suggest again");
    finish();
    EXPECT_EQ(LeftAlone::load(), LeftAlone{});
    model().setSection(Section::Clean);
    EXPECT_NE(find(kRow, "Mine, *"), nullptr);

    // A damaged list is told of, and nothing is offered.
    write(list.substr(home().size() + 1), "{");
    press("Rescan");
    finish();
    EXPECT_TRUE(sees("The list of what is left alone could not be read: *"));
    EXPECT_TRUE(model().smartClean()->suggestions().empty() && sees("Nothing scanned yet"));
}

TEST_F(SmartCleanViewTest, FoldsTheManyItemsOfAFolderIntoOneRow) {
    for (int i = 0; i < 25; ++i) {
        write("caches/" + std::to_string(i), std::string(5'000, 'c'));
    }
    openScanned();
    press("Clear selection");
    click(kRow, "Caches, *");
    click(kTick, "Select all items in this folder");
    EXPECT_THAT(planned(), testing::SizeIs(27));
    EXPECT_EQ(find(kTick, QString::fromStdString(at("caches/7"))), nullptr);
    click(kRow, QString::fromStdString(at("caches")) + ", *");
    EXPECT_NE(find(kRow, "large, *"), nullptr);
    expectLaidOut();
    key(Qt::Key_Left);
    await([&] { return find(kRow, "large, *") == nullptr; }, "its end");
    press("Review & Clean…");
    waitToSee("Review before cleaning");
    EXPECT_TRUE(sees("27 items · *"));
    expectLaidOut();
    click(kRow, "Caches, *");
    waitToSee("large, *");
    expectLaidOut();
}

TEST_F(SmartCleanViewTest, PreviewsWithoutAWayToClean) {
    openScanned();
    model().smartClean()->setPreviewRequested(true);
    waitToSee("Preview: nothing will change");
    EXPECT_FALSE(model().smartClean()->previewRequested());
    EXPECT_TRUE(sees("This is a preview. Use Clean to apply."));
    EXPECT_EQ(find(QAccessible::Button, "Clean *"), nullptr);
    key(Qt::Key_Return);
    await([&] { return !sees("Preview: nothing will change"); }, "its end");
    EXPECT_FALSE(model().cleanup()->isCleaning());
    EXPECT_THAT(model().history()->journal(), IsEmpty());
}

TEST_F(SmartCleanViewTest, TellsDockersItemsFromThoseThatCanComeBack) {
    installDocker("5000TB");
    openScanned({1000, 900});
    click(kRow, "Docker: *");
    EXPECT_EQ(find(QAccessible::Button, "Reveal in Files"), nullptr);
    EXPECT_TRUE(sees("Goes for good, through Docker."));
    EXPECT_NE(find(kRow, "builder:1, 5 PB"), nullptr);
    press("Clear selection");
    EXPECT_TRUE(sees("Goes to Trash first · undo anytime"));
    clickAt(box("Docker: *"));
    EXPECT_TRUE(sees("5 PB for good"));
    press("Review & Clean…");
    waitToSee("Docker · permanent");
    EXPECT_TRUE(sees("Docker image builder:1 (abc)*"));
    EXPECT_TRUE(sees("5 PB Freed immediately"));
    EXPECT_FALSE(sees("Trash"));
    EXPECT_FALSE(sees("Move to Trash"));
    EXPECT_TRUE(sees("1 item (5 PB) goes for good and cannot be put back."));
    press("Clean 5 PB for good");
    finish();
    EXPECT_TRUE(exists(at("removed")));
    waitToSee("5 PB Freed now");
    EXPECT_TRUE(sees("Docker image builder:1 (abc), 5 PB"));
    EXPECT_FALSE(sees("Empty Trash now"));
    EXPECT_FALSE(sees("Undo *"));
    press("View history");
    EXPECT_TRUE(sees("Docker image abc, *"));
    EXPECT_FALSE(sees("Undo all"));
}

TEST_F(SmartCleanViewTest, TellsWhatWouldStayAndTakesWhatIsTickedInTheReview) {
    for (int i = 0; i < 25; ++i) {
        write("caches/" + std::to_string(i), std::string(5'000, 'c'));
    }
    openScanned({1000, 900});
    clickAt(box("Mine, *"));
    std::filesystem::remove_all(at("mine/data"));
    press("Review & Clean…");
    waitToSee("Review before cleaning");
    EXPECT_TRUE(sees("Would be refused and stays · 1 item"));
    EXPECT_TRUE(sees("no longer exists"));
    EXPECT_FALSE(sees("Some items may contain *"));
    EXPECT_FALSE(find(kTick, "Mine, *")->isEnabled());
    EXPECT_TRUE(sees("27 items · *"));
    expectLaidOut();

    click(kTick, "Caches, *");
    EXPECT_TRUE(sees("0 items · 0 bytes"));
    EXPECT_FALSE(isEnabled("Clean *"));
    click(kTick, "Caches, *");
    click(kRow, "Caches, *");
    click(kTick, "large");
    EXPECT_TRUE(sees("26 items · *"));
    EXPECT_EQ(find(kTick, "Caches, *")->property("checkState").toInt(), Qt::PartiallyChecked);
    expectLaidOut();
    press("Clean *");
    finish();
    waitToSee("Cleanup complete");
    EXPECT_TRUE(exists(at("caches/large")));
    EXPECT_FALSE(exists(at("caches/small")) || exists(at("caches/7")));
    EXPECT_THAT(planned(), ElementsAre("mine/data", "caches/large")) << "what stayed stays ticked";
}

TEST_F(SmartCleanViewTest, MovesNoRowThatThePointerIsOn) {
    for (int i = 0; i < 30; ++i) {
        const std::string name = "rule " + std::to_string(i);
        fill("many/" + name + "/file", 50'000);
        UserRules::Draft draft{.name = name, .paths = {"~/many/" + name}};
        draft.regenerates = "It is made again.";
        draft.personas = {Persona::general};
        ASSERT_TRUE(UserRules::save(UserRules::make(draft), UserRules::defaultDirectory()));
    }
    openScanned();
    SmartClean& clean = *model().smartClean();
    const auto place = [&](const char* row) { return get(kRow, row).mapToScene({}).y(); };
    // Near the top, rows above can only go if the list gets room there.
    const std::string first = clean.suggestions()[0].id;
    const std::string second = clean.suggestions()[1].id;
    const auto before = clean.suggestions();
    const std::string name = clean.suggestions()[4].name + ",*";
    const double at = place(name.c_str());
    pointAt(box(name.c_str()));
    clean.forgetRule(first);
    await([&] { return place(name.c_str()) == at; }, "its place");
    clean.forgetRule(second);
    await([&] { return place(name.c_str()) == at; }, "its place");
    clean.show(before);
    await([&] { return place(name.c_str()) == at; }, "its place after rows came back");
    clean.forgetRule(first);
    await([&] { return place(name.c_str()) == at; }, "its place");
    pointAt({300, 20});
    EXPECT_LT(place(name.c_str()), at) << "the pointer left";

    key(Qt::Key_F, Qt::ControlModifier);
    pointAt(box(name.c_str()));
    type("rule 7");
    EXPECT_LT(place("rule 7,*"), at) << "a search begins at the top";
}

TEST_F(SmartCleanViewTest, CleansWhatWasReviewedAndUndoesIt) {
    openScanned();
    clickAt(box("Mine, *"));
    press("Review & Clean…");
    waitToSee("Review before cleaning");
    EXPECT_TRUE(
        sees("Some items may contain your own files. They stay in Trash and can be put back."));
    EXPECT_TRUE(isChecked(QAccessible::RadioButton, "Move to Trash"));
    expectLaidOut();
    // Something else is ticked meanwhile: what was shown goes, and no more.
    model().smartClean()->toggle(suggestion("custom.mine"));
    {
        const Testing::HeldWork held{Background::writers()};
        press("Clean *");
        EXPECT_TRUE(model().cleanup()->isCleaning());
        EXPECT_TRUE(sees("0 of 3"));
        press("Stop");
        EXPECT_FALSE(isEnabled("Stopping…"));
    }
    finish();
    waitToSee("Cleanup stopped");
    EXPECT_TRUE(sees("0 items processed, 3 left untouched"));
    EXPECT_EQ(find(QAccessible::Button, "Undo everything"), nullptr);
    press("Done");
    await([&] { return !sees("Cleanup stopped"); }, "its end");
    EXPECT_THAT(planned(), testing::SizeIs(2)) << "what was not reached stays ticked";
    clickAt(box("Mine, *"));
    press("Review & Clean…");
    waitToSee("Review before cleaning");
    press("Clean *");
    finish();
    EXPECT_FALSE(exists(at("mine/data")));
    waitToSee("Cleanup complete");
    EXPECT_TRUE(sees("3 items processed"));
    expectReadable();
    press("Undo everything");
    finish();
    EXPECT_TRUE(exists(at("mine/data")));
    EXPECT_FALSE(model().cleanup()->showResult());
    await([&] { return !sees("Cleanup complete"); }, "its end");
}

TEST_F(SmartCleanViewTest, ReportsWhatWentAwayUnderTheSheetAndLeadsOn) {
    openScanned();
    press("Review & Clean…");
    waitToSee("Review before cleaning");
    std::filesystem::remove_all(at("caches/small"));
    model().smartClean()->loadSuggestions();
    finish();
    press("Clean *");
    finish();
    waitToSee("Cleanup finished with problems");
    EXPECT_TRUE(sees("Caches, " + QString::fromStdString(at("caches/small")) + ": *"));
    expectLaidOut();
    EXPECT_TRUE(sees("Undo everything"));
    press("Empty Trash now");
    waitToSee("Empty the Trash?");
    await([&] { return isEnabled("Delete for good"); }, "the size");
    press("Delete for good");
    finish();
    EXPECT_FALSE(exists(at(".local/share/Trash/files/large")));
    waitToSee("0 bytes In Trash");
    EXPECT_THAT(seen({"Undo everything", "Empty Trash now"}), IsEmpty()) << "it is gone";
    press("View history");
    EXPECT_EQ(model().section(), Section::History);
    EXPECT_FALSE(model().cleanup()->showResult());
}

TEST_F(SmartCleanViewTest, GoesTheWholeWayByTheKeyboard) {
    openScanned();
    tabTo(QAccessible::List, "Suggestions");
    key(Qt::Key_Space);
    EXPECT_THAT(planned(), IsEmpty());
    key(Qt::Key_Right);
    EXPECT_TRUE(sees("It comes back."));
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Space);
    EXPECT_THAT(planned(), ElementsAre("caches/large"));
    key(Qt::Key_Left);
    key(Qt::Key_Left);
    EXPECT_FALSE(sees("It comes back."));
    tabTo(QAccessible::Button, "Review & Clean…");
    key(Qt::Key_Space);
    waitToSee("Review before cleaning");
    key(Qt::Key_Return);
    finish();
    EXPECT_FALSE(exists(at("caches/large")));
}

}  // namespace
}  // namespace Brimlo
