#include "BrimloApp/Rules/RulePreview.h"

#include "BrimloApp/Shell/RunInBackground.h"
#include "BrimloAppTests/Support/AppTest.h"
#include "BrimloAppTests/Support/TestClock.h"

#include <QtCore/QVariant>
#include <gmock/gmock.h>

#include <chrono>
#include <memory>

namespace Brimlo {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

class RulePreviewTest : public Testing::AppTest {
protected:
    void TearDown() override {
        Background::waitForDone();
        settle();
    }

    /// Lets the preview look at the draft and come to its end.
    void finish() {
        clock.advance(milliseconds{350});
        waitFor([this] { return !preview.isWorking(); });
    }

    void set(const char* field, const QVariant& value) { draft->setProperty(field, value); }

    Testing::TestClock clock;
    std::unique_ptr<RuleDraft> draft = std::make_unique<RuleDraft>();
    RulePreview preview{clock};
};

TEST_F(RulePreviewTest, TellsWhatIsMissingApartFromWhatIsWrong) {
    write("cache/data", "1234");
    preview.setDraft(draft.get());
    struct Case {
        const char* field;
        const char* value;
        std::vector<const char*> missing;  ///< How they begin.
        std::vector<const char*> errors;
        std::vector<const char*> warnings;
        bool hasResult;
    };
    const std::vector<const char*> none;
    const Case cases[] = {
        {"name",        "",                {"Give", "Describe", "Add"}, none,                       none,              false},
        {"paths",       "~/cache",         {"Give", "Describe"},        none,                       none,              true },
        {"name",        "Cache",           {"Describe"},                none,                       none,              true },
        {"paths",       "cache",           {"Describe"},                {"cache: use a full path"}, none,              false},
        {"regenerates", "It comes back.",  none,                        {"cache: use a full path"}, none,              false},
        {"paths",       "~/nothing/there", none,                        none,                       none,              true },
        {"risk",        "safe",            none,                        none,                       none,              true },
        {"paths",       "~/Documents/*",   none,                        {"Rules that match"},       {"~/Documents/*"}, false},
        {"risk",        "review",          none,                        none,                       {"~/Documents/*"}, true },
    };
    const auto begin = [](const QStringList& lines, const std::vector<const char*>& starts) {
        return std::ranges::equal(lines, starts, [](const QString& line, const char* start) {
            return line.startsWith(start);
        });
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string{c.field} + " " + c.value);
        set(c.field, c.value);
        EXPECT_EQ(preview.canSave(), c.missing.empty() && c.errors.empty()) << "told at once";
        finish();
        EXPECT_TRUE(begin(preview.missing(), c.missing))
            << preview.missing().join("|").toStdString();
        EXPECT_TRUE(begin(preview.errors(), c.errors)) << preview.errors().join("|").toStdString();
        EXPECT_TRUE(begin(preview.warnings(), c.warnings));
        EXPECT_EQ(preview.hasResult(), c.hasResult);
    }
    preview.setDraft(nullptr);
    EXPECT_FALSE(preview.canSave());
    EXPECT_FALSE(preview.hasResult());
    EXPECT_THAT(preview.warnings(), IsEmpty());
    EXPECT_EQ(clock.waiting(), 0U);
}

TEST_F(RulePreviewTest, WaitsForTheLastChangeAndShowsNothingOlder) {
    write("one", "1");
    write("two", "2");
    set("paths", "~/one");
    preview.setDraft(draft.get());
    clock.advance(milliseconds{349});
    set("paths", "~/two");
    clock.advance(milliseconds{349});
    EXPECT_FALSE(preview.isWorking());
    clock.advance(milliseconds{1});
    EXPECT_TRUE(preview.isWorking());

    // The first one is under way; its result comes home only in the event loop.
    set("paths", "~/one");
    clock.advance(milliseconds{350});
    QStringList shown;
    QObject::connect(
        &preview, &RulePreview::resultChanged, &preview, [&] { shown += preview.paths(); });
    waitFor([this] { return !preview.isWorking(); });
    EXPECT_THAT(shown, ElementsAre("~/one"));

    // What is under way when its draft goes is for nobody.
    set("paths", "~/two");
    clock.advance(milliseconds{350});
    preview.setDraft(nullptr);
    draft.reset();
    Background::waitForDone();
    settle();
    EXPECT_FALSE(preview.hasResult());
    EXPECT_FALSE(preview.isWorking());
}

}  // namespace
}  // namespace Brimlo
