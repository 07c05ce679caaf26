#include "BrimloCore/DisabledRules/DisabledRules.h"
#include "BrimloCore/LeftAlone/LeftAlone.h"
#include "BrimloCore/Support/AppConfig.h"
#include "BrimloCoreTests/Cleaner/Child.h"
#include "Support/Proof.h"
#include "Support/TempHome.h"

#include <cstdint>

namespace Brimlo {
namespace {

constexpr int kWriters = 4;
constexpr int kChanges = 100;

/// Window, tool and job change the settings and the lists of what is off or left alone at once.
class AppConfigSharingTest : public Testing::TempHome {
protected:
    static void work(int writer) {
        for (int i = 0; i < kChanges; ++i) {
            static_cast<void>(AppConfig::change([](AppConfig& config) { ++config.staleDays; }));
            const std::string id = std::to_string(writer) + "." + std::to_string(i);
            static_cast<void>(DisabledRules::set(id, true));
            static_cast<void>(LeftAlone::change([&](LeftAlone& list) { list.rules.insert(id); }));
        }
    }
};

TEST_F(AppConfigSharingTest, ProcessesLoseNothing) {
    Testing::inProcesses(kWriters, work);
    constexpr std::int64_t kAll = kWriters * kChanges;
    const std::int64_t lost = kAll - (AppConfig::load().staleDays - AppConfig{}.staleDays) + kAll -
                              std::ssize(DisabledRules::load()) + kAll -
                              std::ssize(LeftAlone::load().value_or(LeftAlone{}).rules);
    EXPECT_EQ(lost, 0);
    Testing::told("changes of the settings by four processes at once", 3 * kAll, lost);
}

}  // namespace
}  // namespace Brimlo
