#pragma once

#include "BrimloCore/Support/Uuid.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

/// One entry of a scanned tree.
///
/// A parent owns its children; holding the root keeps the whole tree. Built by one thread, then
/// read and changed by another; never by two at once.
class FileNode : public std::enable_shared_from_this<FileNode> {
public:
    enum class SortKey { size, name, modified, items };
    static constexpr std::array kAllSortKeys{
        SortKey::size, SortKey::name, SortKey::modified, SortKey::items};

    enum class SortOrder { ascending, descending };

    /// The key's word for the screen, also its id: "Size", "Name", "Modified" or "Items".
    [[nodiscard]] static std::string_view rawValue(SortKey key);
    [[nodiscard]] static std::optional<SortKey> sortKeyFromRawValue(std::string_view text);

    FileNode() = default;
    FileNode(const FileNode&) = delete;
    FileNode& operator=(const FileNode&) = delete;
    FileNode(FileNode&&) = delete;
    FileNode& operator=(FileNode&&) = delete;

    /// Destroys the tree below level by level, however deep it is.
    ~FileNode();

    const Uuid id = Uuid::random();
    std::string name;                   ///< Last path component, or the label of an aggregate.
    std::string path;                   ///< Absolute; on an aggregate that of the folder around it.
    std::int64_t size = 0;              ///< Allocated bytes of this entry and all below it.
    bool isDirectory = false;           ///< True for scanned directories alone.
    bool isAggregate = false;           ///< Stands for merged children.
    std::chrono::sys_seconds modified;  ///< On an aggregate the latest of the merged.
    std::int64_t fileCount = 0;         ///< Files below; 1 for a file.
    std::optional<std::vector<std::shared_ptr<FileNode>>>
        children;                    ///< Absent on files and aggregates.
    std::weak_ptr<FileNode> parent;  ///< Empty on the root and after `remove`.

    /// The children in another order; the stored one is unchanged. A descending list is the
    /// ascending one reversed, ties included. Names compare by the user's language, ignoring case.
    [[nodiscard]] std::vector<std::shared_ptr<FileNode>> sortedChildren(
        SortKey key, SortOrder order) const;

    /// Removes this node from the tree and subtracts its size and count from the nodes above. Does
    /// nothing on a root.
    void remove();
};

}  // namespace Brimlo
