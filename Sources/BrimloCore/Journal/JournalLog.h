#pragma once

#include "BrimloCore/Journal/JournalEntry.h"
#include "BrimloCore/Models/Error.h"

#include <expected>
#include <string>
#include <vector>

namespace Brimlo {

/// What the journal's file doesn't hold yet: a file beside it that only grows, so that a change
/// costs the same however long the journal is. JSON objects, one a line.
///
/// Call with the journal's lock held. A line that was torn by a power cut is skipped: what it
/// should have said shows in the Trash.
class JournalLog {
public:
    enum class Kind {
        leaves,   ///< The entry's item is about to go to the Trash.
        returns,  ///< It is about to come back.
        added,    ///< The journal has this entry now.
        changed,  ///< The journal's entry of this id is this one now.
    };

    struct Line {
        Kind kind = Kind::added;
        JournalEntry entry;
    };

    /// Nothing is read yet.
    explicit JournalLog(std::string path);

    /// All lines, in the order in which they were appended; none when there is no file.
    [[nodiscard]] std::expected<std::vector<Line>, Error> read() const;

    /// `synced` lines are on disk at the return. `written` ones survive the end of the process.
    enum class Durability { synced, written };

    /// Appends a line for each entry. A failure leaves the file as it was.
    [[nodiscard]] std::expected<void, Error> append(
        Kind kind, const std::vector<JournalEntry>& entries, Durability durability) const;

    /// Whether a line could be appended now.
    [[nodiscard]] std::expected<void, Error> checkWritable() const;

    /// Removes the file, for example because the journal's file holds all of it.
    [[nodiscard]] std::expected<void, Error> remove() const;

private:
    std::string path_;
};

}  // namespace Brimlo
