#pragma once

#include "BrimloApp/Shell/RowOrder.h"
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

/// A row of the history: a clean, or one item of it. Fields that a kind does not use are empty.
struct HistoryLine {
    enum class Kind { batch, entry };

    Kind kind = Kind::batch;
    Uuid id;  ///< The id of the batch or of the entry; an entry may have the id of its batch.

    std::string title;
    std::chrono::sys_seconds date;
    std::vector<std::string> firstPaths;  ///< Of a batch, at most two.
    std::int64_t itemCount = 0;
    bool restorable = false;
    double size = 0;  ///< Not an integer: the sizes in a journal may add up to any number.
    bool expanded = false;

    std::string path;
    JournalEntry::State state = JournalEntry::State::removed;

    bool operator==(const HistoryLine&) const = default;

    [[nodiscard]] std::string key() const;
};

/// The cleans, sorted, each followed by its items if expanded.
class HistoryRows : public Brimlo::RowList {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    Q_PROPERTY(Brimlo::RowOrder* order READ order CONSTANT)

public:
    explicit HistoryRows(History& history);

    /// By date or by size.
    [[nodiscard]] RowOrder* order() { return &order_; }

    /// Expands or collapses a clean.
    Q_INVOKABLE void toggleExpanded(int place);
    /// Restores a clean, as far as possible, or one item of it.
    Q_INVOKABLE void undo(int place);

private:
    void refresh();

    History& history_;
    Rows<HistoryLine> rows_;
    RowOrder order_;
    std::set<Uuid> expanded_;  ///< Ids of batches.
};

}  // namespace Brimlo
