#include "BrimloCore/DiskScanner/FileNode.h"

#include "BrimloCore/DiskScanner/FileTree.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <ranges>
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
        names.push_back(node->name());
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
    Nodes nodes;
    nodes.reserve(childCount_);
    for (FileNode* const child : children()) {
        nodes.push_back(child->shared());
    }
    sort(nodes, key, order);
    return nodes;
}

void FileNode::sort(Nodes& nodes, SortKey key, SortOrder order) {
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
}

Uuid FileNode::id() const {
    Uuid id = tree_->salt_;
    const auto place = reinterpret_cast<std::uintptr_t>(this);
    std::memcpy(id.bytes.data(), &place, sizeof place);
    return id;
}

std::string_view FileNode::name() const {
    const bool isPath = parent_ == nullptr && !isAggregate && text() != "/";
    return isPath ? Path::name(text()) : text();
}

std::string FileNode::path() const {
    const FileNode* top = isAggregate && parent_ != nullptr ? parent_ : this;
    std::vector<std::string_view> names;
    for (; top->parent_ != nullptr; top = top->parent_) {
        names.push_back(top->text());
    }
    std::string path{top->text()};
    for (const std::string_view name : names | std::views::reverse) {
        path.append(path.ends_with('/') ? "" : "/").append(name);
    }
    return path;
}

std::shared_ptr<FileNode> FileNode::shared() {
    return {tree_->shared_from_this(), this};
}

void FileNode::remove() {
    if (parent_ == nullptr) {
        return;
    }
    const std::string whole = path();
    const std::span siblings{parent_->children_, parent_->childCount_};
    const auto rest = std::ranges::remove(siblings, this);
    parent_->childCount_ -= static_cast<std::uint32_t>(rest.size());
    for (FileNode* node = std::exchange(parent_, nullptr); node != nullptr; node = node->parent_) {
        node->size -= size;
        node->fileCount -= fileCount;
    }
    text_ = tree_->copied(whole).data();
    textLength_ = static_cast<std::uint32_t>(whole.size());
}

}  // namespace Brimlo
