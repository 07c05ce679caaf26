#include "BrimloCore/DiskScanner/FileNode.h"

#include <gtest/gtest.h>

namespace Brimlo {
namespace {

using Nodes = std::vector<std::shared_ptr<FileNode>>;
using SortKey = FileNode::SortKey;
using SortOrder = FileNode::SortOrder;

struct Fields {
    std::string name;
    std::int64_t size = 0;
    int modified = 0;
    std::int64_t fileCount = 1;
};

std::shared_ptr<FileNode> node(const Fields& fields) {
    auto node = std::make_shared<FileNode>();
    node->name = fields.name;
    node->size = fields.size;
    node->modified = std::chrono::sys_seconds{std::chrono::seconds{fields.modified}};
    node->fileCount = fields.fileCount;
    return node;
}

/// A folder around some nodes, with their sums.
std::shared_ptr<FileNode> folder(const std::string& name, Nodes children) {
    auto folder = node({.name = name, .fileCount = 0});
    folder->isDirectory = true;
    for (const auto& child : children) {
        child->parent = folder;
        folder->size += child->size;
        folder->fileCount += child->fileCount;
    }
    folder->children = std::move(children);
    return folder;
}

std::string names(const Nodes& nodes) {
    std::string names;
    for (const auto& node : nodes) {
        names += (names.empty() ? "" : " ") + node->name;
    }
    return names;
}

TEST(FileNodeTest, SortsItsChildren) {
    const auto root = folder(
        "root",
        {node({"b2", 10, 3, 7}),
         node({"B1", 30, 1, 7}),
         node({"a10", 10, -5, 0}),
         node({"\u00c4", 20, 3, 900}),
         node({"A10", 10, 3, 7})});
    const struct {
        SortKey key;
        const char* ascending;
        const char* descending;
    } cases[] = {
        {SortKey::size,     "b2 a10 A10 \u00c4 B1", "B1 \u00c4 A10 a10 b2"},
        {SortKey::modified, "a10 B1 b2 \u00c4 A10", "A10 \u00c4 b2 B1 a10"},
        {SortKey::items,    "a10 b2 B1 A10 \u00c4", "\u00c4 A10 B1 b2 a10"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(FileNode::rawValue(c.key));
        EXPECT_EQ(names(root->sortedChildren(c.key, SortOrder::ascending)), c.ascending);
        EXPECT_EQ(names(root->sortedChildren(c.key, SortOrder::descending)), c.descending);
    }
    EXPECT_EQ(names(*root->children), "b2 B1 a10 \u00c4 A10") << "the stored order stays";
}

TEST(FileNodeTest, LeavesTheTreeWithItsBytesAndFiles) {
    const auto leaf = node({.name = "leaf", .size = 5, .fileCount = 1});
    const auto twin = node({.name = "leaf", .size = 5, .fileCount = 1});
    const auto rest = node({.name = "rest", .size = 40, .fileCount = 4});
    rest->isAggregate = true;
    const auto inner = folder("inner", {leaf, twin, rest});
    const auto outer = folder("outer", {node({.name = "other", .size = 100}), inner});
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
