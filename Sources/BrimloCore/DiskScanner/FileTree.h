#pragma once

#include "BrimloCore/DiskScanner/FileNode.h"
#include "BrimloCore/Support/Uuid.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <mutex>
#include <span>
#include <string_view>

namespace Brimlo {

/// The nodes of one walk and their names, in few large pieces of memory: a disk has hundreds of
/// thousands of them. Nodes are made by any thread, and live as long as the tree.
class FileTree : public std::enable_shared_from_this<FileTree> {
public:
    /// What is known of an entry when its node is made.
    struct Entry {
        std::string_view name;       ///< Without a parent the absolute path. Copied.
        FileNode* parent = nullptr;  ///< Which gets its children by `setChildren`.
        std::int64_t size = 0;
        std::int64_t fileCount = 0;
        std::chrono::sys_seconds modified;
    };

    /// Makes many nodes with one piece of memory.
    class Batch {
    public:
        /// For so many nodes, with names of so many bytes together.
        Batch(FileTree& tree, std::size_t nodes, std::size_t nameBytes);

        FileNode& add(const Entry& entry);

    private:
        FileTree& tree_;
        std::byte* node_;
        char* name_;
    };

    FileTree() = default;
    FileTree(const FileTree&) = delete;
    FileTree& operator=(const FileTree&) = delete;
    FileTree(FileTree&&) = delete;
    FileTree& operator=(FileTree&&) = delete;
    ~FileTree() = default;

    FileNode& add(const Entry& entry) { return Batch{*this, 1, entry.name.size()}.add(entry); }

    /// Gives a node these children, whose parent it is, and makes it a directory.
    void setChildren(FileNode& folder, std::span<FileNode* const> children);

private:
    friend class FileNode;

    [[nodiscard]] std::byte* allocate(std::size_t bytes, std::size_t alignment);
    [[nodiscard]] std::string_view copied(std::string_view text);

    Uuid salt_ = Uuid::random();  ///< In the ids of the nodes.
    std::mutex lock_;
    std::pmr::monotonic_buffer_resource memory_;  // guarded by lock_
};

}  // namespace Brimlo
