#pragma once

#include "BrimloCore/Support/Uuid.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

class FileTree;

/// One entry of a scanned tree, or one file of a list.
///
/// Lives in a `FileTree`, which a shared pointer to any of its nodes keeps. Built by the threads of
/// a walk, then read and changed by one thread.
class FileNode {
public:
    enum class SortKey { size, name, modified, items };
    static constexpr std::array kAllSortKeys{
        SortKey::size, SortKey::name, SortKey::modified, SortKey::items};

    enum class SortOrder { ascending, descending };

    /// The key's word for the screen, also its id: "Size", "Name", "Modified" or "Items".
    [[nodiscard]] static std::string_view rawValue(SortKey key);
    [[nodiscard]] static std::optional<SortKey> sortKeyFromRawValue(std::string_view text);

    FileNode(const FileNode&) = delete;
    FileNode& operator=(const FileNode&) = delete;
    FileNode(FileNode&&) = delete;
    FileNode& operator=(FileNode&&) = delete;
    ~FileNode() = default;

    std::int64_t size = 0;              ///< Allocated bytes of this entry and all below it.
    std::int64_t fileCount = 0;         ///< Files below; 1 for a file.
    std::chrono::sys_seconds modified;  ///< On an aggregate the latest of the merged.
    bool isDirectory = false;           ///< True for scanned directories alone.
    bool isAggregate = false;           ///< Stands for merged children.

    /// Tells it from every other node.
    [[nodiscard]] Uuid id() const;

    /// The last component of the path, or the label of an aggregate.
    [[nodiscard]] std::string_view name() const;

    /// Absolute; on an aggregate that of the folder around it. Put together from the names above.
    [[nodiscard]] std::string path() const;

    /// Empty on files and aggregates.
    [[nodiscard]] std::span<FileNode* const> children() const { return {children_, childCount_}; }

    /// The folder around it; null on the root and after `remove`.
    [[nodiscard]] FileNode* parent() const { return parent_; }

    /// A pointer that keeps the tree.
    [[nodiscard]] std::shared_ptr<FileNode> shared();

    /// Sorts nodes. A descending list is the ascending one reversed, ties included. Names compare
    /// by the user's language, ignoring case.
    static void sort(std::vector<std::shared_ptr<FileNode>>& nodes, SortKey key, SortOrder order);
    /// The children in another order; the stored one is unchanged.
    [[nodiscard]] std::vector<std::shared_ptr<FileNode>> sortedChildren(
        SortKey key, SortOrder order) const;

    /// Removes this node from the folder around it and subtracts its size and count from the nodes
    /// above. It keeps its path. Does nothing on a root.
    void remove();

private:
    friend class FileTree;
    FileNode(FileTree& tree, FileNode* parent, std::string_view text)
        : tree_{&tree}
        , parent_{parent}
        , text_{text.data()}
        , textLength_{static_cast<std::uint32_t>(text.size())} {}

    /// The name; without a parent the whole path.
    [[nodiscard]] std::string_view text() const { return {text_, textLength_}; }

    FileTree* tree_;
    FileNode* parent_;
    FileNode** children_ = nullptr;
    const char* text_;
    std::uint32_t textLength_;
    std::uint32_t childCount_ = 0;
};

}  // namespace Brimlo
