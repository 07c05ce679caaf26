#include "BrimloApp/Analyzer/AreaRows.h"

#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <ranges>
#include <utility>

namespace Brimlo {

namespace {

constexpr std::size_t kMostListed = 8;

}  // namespace

AreaRows::AreaRows()
    : rows_{
          *this,
          {
                {"area", [](const AreaLine& line) { return shown(line.area); }},
                {"areaCount", [](const AreaLine& line) { return number(line.count); }},
                {"reason", [](const AreaLine& line) { return shown(line.reason); }},
                }
} {}

AreaRows::Unseen AreaRows::Unseen::of(const ScanControl& control) {
    return {
        .unreadableCount = static_cast<int>(control.inaccessible().size()),
        .leftOutCount = static_cast<int>(control.otherVolumes().size()),
        .areas = UnreadableFolders::group(control, StoragePaths::home())};
}

void AreaRows::show(Unseen unseen) {
    if (unseen_ == unseen) {
        return;
    }
    unseen_ = std::move(unseen);
    std::vector<AreaLine> lines;
    for (const UnreadableArea& each : unseen_.areas | std::views::take(kMostListed)) {
        lines.push_back({.area = each.area, .count = each.count, .reason = each.reason});
    }
    rows_.set(std::move(lines));
    Q_EMIT unseenChanged();
}

}  // namespace Brimlo
