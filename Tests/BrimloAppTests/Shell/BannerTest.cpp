#include "BrimloApp/Shell/Banner.h"

#include "BrimloAppTests/Support/TestClock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <utility>

namespace Brimlo {
namespace {

using namespace std::chrono_literals;

TEST(BannerTest, StaysForAsLongAsItsWordsDeserve) {
    Testing::TestClock clock;
    Banner banner{clock};
    const std::pair<const char*, std::chrono::seconds> cases[] = {
        {"Saved.",             8s },
        {"It FAILED somehow.", 20s},
        {"Could Not do that.", 20s},
        {"We were unable to.", 20s},
    };
    for (const auto& [text, time] : cases) {
        banner.show(text);
        clock.advance(time - 1ms);
        EXPECT_EQ(banner.text(), text);
        clock.advance(1ms);
        EXPECT_EQ(banner.text(), "") << text;
    }
}

TEST(BannerTest, KeepsAMessageFromTheTimerOfAnEarlierOne) {
    Testing::TestClock clock;
    Banner banner{clock};
    banner.show("First.");
    clock.advance(7s);
    banner.show("Second.");
    clock.advance(7s);
    EXPECT_EQ(banner.text(), "Second.");
    banner.show("Second.");
    clock.advance(7s);
    EXPECT_EQ(banner.text(), "Second.") << "shown again, for its whole time";
    clock.advance(1s);
    EXPECT_EQ(banner.text(), "");

    banner.show("Third.");
    banner.show({});
    EXPECT_EQ(clock.waiting(), 0U) << "an absent message waits for nothing";
}

}  // namespace
}  // namespace Brimlo
