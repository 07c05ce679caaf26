#include "BrimloApp/Shell/Rows.h"

#include "BrimloAppTests/Support/AppTest.h"

#include <QtTest/QAbstractItemModelTester>
#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <string>

namespace Brimlo {
namespace {

struct Letter {
    std::string name;
    int number = 0;

    [[nodiscard]] const std::string& key() const { return name; }
    bool operator==(const Letter&) const = default;
};

class Letters : public RowList {
public:
    /// A row for each character, with one number for all.
    void spell(const std::string& word, const int number = 0) {
        std::vector<Letter> letters;
        for (const char letter : word) {
            letters.push_back({.name = std::string{letter}, .number = number});
        }
        rows.set(std::move(letters));
    }

    Rows<Letter> rows{
        *this,
        {
              {"name", [](const Letter& row) { return QString::fromStdString(row.name); }},
              {"number", [](const Letter& row) { return row.number; }},
              }
    };
};

/// What a view is told, in short: "-2..3", "+0..0", "*1..1" or "reset".
class RowsTest : public Testing::AppTest {
protected:
    RowsTest() {
        const auto note = [this](const char* sign, const int first, const int last) {
            told.push_back(sign + std::to_string(first) + ".." + std::to_string(last));
        };
        QObject::connect(&letters, &RowList::rowsRemoved, &letters, [=](auto&, int a, int b) {
            note("-", a, b);
        });
        QObject::connect(&letters, &RowList::rowsInserted, &letters, [=](auto&, int a, int b) {
            note("+", a, b);
        });
        QObject::connect(&letters, &RowList::dataChanged, &letters, [=](auto& a, auto& b) {
            note("*", a.row(), b.row());
        });
        QObject::connect(
            &letters, &RowList::modelReset, &letters, [this] { told.emplace_back("reset"); });
    }

    Letters letters;
    std::vector<std::string> told;
};

TEST_F(RowsTest, TellsAViewOfNoMoreThanWhatDiffers) {
    struct Case {
        const char* name;
        const char* before;
        const char* after;
        std::vector<std::string> told;
    };
    const Case cases[] = {
        {"nothing",              "abc",   "abc",  {}                },
        {"filled",               "",      "abc",  {"+0..2"}         },
        {"emptied",              "abc",   "",     {"-0..2"}         },
        {"two apart",            "abcde", "bce",  {"-3..3", "-0..0"}},
        {"one out and one in",   "abcd",  "abxd", {"-2..2", "+2..2"}},
        {"one moved to the end", "abcd",  "bcda", {"-0..0", "+3..3"}},
        {"all others",           "abc",   "xyz",  {"-0..2", "+0..2"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        letters.spell(c.before);
        told.clear();
        letters.spell(c.after);
        EXPECT_EQ(told, c.told);
    }
    letters.spell("abcd");
    told.clear();
    letters.rows.set({
        {"a", 0},
        {"b", 7},
        {"c", 7},
        {"d", 0}
    });
    EXPECT_EQ(told, (std::vector<std::string>{"*1..2"}));
    EXPECT_EQ(letters.data(letters.index(1), Qt::UserRole + 1), 7);
    EXPECT_FALSE(letters.data(letters.index(1), Qt::UserRole + 2).isValid());
}

TEST_F(RowsTest, EndsWithTheNewRowsWhateverTheOldOnes) {
    // Qt's own tester follows the model and stops at the first step that breaks its rules.
    const QAbstractItemModelTester tester{
        &letters, QAbstractItemModelTester::FailureReportingMode::Fatal};
    std::mt19937 random{2026};
    for (int round = 0; round < 400; ++round) {
        std::string word = "abcdefghijklmnopqrstuvwxyz";
        if (round % 3 == 0) {
            std::ranges::shuffle(word, random);
        }
        std::erase_if(word, [&](char) { return random() % 3 == 0; });
        letters.spell(word, static_cast<int>(random() % 2));
        std::string shown;
        for (const Letter& row : letters.rows.all()) {
            shown += row.name;
        }
        ASSERT_EQ(shown, word);
        ASSERT_EQ(letters.count(), static_cast<int>(word.size()));
    }
}

TEST_F(RowsTest, ResetsWhenAlmostAllRowsMove) {
    std::vector<Letter> rows;
    for (int i = 0; i < 10'000; ++i) {
        rows.push_back({.name = std::to_string(i), .number = 0});
    }
    letters.rows.set(rows);
    told.clear();
    std::ranges::shuffle(rows, std::mt19937{7});
    letters.rows.set(rows);
    EXPECT_EQ(told, (std::vector<std::string>{"reset"}));
    EXPECT_EQ(letters.rows.all(), rows);
}

}  // namespace
}  // namespace Brimlo
