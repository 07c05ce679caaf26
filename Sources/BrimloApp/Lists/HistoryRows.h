#pragma once

#include "BrimloApp/Lists/SourceRows.h"
#include "BrimloCore/Support/HistoryBatch.h"
#include "BrimloCore/Support/Uuid.h"

#include <QtQml/qqmlregistration.h>

#include <chrono>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace Brimlo {

/// A line of the history: a cleanup, or one item of it. What its kind has no use for is empty.
struct HistoryRow {
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

    bool operator==(const HistoryRow&) const = default;

    [[nodiscard]] std::string key() const;
};

/// The cleanups, newest first, each followed by its items when it is expanded.
class HistoryRows : public BRIMLO_SOURCE_ROWS(HistoryRow) {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(Brimlo::AppModel* source READ source WRITE setSource NOTIFY sourceChanged)

public:
    explicit HistoryRows(QObject* parent = nullptr);

    /// Shows or hides the items of a cleanup.
    Q_INVOKABLE void toggleExpanded(int place);
    /// Puts back all that can be of a cleanup.
    Q_INVOKABLE void undo(int place);

Q_SIGNALS:
    void sourceChanged();

private:
    void refresh() override;
    void tellSource() override { Q_EMIT sourceChanged(); }
    void append(const HistoryBatch& batch, std::vector<HistoryRow>& rows) const;

    std::set<Uuid> expanded_;  ///< Batches.
};

}  // namespace Brimlo
