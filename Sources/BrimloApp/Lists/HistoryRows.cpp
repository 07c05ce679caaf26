#include "BrimloApp/Lists/HistoryRows.h"

#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Docker/DockerObject.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <QtCore/QDateTime>
#include <QtCore/QStringList>

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace Brimlo {
namespace {

using Row = HistoryRow;
using Kind = Row::Kind;

constexpr std::size_t kMostPaths = 2;

QString word(const Kind kind) {
    return kind == Kind::batch ? QStringLiteral("batch") : QStringLiteral("entry");
}

QString stateWordOf(const Row& row) {
    constexpr std::array kWords{"inTrash", "restored", "gone", "removed"};
    return row.kind == Kind::entry
               ? QString::fromUtf8(kWords.at(static_cast<std::size_t>(row.state)))
               : QString{};
}

QDateTime dateOf(const Row& row) {
    return QDateTime::fromSecsSinceEpoch(row.date.time_since_epoch().count());
}

QString placeOf(const std::string& path) {
    return shown(isPseudoPath(path) ? DockerObject::words(path) : UserRules::tildeForm(path));
}

QString summaryOf(const Row& row) {
    QStringList paths;
    for (const std::string& path : row.firstPaths) {
        paths.append(placeOf(path));
    }
    return paths.join(QStringLiteral(", "));
}

int otherCountOf(const Row& row) {
    const auto others = row.itemCount - static_cast<std::int64_t>(row.firstPaths.size());
    return static_cast<int>(std::max<std::int64_t>(others, 0));
}

Row headOf(const HistoryBatch& batch) {
    Row row{.kind = Kind::batch, .id = batch.id};
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

Row rowOf(const JournalEntry& entry) {
    Row row{.kind = Kind::entry, .id = entry.id};
    row.date = entry.date;
    row.size = static_cast<double>(entry.size);
    row.path = entry.originalPath;
    row.state = entry.state();
    return row;
}

std::vector<HistoryRows::Role> roles() {
    return {
        {"kind",       [](const Row& row) { return word(row.kind); }                 },
        {"title",      [](const Row& row) { return shown(row.title); }               },
        {"date",       dateOf                                                        },
        {"summary",    summaryOf                                                     },
        {"otherCount", otherCountOf                                                  },
        {"restorable", [](const Row& row) { return row.restorable; }                 },
        {"itemCount",  [](const Row& row) { return static_cast<int>(row.itemCount); }},
        {"size",       [](const Row& row) { return row.size; }                       },
        {"expanded",   [](const Row& row) { return row.expanded; }                   },
        {"path",       [](const Row& row) { return placeOf(row.path); }              },
        {"state",      stateWordOf                                                   },
    };
}

}  // namespace

std::string HistoryRow::key() const {
    std::string key(1, kind == Kind::batch ? 'b' : 'e');
    key.append(id.bytes.begin(), id.bytes.end());
    return key;
}

HistoryRows::HistoryRows(QObject* parent)
    : SourceRows{roles(), {&AppModel::journalChanged}, parent} {}

void HistoryRows::toggleExpanded(const int place) {
    const Row* const chosen = row(place);
    if (chosen == nullptr || chosen->kind != Kind::batch) {
        return;
    }
    if (expanded_.erase(chosen->id) == 0) {
        expanded_.insert(chosen->id);
    }
    refresh();
}

void HistoryRows::undo(const int place) {
    const Row* const chosen = row(place);
    if (chosen == nullptr || chosen->kind != Kind::batch || source() == nullptr) {
        return;
    }
    const auto& batches = source()->historyBatches();
    const auto found = std::ranges::find(batches, chosen->id, &HistoryBatch::id);
    if (found != batches.end()) {
        source()->undoBatch(*found);
    }
}

void HistoryRows::refresh() {
    std::vector<Row> rows;
    if (source() != nullptr) {
        for (const HistoryBatch& batch : source()->historyBatches()) {
            append(batch, rows);
        }
    }
    setRows(std::move(rows));
}

void HistoryRows::append(const HistoryBatch& batch, std::vector<Row>& rows) const {
    rows.push_back(headOf(batch));
    if (expanded_.contains(batch.id)) {
        rows.back().expanded = true;
        std::ranges::transform(batch.items, std::back_inserter(rows), rowOf);
    }
}

}  // namespace Brimlo
