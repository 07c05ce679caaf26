#include "BrimloApp/Lists/AreaRows.h"

#include <algorithm>
#include <ranges>

namespace Brimlo {
namespace {

constexpr std::size_t kMostListed = 8;

}  // namespace

AreaRows::AreaRows(QObject* parent)
    : SourceRows{
          {
           {"area", [](const AreaRow& row) { return shown(row.area); }},
           {"areaCount", [](const AreaRow& row) { return number(row.count); }},
           {"reason", [](const AreaRow& row) { return shown(row.reason); }},
           },
          {&AppModel::unreadableAreasChanged},
          parent
} {}

void AreaRows::refresh() {
    const auto areas =
        source() != nullptr ? source()->unreadableAreas() : std::vector<UnreadableArea>{};
    std::vector<AreaRow> rows;
    for (const UnreadableArea& each : areas | std::views::take(kMostListed)) {
        rows.push_back({.area = each.area, .count = each.count, .reason = each.reason});
    }
    const int moreCount = static_cast<int>(areas.size() - rows.size());
    setRows(std::move(rows));
    if (std::exchange(moreCount_, moreCount) != moreCount) {
        Q_EMIT moreCountChanged();
    }
}

}  // namespace Brimlo
