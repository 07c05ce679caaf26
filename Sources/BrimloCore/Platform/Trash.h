#pragma once

#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Platform/FileIdentity.h"

#include <expected>
#include <memory>
#include <optional>
#include <string>

namespace Brimlo::Platform {

/// The folder that holds the items of the user's home Trash, whether it exists or not.
[[nodiscard]] std::string homeTrash();

/// What came of a move to the Trash.
struct TrashedItem {
    std::optional<std::string> path;  ///< Where it lies now, when the system tells.
    std::optional<std::string>
        warning;  ///< Why it is not what was meant, in the words of a failure.
};

/// The move of one item to the Trash of its volume, made in two steps, so that the caller can
/// write down where the item goes before it goes there.
///
/// A link is moved, not followed. Nothing is ever copied: an item that a rename can't carry there
/// stays where it is, with an error whose description is a lower-case phrase.
class TrashMove {
public:
    struct Request {
        std::string path;       ///< Canonical, its parent free of links.
        FileIdentity identity;  ///< Of the very item that was judged; another is not moved.
        std::string entryID;    ///< Written beside the item, where the Trash has a place for it.
    };

    /// Finds the item and makes its place in the Trash ready. Undone when never committed.
    [[nodiscard]] static std::expected<TrashMove, Error> prepare(const Request& request);

    TrashMove(TrashMove&&) noexcept;
    TrashMove& operator=(TrashMove&&) noexcept;
    TrashMove(const TrashMove&) = delete;
    TrashMove& operator=(const TrashMove&) = delete;
    ~TrashMove();

    /// Where the item will lie, when the system tells beforehand.
    [[nodiscard]] const std::optional<std::string>& destination() const;

    /// Moves the item and waits until the disk knows. Call once. EEXIST means that the place was
    /// taken meanwhile and a new move may be prepared.
    [[nodiscard]] std::expected<TrashedItem, Error> commit();

private:
    struct State;
    explicit TrashMove(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

}  // namespace Brimlo::Platform
