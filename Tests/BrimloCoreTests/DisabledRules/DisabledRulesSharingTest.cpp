#include "BrimloCore/DisabledRules/DisabledRules.h"
#include "Support/TempHome.h"

#include <thread>

namespace Brimlo {
namespace {

class DisabledRulesSharingTest : public Testing::TempHome {};

TEST_F(DisabledRulesSharingTest, LosesNoChangeAmongThreads) {
    constexpr int kThreads = 4;
    constexpr int kChanges = 10;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([thread] {
            for (int i = 0; i < kChanges; ++i) {
                const std::string id = std::to_string(thread) + "." + std::to_string(i);
                DisabledRules::set(id, true);
                EXPECT_TRUE(DisabledRules::isDisabled(id));
                DisabledRules::set(id, i % 2 == 0);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::set<std::string> expected;
    for (int thread = 0; thread < kThreads; ++thread) {
        for (int i = 0; i < kChanges; i += 2) {
            expected.insert(std::to_string(thread) + "." + std::to_string(i));
        }
    }
    EXPECT_EQ(DisabledRules::load(), expected);
}

}  // namespace
}  // namespace Brimlo
