#include "BrimloApp/Review/PlanReview.h"

#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/Shell/RunInBackground.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloApp/SmartClean/SmartClean.h"
#include "BrimloCore/Cleaner/ItemGroups.h"
#include "BrimloCore/Docker/DockerSnapshot.h"
#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace Brimlo {

namespace {

/// The suggestion and the item of a path.
struct Origin {
    const Suggestion* suggestion;
    const SuggestionItem* item;
};
using Origins = std::unordered_map<std::string_view, Origin>;

Origins originsIn(const std::vector<Suggestion>& suggestions) {
    Origins origins;
    for (const Suggestion& suggestion : suggestions) {
        for (const SuggestionItem& item : suggestion.items) {
            origins.try_emplace(item.path, Origin{.suggestion = &suggestion, .item = &item});
        }
    }
    return origins;
}

PlanLine lineOf(const CleanItem& item, const Origins& origins) {
    const bool isDocker = isPseudoPath(item.path);
    PlanLine row{
        .path = item.path,
        .title = isDocker ? DockerObject::words(item.path) : item.path,
        .subtitle = {},
        .size = item.size};
    if (const auto known = origins.find(item.path); known != origins.end()) {
        const auto& [suggestion, found] = known->second;
        // An item that will be gone for good is called by its own name.
        row.title = isDocker ? found->detail.value_or(row.title) : suggestion->name;
        row.subtitle = isDocker ? suggestion->name + " · " + found->subtitle.value_or("")
                                : found->subtitle.value_or(item.path);
    }
    return row;
}

std::vector<PlanLine> linesOf(
    const CleanPlan& plan,
    const std::vector<Suggestion>& suggestions,
    const std::set<std::string>& expanded) {
    const Origins origins = originsIn(suggestions);
    std::vector<PlanLine> rows;
    for (const ItemGroup& group : grouped(plan.items())) {
        PlanLine row = lineOf(plan.items()[group.items.front()], origins);
        if (!group.isFolder()) {
            rows.push_back(std::move(row));
            continue;
        }
        row.path = group.folder;
        row.subtitle = group.folder;
        row.size = group.size;
        row.itemCount = static_cast<std::int64_t>(group.items.size());
        row.expanded = expanded.contains(row.key());
        rows.push_back(row);
        if (row.expanded) {
            for (const std::size_t place : group.items) {
                PlanLine inner = lineOf(plan.items()[place], origins);
                inner.title = inner.subtitle == inner.path ? std::string{Path::name(inner.path)}
                                                           : std::move(inner.subtitle);
                inner.subtitle.clear();
                inner.isInFolder = true;
                rows.push_back(std::move(inner));
            }
        }
    }
    return rows;
}

std::vector<Rows<PlanLine>::Role> roles() {
    return {
        {"title",      [](const PlanLine& row) { return shown(row.title); }               },
        {"subtitle",   [](const PlanLine& row) { return shown(row.subtitle); }            },
        {"size",       [](const PlanLine& row) { return static_cast<double>(row.size); }  },
        {"isDocker",   [](const PlanLine& row) { return isPseudoPath(row.path); }         },
        {"itemCount",  [](const PlanLine& row) { return static_cast<int>(row.itemCount); }},
        {"expanded",   [](const PlanLine& row) { return row.expanded; }                   },
        {"isInFolder", [](const PlanLine& row) { return row.isInFolder; }                 },
    };
}

}  // namespace

PlanReview::PlanReview(AppModel& app)
    : app_{app}
    , rows_{*this, roles()} {}

PlanReview::~PlanReview() {
    releaseInBackground(std::move(nodes_));
}

void PlanReview::openSelection() {
    open(app_.smartClean()->currentPlan(), {});
}

void PlanReview::openNodes(std::vector<std::shared_ptr<FileNode>> nodes) {
    std::erase_if(nodes, [](const auto& node) { return node->isAggregate; });
    if (!nodes.empty()) {
        CleanPlan plan = Cleanup::planFor(nodes);
        open(std::move(plan), std::move(nodes));
    }
}

void PlanReview::open(CleanPlan plan, std::vector<std::shared_ptr<FileNode>> nodes) {
    setPlan(std::move(plan), std::move(nodes));
    setOpen(true);
}

void PlanReview::close() {
    setPlan(CleanPlan{{}}, {});
    setOpen(false);
}

void PlanReview::confirm() {
    if (!isOpen_ || app_.cleanup()->isCleaning() || plan_.items().empty()) {
        return;
    }
    // Closed first, so that no listener can confirm a second time.
    CleanPlan plan = plan_;
    const auto nodes = nodes_;
    close();
    if (nodes.empty()) {
        app_.cleanup()->run(plan);
    } else {
        app_.cleanup()->dispose(nodes);
    }
    Q_EMIT confirmed();
}

int PlanReview::itemCount() const {
    return static_cast<int>(plan_.items().size());
}

double PlanReview::totalBytes() const {
    return static_cast<double>(plan_.totalBytes());
}

double PlanReview::freedNow() const {
    return static_cast<double>(plan_.finalBytes());
}

bool PlanReview::hasReviewItems() const {
    return std::ranges::any_of(plan_.items(), [](const CleanItem& item) {
        return !isPseudoPath(item.path) && item.risk.value_or(Risk::review) == Risk::review;
    });
}

void PlanReview::setPlan(CleanPlan plan, std::vector<std::shared_ptr<FileNode>> nodes) {
    std::swap(nodes_, nodes);
    if (!nodes.empty()) {
        // After another scan these may be the last references, and a folder takes long to destroy.
        releaseInBackground(std::move(nodes));
    }
    if (plan_ != plan) {
        plan_ = std::move(plan);
        expanded_.clear();
        refresh();
        Q_EMIT planChanged();
    }
}

void PlanReview::refresh() {
    rows_.set(linesOf(plan_, app_.smartClean()->suggestions(), expanded_));
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
