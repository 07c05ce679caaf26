#include "BrimloApp/Review/PlanReview.h"

#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/Shell/RunInBackground.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloApp/SmartClean/SmartClean.h"
#include "BrimloCore/Cleaner/Cleaner.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <utility>

namespace Brimlo {

namespace {

using Fate = PlanLine::Fate;

QString word(Fate fate) {
    constexpr std::array kWords{"trash", "forGood", "stays"};
    return QString::fromUtf8(kWords.at(static_cast<std::size_t>(fate)));
}

/// `tickOf` looks the tick up, so that a press changes no row.
std::vector<Rows<PlanLine>::Role> roles(std::function<QVariant(const PlanLine&)> tickOf) {
    return {
        {"title",      [](const PlanLine& row) { return shown(row.title); }               },
        {"subtitle",   [](const PlanLine& row) { return shown(row.subtitle); }            },
        {"reason",     [](const PlanLine& row) { return shown(row.reason); }              },
        {"size",       [](const PlanLine& row) { return static_cast<double>(row.size); }  },
        {"fate",       [](const PlanLine& row) { return word(row.fate); }                 },
        {"tick",       std::move(tickOf)                                                  },
        {"itemCount",  [](const PlanLine& row) { return static_cast<int>(row.itemCount); }},
        {"expanded",   [](const PlanLine& row) { return row.expanded; }                   },
        {"isInFolder", [](const PlanLine& row) { return row.isInFolder; }                 },
    };
}

}  // namespace

PlanReview::PlanReview(AppModel& app)
    : app_{app}
    , rows_{*this, roles([this](const PlanLine& row) { return tickWord(row); })} {}

PlanReview::~PlanReview() {
    releaseInBackground(std::move(nodes_));
}

void PlanReview::openSelection() {
    open(
        [selected = app_.smartClean()->selected()](const std::vector<Suggestion>& suggestions) {
            return SmartClean::planOf(suggestions, selected);
        },
        {});
}

void PlanReview::openNodes(std::vector<std::shared_ptr<FileNode>> nodes) {
    std::erase_if(nodes, [](const auto& node) { return node->isAggregate; });
    if (!nodes.empty()) {
        CleanPlan plan = Cleanup::planFor(nodes);
        open([plan = std::move(plan)](const auto&) { return plan.measured(); }, std::move(nodes));
    }
}

void PlanReview::openPlan(std::function<CleanPlan()> planning) {
    open([planning = std::move(planning)](const auto&) { return planning(); }, {});
}

void PlanReview::open(Planning planning, std::vector<std::shared_ptr<FileNode>> nodes) {
    forget();
    nodes_ = std::move(nodes);
    planning_ = std::move(planning);
    isWanted_ = std::make_shared<bool>(true);
    struct Judged {
        CleanPlan plan;
        std::vector<PlanGroup> groups;
    };
    runInBackground(
        this,
        [planning = planning_,
         suggestions = app_.smartClean()->suggestions(),
         cleaner = app_.cleaner()] {
            CleanPlan plan = planning(suggestions);
            const CleanReport rehearsal = cleaner->execute(plan, DisposalMode::trash, true);
            auto groups = PlanGroup::of(plan, suggestions, rehearsal);
            return Judged{.plan = std::move(plan), .groups = std::move(groups)};
        },
        [isWanted = isWanted_](PlanReview& review, Judged judged) {
            if (*isWanted) {
                review.show(std::move(judged.plan), std::move(judged.groups));
            }
        });
}

void PlanReview::show(const CleanReport& rehearsal) {
    if (!planning_) {
        return;
    }
    const auto& suggestions = app_.smartClean()->suggestions();
    CleanPlan plan = planning_(suggestions);
    auto groups = PlanGroup::of(plan, suggestions, rehearsal);
    show(std::move(plan), std::move(groups));
}

void PlanReview::show(CleanPlan plan, std::vector<PlanGroup> groups) {
    *isWanted_ = false;
    plan_ = std::move(plan);
    rows_.set({});  // First, because the ticks of rows are looked up in the groups.
    groups_ = std::move(groups);
    figures_ = {};
    for (PlanGroup& group : groups_) {
        for (std::size_t i = 0; i < group.items.size(); ++i) {
            tick(group, i, group.head.fate != Fate::stays);
        }
    }
    refresh();
    Q_EMIT planChanged();
    Q_EMIT figuresChanged();
    setOpen(true);
}

void PlanReview::close() {
    forget();
    setOpen(false);
}

void PlanReview::confirm() {
    if (!isOpen_ || app_.cleanup()->isCleaning() || figures_.count == 0) {
        return;
    }
    // Closed first, so that no listener can confirm a second time.
    const std::set<std::string> left = unticked();
    const CleanPlan plan = plan_.without(left);
    auto nodes = nodes_;
    close();
    if (nodes.empty()) {
        app_.cleanup()->run(plan);
    } else {
        // With a folder stays what was selected in it.
        std::erase_if(nodes, [&](const std::shared_ptr<FileNode>& node) {
            const FileNode* at = left.empty() ? nullptr : node.get();
            while (at != nullptr && !left.contains(at->path())) {
                at = at->parent();
            }
            return at != nullptr;
        });
        app_.cleanup()->dispose(nodes);
    }
    Q_EMIT confirmed();
}

QString PlanReview::amount() const {
    return words(figures_.amount());
}

QString PlanReview::warning() const {
    return words(figures_.warning());
}

bool PlanReview::has(Fate fate) const {
    return std::ranges::any_of(
        groups_, [&](const PlanGroup& group) { return group.head.fate == fate; });
}

bool PlanReview::hasReviewItems() const {
    return std::ranges::any_of(groups_, [](const PlanGroup& group) {
        return group.head.fate == Fate::trash && group.head.mayBeOwn;
    });
}

int PlanReview::stayingCount() const {
    std::size_t count = 0;
    for (const PlanGroup& group : groups_) {
        count += group.head.fate == Fate::stays ? group.items.size() : 0;
    }
    return static_cast<int>(count);
}

std::set<std::string> PlanReview::unticked() const {
    std::set<std::string> paths;
    for (const PlanGroup& group : groups_) {
        for (std::size_t i = 0; i < group.items.size(); ++i) {
            if (!group.ticks[i]) {
                paths.insert(group.items[i].path);
            }
        }
    }
    return paths;
}

void PlanReview::forget() {
    *isWanted_ = false;
    if (!nodes_.empty()) {
        // After another scan these may be the last references, and a folder takes long to destroy.
        releaseInBackground(std::exchange(nodes_, {}));
    }
    plan_ = CleanPlan{{}};
    planning_ = {};
    rows_.set({});
    groups_.clear();
    figures_ = {};
    expanded_.clear();
    Q_EMIT planChanged();
    Q_EMIT figuresChanged();
}

void PlanReview::refresh() {
    std::vector<PlanLine> rows;
    for (const PlanGroup& group : groups_) {
        rows.push_back(group.head);
        rows.back().expanded = expanded_.contains(group.head.key());
        if (rows.back().expanded) {
            rows.insert(rows.end(), group.items.begin(), group.items.end());
        }
    }
    rows_.set(std::move(rows));
}

QString PlanReview::tickWord(const PlanLine& row) const {
    const PlanGroup& group = groups_[row.group];
    const std::size_t count = row.isInFolder ? 1 : group.items.size();
    const std::size_t ticked = row.isInFolder ? (group.ticks[row.item] ? 1U : 0U) : group.tickCount;
    return ticked == 0       ? QStringLiteral("none")
           : ticked == count ? QStringLiteral("all")
                             : QStringLiteral("some");
}

void PlanReview::tick(PlanGroup& group, std::size_t item, bool isTicked) {
    if (group.ticks[item] == isTicked) {
        return;
    }
    group.ticks[item] = isTicked;
    const PlanLine& line = group.items[item];
    if (isTicked) {
        ++group.tickCount;
        figures_.add(line);
    } else {
        --group.tickCount;
        figures_.remove(line);
    }
}

void PlanReview::toggle(int place) {
    const PlanLine* chosen = rows_.at(place);
    if (chosen == nullptr || chosen->fate == Fate::stays) {
        return;
    }
    PlanGroup& group = groups_[chosen->group];
    int first = place;
    int last = place;
    if (chosen->isInFolder) {
        first -= static_cast<int>(chosen->item) + 1;  // The folder's row changes, too.
        tick(group, chosen->item, !group.ticks[chosen->item]);
    } else {
        last += chosen->expanded ? static_cast<int>(group.items.size()) : 0;
        const bool isTicked = group.tickCount < group.items.size();
        for (std::size_t i = 0; i < group.items.size(); ++i) {
            tick(group, i, isTicked);
        }
    }
    Q_EMIT dataChanged(index(first), index(last));
    Q_EMIT figuresChanged();
}

void PlanReview::toggleExpanded(int place) {
    const PlanLine* chosen = rows_.at(place);
    if (chosen == nullptr || chosen->itemCount == 0) {
        return;
    }
    const std::string key = chosen->key();
    if (expanded_.erase(key) == 0) {
        expanded_.insert(key);
    }
    refresh();
}

void PlanReview::setOpen(bool isOpen) {
    if (isOpen_ != isOpen) {
        isOpen_ = isOpen;
        Q_EMIT isOpenChanged();
    }
}

}  // namespace Brimlo
