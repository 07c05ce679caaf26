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

/// The result of a move to the Trash.
struct TrashedItem {
    std::optional<std::string> path;  ///< Its path in the Trash, when the system tells.
    std::optional<std::string>
        warning;  ///< Why it is not the expected item, in the words of a failure.
};

/// The move of one item to the Trash of its volume, in two steps, so that the caller can record the
/// destination before the item moves.
///
/// A symlink is moved, not followed. Nothing is ever copied: an item that a rename can't move stays
/// where it is, with an error whose description is a lower-case phrase.
class TrashMove {
public:
    struct Request {
        std::string path;       ///< Canonical, its parent free of symlinks.
        FileIdentity identity;  ///< Of the item that was judged; another is not moved.
        std::string entryID;    ///< Written into its trashinfo file, where the Trash has one.
    };

    /// Finds the item and prepares its place in the Trash. Undone when never committed.
    [[nodiscard]] static std::expected<TrashMove, Error> prepare(const Request& request);

    TrashMove(TrashMove&&) noexcept;
    TrashMove& operator=(TrashMove&&) noexcept;
    TrashMove(const TrashMove&) = delete;
    TrashMove& operator=(const TrashMove&) = delete;
    ~TrashMove();

    /// The item's future path, when the system tells in advance.
    [[nodiscard]] const std::optional<std::string>& destination() const;

    /// Moves the item and syncs the folders. Call once. EEXIST means that the place was taken
    /// meanwhile and a new move may be prepared.
    [[nodiscard]] std::expected<TrashedItem, Error> commit();

private:
    struct State;
    explicit TrashMove(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

}  // namespace Brimlo::Platform
