#pragma once

#include "BrimloApp/Shell/Rows.h"
#include "BrimloCore/Journal/JournalEntry.h"
#include "BrimloCore/Support/Uuid.h"

#include <QtQml/qqmlregistration.h>

#include <chrono>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace Brimlo {

class History;

/// A line of the history: a cleanup, or one item of it. What its kind has no use for is empty.
struct HistoryLine {
    enum class Kind { batch, entry };

    Kind kind = Kind::batch;
    Uuid id;  ///< The batch's or the entry's; an entry may have that of its batch.

    std::string title;
    std::chrono::sys_seconds date;
    std::vector<std::string> firstPaths;  ///< Of a batch, two at most.
    std::int64_t itemCount = 0;
    bool restorable = false;
    double size = 0;  ///< Not in whole numbers: what a journal says may add up to anything.
    bool expanded = false;

    std::string path;
    JournalEntry::State state = JournalEntry::State::removed;

    bool operator==(const HistoryLine&) const = default;

    [[nodiscard]] std::string key() const;
};

/// The cleanups, newest first, each followed by its items when it is expanded.
class HistoryRows : public Brimlo::RowList {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

public:
    explicit HistoryRows(History& history);

    /// Shows or hides the items of a cleanup.
    Q_INVOKABLE void toggleExpanded(int place);
    /// Puts back all that can be of a cleanup.
    Q_INVOKABLE void undo(int place);

private:
    void refresh();
    void append(const HistoryBatch& batch, std::vector<HistoryLine>& rows) const;

    History& history_;
    Rows<HistoryLine> rows_;
    std::set<Uuid> expanded_;  ///< Batches.
};

}  // namespace Brimlo
