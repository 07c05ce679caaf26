#include "BrimloApp/Analyzer/AreaRows.h"

#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Shell/Shown.h"

#include <ranges>
#include <utility>

namespace Brimlo {
namespace {

constexpr std::size_t kMostListed = 8;

}  // namespace

AreaRows::AreaRows(Analyzer& analyzer)
    : analyzer_{analyzer}
    , rows_{
          *this,
          {
           {"area", [](const AreaLine& line) { return shown(line.area); }},
           {"areaCount", [](const AreaLine& line) { return number(line.count); }},
           {"reason", [](const AreaLine& line) { return shown(line.reason); }},
           }} {
    connect(&analyzer, &Analyzer::unreadableChanged, this, &AreaRows::refresh);
}

void AreaRows::refresh() {
    const auto& areas = analyzer_.unreadableAreas();
    std::vector<AreaLine> lines;
    for (const UnreadableArea& each : areas | std::views::take(kMostListed)) {
        lines.push_back({.area = each.area, .count = each.count, .reason = each.reason});
    }
    const int moreCount = static_cast<int>(areas.size() - lines.size());
    rows_.set(std::move(lines));
    if (std::exchange(moreCount_, moreCount) != moreCount) {
        Q_EMIT moreCountChanged();
    }
}

}  // namespace Brimlo
