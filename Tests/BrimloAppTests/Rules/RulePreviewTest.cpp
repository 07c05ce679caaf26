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

class RulePreviewTest : public Testing::AppTest {
protected:
    void TearDown() override {
        Background::waitForDone();
        settle();
    }

    void set(const char* field, const QVariant& value) { draft->setProperty(field, value); }

    Testing::TestClock clock;
    std::unique_ptr<RuleDraft> draft = std::make_unique<RuleDraft>();
    RulePreview preview{clock};
};

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
