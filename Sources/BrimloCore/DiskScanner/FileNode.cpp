#include "BrimloCore/DiskScanner/FileNode.h"

#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace Brimlo {

namespace {

using Nodes = std::vector<std::shared_ptr<FileNode>>;

constexpr std::array<std::string_view, 4> kSortKeyWords{"Size", "Name", "Modified", "Items"};

/// Computes a sort key once for each name: comparing by the rules of a language is expensive.
void sortByName(Nodes& nodes) {
    std::vector<std::string_view> names;
    names.reserve(nodes.size());
    for (const auto& node : nodes) {
        names.emplace_back(node->name);
    }
    const std::vector<std::string> keys = Text::collationKeys(names);
    std::vector<std::size_t> order(nodes.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        order[i] = i;
    }
    std::ranges::stable_sort(
        order, {}, [&](std::size_t i) -> const std::string& { return keys[i]; });
    Nodes sorted;
    sorted.reserve(nodes.size());
    for (const std::size_t i : order) {
        sorted.push_back(std::move(nodes[i]));
    }
    nodes = std::move(sorted);
}

}  // namespace

FileNode::~FileNode() {
    Nodes waiting = std::move(children).value_or(Nodes{});
    while (!waiting.empty()) {
        const std::shared_ptr<FileNode> node = std::move(waiting.back());
        waiting.pop_back();
        if (node.use_count() == 1 && node->children) {
            std::ranges::move(*node->children, std::back_inserter(waiting));
            node->children->clear();
        }
    }
}

std::string_view FileNode::rawValue(SortKey key) {
    return kSortKeyWords[static_cast<std::size_t>(key)];
}

std::optional<FileNode::SortKey> FileNode::sortKeyFromRawValue(std::string_view text) {
    for (const SortKey key : kAllSortKeys) {
        if (rawValue(key) == text) {
            return key;
        }
    }
    return std::nullopt;
}

Nodes FileNode::sortedChildren(SortKey key, SortOrder order) const {
    Nodes nodes = children.value_or(Nodes{});
    switch (key) {
        case SortKey::size:
            std::ranges::stable_sort(nodes, {}, [](const auto& node) { return node->size; });
            break;
        case SortKey::name:
            sortByName(nodes);
            break;
        case SortKey::modified:
            std::ranges::stable_sort(nodes, {}, [](const auto& node) { return node->modified; });
            break;
        case SortKey::items:
            std::ranges::stable_sort(nodes, {}, [](const auto& node) { return node->fileCount; });
            break;
    }
    if (order == SortOrder::descending) {
        std::ranges::reverse(nodes);
    }
    return nodes;
}

void FileNode::remove() {
    const std::shared_ptr<FileNode> above = parent.lock();
    if (!above) {
        return;
    }
    // The list may hold the last reference to this node.
    const std::shared_ptr<FileNode> self = weak_from_this().lock();
    if (above->children) {
        std::erase_if(*above->children, [&](const auto& node) { return node.get() == this; });
    }
    for (std::shared_ptr<FileNode> node = above; node; node = node->parent.lock()) {
        node->size -= size;
        node->fileCount -= fileCount;
    }
    parent.reset();
}

}  // namespace Brimlo
