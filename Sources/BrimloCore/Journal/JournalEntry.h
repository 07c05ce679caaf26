#pragma once

#include "BrimloCore/Support/Json.h"
#include "BrimloCore/Support/Uuid.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <vector>

namespace Brimlo {

/// The record of one disposal.
struct JournalEntry {
    Uuid id;
    std::chrono::sys_seconds date;         ///< When the item was disposed of.
    std::string originalPath;              ///< As the plan spelled it; for Docker the pseudo path.
    std::optional<std::string> trashPath;  ///< Where the Trash put it; absent for Docker.
    std::int64_t size = 0;                 ///< Allocated bytes, as the plan had them.
    std::optional<std::string> ruleID;     ///< The rule that proposed it.
    bool undone = false;                   ///< It was restored.
    bool purgedFromTrash = false;          ///< It is known to have left the Trash.
    std::optional<std::string> trashID;    ///< Its identity in the Trash: "device:inode".
    Uuid batchID;                          ///< Shared by all entries of one clean.

    bool operator==(const JournalEntry&) const = default;

    /// The state of the item: in the Trash, restored, gone from the Trash by other means, or never
    /// there because it was deleted for good, as Docker's objects are.
    enum class State { inTrash, restored, gone, removed };
    [[nodiscard]] State state() const;

    [[nodiscard]] bool isRestorable() const { return state() == State::inTrash; }

    /// The record of a disposal happening now; `id` and `date` are set here.
    struct Disposal {
        std::string originalPath;
        std::optional<std::string> trashPath;
        std::int64_t size = 0;
        std::optional<std::string> ruleID;
        std::optional<std::string> trashID;
        Uuid batchID;
    };
    [[nodiscard]] static JournalEntry make(Disposal disposal);

    /// The entry in a JSON object. An entry without "batchID" is a batch of its own.
    [[nodiscard]] static std::expected<JournalEntry, std::string> decode(const Json::Value& value);

    /// Appends the entry's JSON object to `out`, keys in the order of the fields, absent ones
    /// left out.
    void encode(std::string& out) const;
};

/// One cleanup, as the history shows it.
struct HistoryBatch {
    Uuid id;                          ///< The batch id of its entries.
    std::vector<JournalEntry> items;  ///< Newest first.

    /// The latest date among the items; the distant past when there are none.
    [[nodiscard]] std::chrono::sys_seconds date() const;

    /// How many items can still be put back, as far as the journal knows.
    [[nodiscard]] std::size_t restorableCount() const;

    /// The name of the only item, or the number of items, as in "12 items".
    [[nodiscard]] std::string title() const;

    /// The batches of journal entries that are given newest first, by their newest entry.
    [[nodiscard]] static std::vector<HistoryBatch> group(const std::vector<JournalEntry>& entries);
};

}  // namespace Brimlo
