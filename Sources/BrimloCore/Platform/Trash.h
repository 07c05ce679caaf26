#pragma once

#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Platform/FileIdentity.h"

#include <cstddef>
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

    TrashMove(TrashMove&&) noexcept;
    TrashMove& operator=(TrashMove&&) noexcept;
    TrashMove(const TrashMove&) = delete;
    TrashMove& operator=(const TrashMove&) = delete;
    ~TrashMove();  ///< Undoes the preparation of a move that was not committed.

    /// The item's future path, when the system tells in advance.
    [[nodiscard]] const std::optional<std::string>& destination() const;

    /// Syncs the item's trashinfo file to disk.
    [[nodiscard]] std::expected<void, Error> syncInfo();

    /// Moves the item. Call once. EEXIST means that the place was taken meanwhile and a new move
    /// may be prepared.
    [[nodiscard]] std::expected<TrashedItem, Error> commit();

private:
    friend class TrashGroup;
    struct State;
    explicit TrashMove(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

/// Moves to the Trash that share the folders they open and the syncs of these. One thread.
class TrashGroup {
public:
    TrashGroup();
    TrashGroup(const TrashGroup&) = delete;
    TrashGroup& operator=(const TrashGroup&) = delete;
    ~TrashGroup();

    /// How many moves to prepare before the first is committed; 1 where the system doesn't tell
    /// the destination in advance.
    [[nodiscard]] static std::size_t size();

    /// Finds the item and prepares its place in the Trash. The move must not outlive the group.
    [[nodiscard]] std::expected<TrashMove, Error> prepare(const TrashMove::Request& request);

    /// Syncs the folders that committed moves have changed to disk.
    void sync();

private:
    friend class TrashMove;
    struct Folders;
    std::unique_ptr<Folders> folders_;
};

}  // namespace Brimlo::Platform
