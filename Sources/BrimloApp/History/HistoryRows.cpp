#include "BrimloApp/History/HistoryRows.h"

#include "BrimloApp/History/History.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Docker/DockerSnapshot.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <utility>

namespace Brimlo {

namespace {

using Line = HistoryLine;
using Kind = Line::Kind;

constexpr std::size_t kMostPaths = 2;
constexpr QLatin1String kBySize{"Size"};

QString word(Kind kind) {
    return kind == Kind::batch ? QStringLiteral("batch") : QStringLiteral("entry");
}

QString stateWordOf(const Line& row) {
    constexpr std::array kWords{"inTrash", "restored", "gone", "removed"};
    return row.kind == Kind::entry
               ? QString::fromUtf8(kWords.at(static_cast<std::size_t>(row.state)))
               : QString{};
}

QString placeOf(const std::string& path) {
    return shown(isPseudoPath(path) ? DockerObject::words(path) : UserRules::tildeForm(path));
}

QString summaryOf(const Line& row) {
    QStringList paths;
    for (const std::string& path : row.firstPaths) {
        paths.append(placeOf(path));
    }
    return paths.join(QStringLiteral(", "));
}

int otherCountOf(const Line& row) {
    const auto others = row.itemCount - static_cast<std::int64_t>(row.firstPaths.size());
    return static_cast<int>(std::max<std::int64_t>(others, 0));
}

Line headOf(const HistoryBatch& batch) {
    Line row{.kind = Kind::batch, .id = batch.id};
    const std::string& first = batch.items.front().originalPath;
    const bool isOneOfDocker = batch.items.size() == 1 && isPseudoPath(first);
    row.title = isOneOfDocker ? DockerObject::words(first) : batch.title();
    row.date = batch.date();
    row.itemCount = static_cast<std::int64_t>(batch.items.size());
    row.restorable = batch.restorableCount() > 0;
    for (const JournalEntry& entry : batch.items) {
        row.size += static_cast<double>(entry.size);
        if (row.firstPaths.size() < kMostPaths) {
            row.firstPaths.push_back(entry.originalPath);
        }
    }
    return row;
}

Line rowOf(const JournalEntry& entry) {
    Line row{.kind = Kind::entry, .id = entry.id};
    row.date = entry.date;
    row.size = static_cast<double>(entry.size);
    row.path = entry.originalPath;
    row.state = entry.state();
    row.restorable = entry.isRestorable();
    return row;
}

std::vector<Rows<Line>::Role> roles() {
    return {
        {"kind",       [](const Line& row) { return word(row.kind); }                 },
        {"title",      [](const Line& row) { return shown(row.title); }               },
        {"date",       [](const Line& row) { return dateTime(row.date); }             },
        {"summary",    summaryOf                                                      },
        {"otherCount", otherCountOf                                                   },
        {"restorable", [](const Line& row) { return row.restorable; }                 },
        {"itemCount",  [](const Line& row) { return static_cast<int>(row.itemCount); }},
        {"size",       [](const Line& row) { return row.size; }                       },
        {"expanded",   [](const Line& row) { return row.expanded; }                   },
        {"path",       [](const Line& row) { return placeOf(row.path); }              },
        {"state",      stateWordOf                                                    },
    };
}

}  // namespace

std::string HistoryLine::key() const {
    std::string key(1, kind == Kind::batch ? 'b' : 'e');
    key.append(id.bytes.begin(), id.bytes.end());
    return key;
}

HistoryRows::HistoryRows(History& history)
    : history_{history}
    , rows_{*this, roles()}
    , order_{{QStringLiteral("Date"), kBySize}} {
    connect(&order_, &RowOrder::changed, this, &HistoryRows::refresh);
    connect(&history, &History::journalChanged, this, &HistoryRows::refresh);
}

void HistoryRows::toggleExpanded(int place) {
    const Line* chosen = rows_.at(place);
    if (chosen == nullptr || chosen->kind != Kind::batch) {
        return;
    }
    if (expanded_.erase(chosen->id) == 0) {
        expanded_.insert(chosen->id);
    }
    refresh();
}

void HistoryRows::undo(int place) {
    const Line* chosen = rows_.at(place);
    if (chosen == nullptr) {
        return;
    }
    if (chosen->kind == Kind::entry) {
        history_.undoAll({chosen->id});
        return;
    }
    const auto& batches = history_.batches();
    const auto found = std::ranges::find(batches, chosen->id, &HistoryBatch::id);
    if (found != batches.end()) {
        history_.undoBatch(*found);
    }
}

void HistoryRows::refresh() {
    struct Clean {
        Line head;
        const HistoryBatch* batch;
    };
    std::vector<Clean> cleans;  // Newest first.
    for (const HistoryBatch& batch : history_.batches()) {
        cleans.push_back({headOf(batch), &batch});
    }
    if (order_.key() == kBySize) {
        std::ranges::stable_sort(
            cleans, std::greater{}, [](const Clean& clean) { return clean.head.size; });
    }
    if (order_.ascending()) {
        std::ranges::reverse(cleans);
    }
    std::vector<Line> lines;
    for (Clean& clean : cleans) {
        lines.push_back(std::move(clean.head));
        if (expanded_.contains(clean.batch->id)) {
            lines.back().expanded = true;
            std::ranges::transform(clean.batch->items, std::back_inserter(lines), rowOf);
        }
    }
    rows_.set(std::move(lines));
}

}  // namespace Brimlo
