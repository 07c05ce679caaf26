#include "BrimloCore/DiskScanner/FileNode.h"

#include <gtest/gtest.h>

namespace Brimlo {
namespace {

using Nodes = std::vector<std::shared_ptr<FileNode>>;

std::shared_ptr<FileNode> node(
    const std::string& name, std::int64_t size, std::int64_t fileCount = 1) {
    auto node = std::make_shared<FileNode>();
    node->name = name;
    node->size = size;
    node->fileCount = fileCount;
    return node;
}

/// A folder around some nodes, with their sums.
std::shared_ptr<FileNode> folder(const std::string& name, Nodes children) {
    auto folder = node(name, 0, 0);
    folder->isDirectory = true;
    for (const auto& child : children) {
        child->parent = folder;
        folder->size += child->size;
        folder->fileCount += child->fileCount;
    }
    folder->children = std::move(children);
    return folder;
}

TEST(FileNodeTest, LeavesTheTreeWithItsBytesAndFiles) {
    const auto leaf = node("leaf", 5);
    const auto twin = node("leaf", 5);
    const auto rest = node("rest", 40, 4);
    rest->isAggregate = true;
    const auto inner = folder("inner", {leaf, twin, rest});
    const auto outer = folder("outer", {node("other", 100), inner});
    const auto root = folder("root", {outer});
    const auto sums = [&] {
        std::string text;
        for (const auto& folder : {root, outer, inner}) {
            text += std::to_string(folder->size) + "/" + std::to_string(folder->fileCount) + " ";
        }
        return text;
    };
    ASSERT_EQ(sums(), "150/7 150/7 50/6 ");
    leaf->remove();
    EXPECT_EQ(sums(), "145/6 145/6 45/5 ");
    EXPECT_EQ(*inner->children, (Nodes{twin, rest})) << "identity counts, not the name";
    rest->remove();
    EXPECT_EQ(sums(), "105/2 105/2 5/1 ");
}

}  // namespace
}  // namespace Brimlo
