#include "BrimloCore/DisabledRules/DisabledRules.h"
#include "BrimloCore/Support/AppConfig.h"
#include "BrimloCoreTests/Cleaner/Child.h"
#include "Support/Proof.h"
#include "Support/TempHome.h"

#include <cstdint>

namespace Brimlo {
namespace {

constexpr int kWriters = 4;
constexpr int kChanges = 100;

/// Window, tool and job change the settings and the list of the rules that are off at once.
class AppConfigSharingTest : public Testing::TempHome {
protected:
    static void work(int writer) {
        for (int i = 0; i < kChanges; ++i) {
            static_cast<void>(AppConfig::change([](AppConfig& config) { ++config.staleDays; }));
            const std::string id = std::to_string(writer) + "." + std::to_string(i);
            static_cast<void>(DisabledRules::set(id, true));
        }
    }
};

TEST_F(AppConfigSharingTest, ProcessesLoseNothing) {
    Testing::inProcesses(kWriters, work);
    constexpr std::int64_t kAll = kWriters * kChanges;
    const std::int64_t lost = kAll - (AppConfig::load().staleDays - AppConfig{}.staleDays) + kAll -
                              std::ssize(DisabledRules::load());
    EXPECT_EQ(lost, 0);
    Testing::told("changes of the settings by four processes at once", 2 * kAll, lost);
}

}  // namespace
}  // namespace Brimlo
