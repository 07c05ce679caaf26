#include "BrimloApp/Lists/RuleRows.h"

#include "BrimloAppTests/Lists/RowLines.h"
#include "BrimloAppTests/Support/ModelTest.h"
#include "BrimloCore/DisabledRules/DisabledRules.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <QtTest/QAbstractItemModelTester>

namespace Brimlo {
namespace {

using Testing::lines;

class RuleRowsTest : public Testing::ModelTest {
protected:
    static CleanupRule save(const UserRules::Draft& fields) {
        const CleanupRule rule = UserRules::make(fields);
        EXPECT_TRUE(UserRules::save(rule, UserRules::defaultDirectory()));
        return rule;
    }

    RuleRows rows;
    const QAbstractItemModelTester tester{
        &rows, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(RuleRowsTest, TellsWhatARuleDoes) {
    const std::vector personas{Persona::general};
    save(
        {.name = "One",
         .paths = {"~/one"},
         .risk = Risk::safe,
         .regenerates = "It comes back.",
         .personas = personas});
    save({
        .name = "Two",
        .group = "Grüße",
        .paths = {"~/a", "~/b"},
        .risk = Risk::rebuild,
        .regenerates = "It comes back.",
        .contentsOnly = true,
        .minAgeDays = 12,
        .personas = personas
    });
    rows.setSource(&model());
    const QList<QByteArray> roles{"name", "risk", "details", "isEnabled"};
    EXPECT_EQ(
        lines(rows, roles),
        (QStringList{
            "One|safe|~/one|true",
            "Two|rebuild|Grüße  ·  2 locations  ·  older than 12 days  ·  contents only|true"}));
    for (const QString query : {" GRÜSSE", "grüße\t", "tw", "GRÜẞE"}) {
        rows.setQuery(query);
        EXPECT_EQ(rows.count(), query.contains("SS") ? 0 : 1) << query.toStdString();
    }
    EXPECT_EQ(rows.totalCount(), 2);
    rows.setEnabled(0, false);
    rows.copy(0);
    EXPECT_EQ(model().ruleDraft(), nullptr);
    rows.edit(0);
    ASSERT_NE(model().ruleDraft(), nullptr);
    EXPECT_FALSE(model().ruleDraft()->isNew());
    EXPECT_EQ(model().ruleDraft()->property("name"), "Two");
    rows.remove(0);
    rows.setQuery({});
    EXPECT_EQ(lines(rows, {"name", "isEnabled"}), QStringList{"One|true"});
    restart();
    EXPECT_EQ(rows.count(), 0);
}

TEST_F(RuleRowsTest, SwitchesBuiltInRulesAndCopiesThem) {
    rows.setSource(&model());
    rows.setKind("neither");
    rows.setKind("builtIn");
    const auto& rules = model().builtInRules();
    ASSERT_EQ(rows.count(), static_cast<int>(rules.size()));
    for (const int row : {0, rows.count() - 1, rows.count()}) {
        rows.setEnabled(row, false);
    }
    EXPECT_EQ(DisabledRules::load(), (std::set{rules.front().id, rules.back().id}));
    EXPECT_EQ(lines(rows, {"isEnabled"}).count("false"), 2);
    rows.setEnabled(0, true);
    EXPECT_EQ(DisabledRules::load(), std::set{rules.back().id});
    rows.edit(0);
    rows.remove(0);
    EXPECT_EQ(model().ruleDraft(), nullptr);
    for (int row = 0; row < rows.count(); ++row) {
        const CleanupRule& rule = rules[static_cast<std::size_t>(row)];
        rows.copy(row);
        CleanupRule copy = model().ruleDraft()->makeRule();
        EXPECT_NE(copy.id, rule.id);
        EXPECT_TRUE(model().ruleDraft()->isNew());
        copy.id = rule.id;
        EXPECT_EQ(copy, RuleDraft{rule}.makeRule()) << rule.id;
    }
}

TEST_F(RuleRowsTest, ShowsTheUsersRulesBeforeThoseBuiltIn) {
    const std::string taken = model().builtInRules().front().id;
    restart();
    save(
        {.id = taken,
         .name = "Mine",
         .paths = {"~/one"},
         .risk = Risk::safe,
         .regenerates = "It comes back.",
         .personas = {Persona::general}});
    rows.setKind("all");
    rows.setSource(&model());
    const auto count = static_cast<int>(model().builtInRules().size());
    EXPECT_EQ(rows.totalCount(), count + 1);
    EXPECT_EQ(rows.customCount(), 1);
    EXPECT_EQ(
        lines(rows, {"isCustom", "ruleID"}).mid(0, 3),
        (QStringList{
            "true|" + QString::fromStdString(taken),
            "false|" + QString::fromStdString(taken),
            "false|" + QString::fromStdString(model().builtInRules()[1].id)}));
    rows.setEnabled(0, false);
    rows.copy(0);
    rows.edit(1);
    rows.remove(1);
    EXPECT_EQ(model().ruleDraft(), nullptr);
    EXPECT_TRUE(DisabledRules::load().empty());
    rows.edit(0);
    EXPECT_FALSE(model().ruleDraft()->isNew());
    rows.remove(0);
    EXPECT_EQ(rows.count(), count);
    EXPECT_EQ(rows.customCount(), 0);
}

}  // namespace
}  // namespace Brimlo
