#include "BrimloCore/DiskScanner/FileTree.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <string_view>

// The children of one long folder in another order. The locale is the one of the environment.

namespace Brimlo::Benchmarks {

namespace {

constexpr int kChildren = 100'000;

std::shared_ptr<FileNode> longFolder() {
    constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ-_ ";
    std::mt19937_64 random{1};
    const auto tree = std::make_shared<FileTree>();
    FileNode& folder = tree->add({.name = "/folder", .modified = {}});
    std::vector<FileNode*> children;
    for (int i = 0; i < kChildren; ++i) {
        std::string name;
        const std::size_t length = 6 + random() % 20;
        while (name.size() < length) {
            name += kLetters[random() % kLetters.size()];
        }
        name += i % 10 == 0 ? "é.txt" : ".txt";
        const auto size = static_cast<std::int64_t>(random() % 1'000'000);
        children.push_back(
            &tree->add({.name = name, .parent = &folder, .size = size, .modified = {}}));
    }
    tree->setChildren(folder, children);
    return folder.shared();
}

void sortedChildren(benchmark::State& state, FileNode::SortKey key) {
    const std::shared_ptr<FileNode> folder = longFolder();
    for ([[maybe_unused]] auto iteration : state) {
        benchmark::DoNotOptimize(folder->sortedChildren(key, FileNode::SortOrder::ascending));
    }
}

BENCHMARK_CAPTURE(sortedChildren, name, FileNode::SortKey::name)
    ->Name("Sort/Name")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sortedChildren, size, FileNode::SortKey::size)
    ->Name("Sort/Size")
    ->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace Brimlo::Benchmarks
