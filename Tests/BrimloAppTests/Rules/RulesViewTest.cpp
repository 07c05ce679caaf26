#include "BrimloApp/Rules/RuleBook.h"
#include "BrimloAppTests/Support/WindowTest.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace Brimlo {
namespace {

using Testing::exists;
using testing::IsEmpty;

constexpr auto kField = QAccessible::EditableText;
constexpr auto kRow = QAccessible::ListItem;

class RulesViewTest : public Testing::WindowTest {
protected:
    RulesViewTest() {
        write("caches/one/data", std::string(40'000, 'a'));
        write("caches/two/data", std::string(40'000, 'a'));
    }

    void fillIn(const char* field, const QString& text) {
        click(kField, field);
        key(Qt::Key_A, Qt::ControlModifier);
        type(text);
    }
    /// A rule of the user's, written in the editor.
    void writeRule(const char* name) {
        press("New rule");
        waitToSee("New cleanup rule");
        fillIn("Name", name);
        fillIn("Path 1", "~/caches/*");
        tabTo(QAccessible::Button, "Use suggested wording");
        key(Qt::Key_Space);
        press("Save rule");
        await([&] { return model().rules()->ruleDraft() == nullptr; }, "the end of the editor");
    }
};

TEST_F(RulesViewTest, WritesARuleWithALivePreviewByTheKeyboardAlone) {
    open(Section::Rules);
    tabTo(QAccessible::Button, "New rule");
    key(Qt::Key_Return);
    waitToSee("New cleanup rule");
    await([&] { return focused() == "Name"; }, "the focus");
    EXPECT_FALSE(isEnabled("Save rule"));
    type("My caches");
    tabTo(kField, "Path 1");
    type("/etc");
    EXPECT_FALSE(isEnabled("Save rule"));
    key(Qt::Key_A, Qt::ControlModifier);
    type("~/caches/*");
    waitToSee("2 item(s) · *");
    EXPECT_TRUE(sees("~/caches/one"));
    EXPECT_FALSE(isEnabled("Save rule")) << "it has no description";
    expectLaidOut();
    tabTo(QAccessible::RadioButton, "Safe");
    key(Qt::Key_Space);
    EXPECT_TRUE(isChecked(QAccessible::RadioButton, "Safe"));
    tabTo(QAccessible::Button, "Use suggested wording");
    key(Qt::Key_Return);
    EXPECT_EQ(find(QAccessible::Button, "Use suggested wording"), nullptr);
    tabTo(QAccessible::Button, "Save rule");
    key(Qt::Key_Return);
    await([&] { return model().rules()->ruleDraft() == nullptr; }, "the end of the editor");
    ASSERT_EQ(model().rules()->customRules().size(), 1U);
    EXPECT_EQ(model().rules()->customRules()[0].risk, Risk::safe);
    EXPECT_TRUE(sees("1 custom rule"));
}

TEST_F(RulesViewTest, EditsCarriesAndDeletesTheUsersAndSwitchesAndCopiesTheOthers) {
    open(Section::Rules);
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(focused(), "Search rules");
    const char* const invitation = "You haven't added any rules yet. *";
    EXPECT_TRUE(sees(invitation));
    EXPECT_TRUE(sees("0 custom rules"));
    EXPECT_FALSE(isEnabled("Export"));
    writeRule("Mine");
    EXPECT_FALSE(sees(invitation));
    click(kRow, "Mine, *");
    key(Qt::Key_Right);
    waitToSee("~/caches/*: 2 items, *");
    key(Qt::Key_Left);
    EXPECT_FALSE(sees("~/caches/*: 2 items, *"));

    press("Edit");
    waitToSee("Edit rule");
    fillIn("Name", "Renamed");
    key(Qt::Key_S, Qt::ControlModifier);
    await([&] { return model().rules()->ruleDraft() == nullptr; }, "the end of the editor");
    EXPECT_EQ(model().rules()->customRules()[0].name, "Renamed");
    press("Edit");
    fillIn("Name", "Never saved");
    press("Cancel");
    EXPECT_EQ(model().rules()->ruleDraft(), nullptr);
    EXPECT_EQ(model().rules()->customRules()[0].name, "Renamed");

    const CleanupRule& first = model().rules()->builtInRules().front();
    const QString name = QString::fromStdString(first.name);
    click(QAccessible::CheckBox, name);
    EXPECT_TRUE(model().rules()->disabledRuleIDs().contains(first.id));
    EXPECT_FALSE(isChecked(QAccessible::CheckBox, name));
    expectReadable();
    click(kRow, name + ", *");
    key(Qt::Key_Space);
    EXPECT_FALSE(model().rules()->disabledRuleIDs().contains(first.id));
    press("Copy into a new rule");
    waitToSee("New cleanup rule");
    EXPECT_EQ(model().rules()->ruleDraft()->property("name").toString(), name);
    key(Qt::Key_Escape);
    await([&] { return model().rules()->ruleDraft() == nullptr; }, "the end of the editor");
    press("Export");
    answerPanel(at("rules.json"));
    await([&] { return exists(at("rules.json")); }, "the file");
    press("Delete");
    EXPECT_TRUE(sees(invitation));
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(model().rules()->customRules()[0].name, "Renamed");
    press("Delete");
    EXPECT_THAT(model().rules()->customRules(), IsEmpty());
    press("Import");
    answerPanel(at("rules.json"));
    await([&] { return model().rules()->customRules().size() == 1; }, "the rule");
    waitToSee(model().banner()->text());
}

TEST_F(RulesViewTest, KeepsAHalfWrittenRule) {
    open(Section::Rules);
    const auto opened = [&] {
        waitToSee("New cleanup rule");
        return model().rules()->ruleDraft()->property("name").toString();
    };
    const auto closed = [&] { return model().rules()->ruleDraft() == nullptr; };
    press("New rule");
    EXPECT_EQ(opened(), "");
    fillIn("Name", "Half");
    key(Qt::Key_Escape);
    await(closed, "the end of the editor");
    model().setSection(Section::Overview);
    model().setSection(Section::Rules);
    model().rules()->newRuleDraft(at("caches"));
    EXPECT_EQ(opened(), "caches") << "another rule";
    key(Qt::Key_Escape);
    await(closed, "the end of the editor");
    press("New rule");
    EXPECT_EQ(opened(), "Half");
    press("Cancel");
    await(closed, "the end of the editor");
    press("New rule");
    EXPECT_EQ(opened(), "");
}

TEST_F(RulesViewTest, KeepsTheEditorSaneWhenTheRuleGoesAway) {
    open(Section::Rules);
    writeRule("Mine");
    press("Edit");
    waitToSee("Edit rule");
    const CleanupRule rule = model().rules()->customRules()[0];
    model().rules()->deleteRule(rule);
    press("Save rule");
    await([&] { return model().rules()->customRules().size() == 1; }, "the rule");
    press("Edit");
    waitToSee("Edit rule");
    const std::string file = UserRules::defaultDirectory() + '/' + rule.id + ".json";
    std::filesystem::remove(file);
    std::filesystem::create_directories(file + "/in the way");
    press("Save rule");
    model().banner()->show({});
    EXPECT_TRUE(sees("Could not save rule: Is a directory"));
    EXPECT_TRUE(sees("Edit rule")) << "with what was typed";
    expectLaidOut();
    model().rules()->closeRuleDraft();
    await([&] { return !sees("Edit rule"); }, "the end of the editor");
}

}  // namespace
}  // namespace Brimlo
