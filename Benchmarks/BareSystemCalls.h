#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

/// The physical limit of the walks: the system calls that no walk can do without, in the plainest
/// loop around them, keeping no results. Only for file systems whose folders tell the kind of each
/// entry, as those in common use do.
namespace Brimlo::Benchmarks::Bare {

/// The entries met by reading the folders that the search for projects reads: not deeper than
/// `maxDepth`, none that are hidden or known to hold no projects, and none whose inode is in
/// `notEntered`, by which the folders that were found are told. `getdents64` alone, one thread.
std::size_t walkProjects(
    const std::string& root, int maxDepth, const std::unordered_set<std::uint64_t>& notEntered);

/// The allocated bytes of a path and all below it but the folders' own. `getdents64`, and a
/// `statx` for nothing but the blocks, relative to the folder.
std::int64_t size(const std::string& path);

/// The sum of `size` over the paths, which so many threads take one by one.
std::int64_t sizeAll(const std::vector<std::string>& paths, unsigned threads);

/// The inodes of the paths that exist.
[[nodiscard]] std::unordered_set<std::uint64_t> inodes(const std::vector<std::string>& paths);

}  // namespace Brimlo::Benchmarks::Bare
