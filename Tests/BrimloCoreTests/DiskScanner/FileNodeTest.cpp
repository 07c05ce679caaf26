#include "BrimloCore/DiskScanner/FileNode.h"

#include <gtest/gtest.h>

#include <cstdlib>

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

TEST(FileNodeTest, SortsNothingWhereThereAreNoChildren) {
    auto aggregate = node({.name = "2 smaller items"});
    aggregate->isAggregate = true;
    for (const SortKey key : FileNode::kAllSortKeys) {
        EXPECT_EQ(aggregate->sortedChildren(key, SortOrder::descending), Nodes{});
        EXPECT_EQ(folder("empty", {})->sortedChildren(key, SortOrder::ascending), Nodes{});
    }
}

TEST(FileNodeTest, SortsNamesByTheLanguage) {
    const struct {
        const char* locale;
        const char* expected;
    } cases[] = {
        {"en_US.UTF-8", "a A \u00e4 b \u00c9 f Z"},
        {"sv_SE.UTF-8", "a A b \u00c9 f Z \u00e4"},
    };
    // The language is asked for once per process, so each gets one of its own.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.locale);
        setenv("LC_ALL", c.locale, 1);
        EXPECT_EXIT(
            {
                Nodes nodes;
                for (const char* name : {"Z", "f", "b", "\u00c9", "\u00e4", "a", "A"}) {
                    nodes.push_back(node({.name = name}));
                }
                const auto root = folder("root", nodes);
                const auto sorted = root->sortedChildren(SortKey::name, SortOrder::ascending);
                const auto reversed = root->sortedChildren(SortKey::name, SortOrder::descending);
                const bool isReversed = Nodes(reversed.rbegin(), reversed.rend()) == sorted;
                fprintf(stderr, "<%s>", names(sorted).c_str());
                std::exit(isReversed ? 0 : 1);
            },
            testing::ExitedWithCode(0),
            std::string{"<"} + c.expected + ">");
    }
    unsetenv("LC_ALL");
}

TEST(FileNodeTest, KeepsBytesThatAreNoTextInASort) {
    const auto root =
        folder("root", {node({.name = "\xff"}), node({.name = ""}), node({.name = "a\xfe"})});
    EXPECT_EQ(root->sortedChildren(SortKey::name, SortOrder::ascending).size(), 3U);
}

TEST(FileNodeTest, NamesItsSortKeys) {
    std::string words;
    for (const SortKey key : FileNode::kAllSortKeys) {
        words += std::string{FileNode::rawValue(key)} + " ";
        EXPECT_EQ(FileNode::sortKeyFromRawValue(FileNode::rawValue(key)), key);
    }
    EXPECT_EQ(words, "Size Name Modified Items ");
    for (const char* text : {"", "size", "Size ", "Date"}) {
        EXPECT_EQ(FileNode::sortKeyFromRawValue(text), std::nullopt);
    }
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
    EXPECT_EQ(leaf->parent.lock(), nullptr);
    EXPECT_EQ(leaf->size, 5);
    leaf->remove();
    root->remove();
    EXPECT_EQ(sums(), "145/6 145/6 45/5 ");
    rest->remove();
    EXPECT_EQ(sums(), "105/2 105/2 5/1 ");
    inner->remove();
    EXPECT_EQ(sums(), "100/1 100/1 5/1 ");
    EXPECT_EQ(*inner->children, Nodes{twin}) << "what is cut off stays whole";
    EXPECT_EQ(names(*outer->children), "other");
    EXPECT_EQ(names(*root->children), "outer");
}

TEST(FileNodeTest, OutlivesItsPlaceInTheTree) {
    auto root = folder("root", {node({.name = "leaf", .size = 5})});
    FileNode* leaf = root->children->front().get();
    leaf->remove();  // The list held the last reference.
    EXPECT_EQ(root->size, 0);
    EXPECT_EQ(*root->children, Nodes{});

    const auto orphan = node({.name = "orphan"});
    folder("gone", {orphan});
    orphan->remove();
    EXPECT_EQ(orphan->parent.lock(), nullptr);

    const auto unlisted = node({.name = "unlisted", .size = 5});
    root->children = std::nullopt;
    root->size = 5;
    unlisted->parent = root;
    unlisted->remove();
    EXPECT_EQ(root->size, 0);
    EXPECT_EQ(root->children, std::nullopt);
}

TEST(FileNodeTest, HasAnIdentityAndAnAddress) {
    const auto first = node({.name = "a"});
    const auto second = node({.name = "a"});
    EXPECT_NE(first->id.text(), second->id.text());
    first->path = "/a b/\u00e9#%";
    EXPECT_EQ(first->url(), "file:///a%20b/%C3%A9%23%25");
}

}  // namespace
}  // namespace Brimlo
