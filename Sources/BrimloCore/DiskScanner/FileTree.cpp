#include "BrimloCore/DiskScanner/FileTree.h"

#include <algorithm>
#include <new>
#include <type_traits>

namespace Brimlo {

// The memory is freed as a whole.
static_assert(std::is_trivially_destructible_v<FileNode>);

FileTree::Batch::Batch(FileTree& tree, std::size_t nodes, std::size_t nameBytes)
    : tree_{tree}
    , node_{tree.allocate(nodes * sizeof(FileNode) + nameBytes, alignof(FileNode))}
    , name_{reinterpret_cast<char*>(node_ + nodes * sizeof(FileNode))} {}

FileNode& FileTree::Batch::add(const Entry& entry) {
    const std::string_view text{name_, entry.name.size()};
    name_ = std::ranges::copy(entry.name, name_).out;
    auto* const node = new (node_) FileNode{tree_, entry.parent, text};
    node_ += sizeof(FileNode);
    node->size = entry.size;
    node->fileCount = entry.fileCount;
    node->modified = entry.modified;
    return *node;
}

void FileTree::setChildren(FileNode& folder, std::span<FileNode* const> children) {
    auto* const bytes = allocate(children.size_bytes(), alignof(FileNode*));
    folder.children_ = reinterpret_cast<FileNode**>(bytes);
    std::ranges::uninitialized_copy(children, std::span{folder.children_, children.size()});
    folder.childCount_ = static_cast<std::uint32_t>(children.size());
    folder.isDirectory = true;
}

std::string_view FileTree::copied(std::string_view text) {
    char* const copy = reinterpret_cast<char*>(allocate(text.size(), 1));
    std::ranges::copy(text, copy);
    return {copy, text.size()};
}

std::byte* FileTree::allocate(std::size_t bytes, std::size_t alignment) {
    const std::lock_guard guard{lock_};
    return static_cast<std::byte*>(memory_.allocate(bytes, alignment));
}

}  // namespace Brimlo
