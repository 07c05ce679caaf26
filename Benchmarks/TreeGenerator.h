#pragma once

#include <cstdint>
#include <string>

namespace Brimlo::Benchmarks {

/// Which tree to make. The same values give the same names, kinds, sizes and links everywhere.
struct TreePlan {
    std::int64_t entries = 600'000;  ///< Files, links and folders below the root.
    std::uint64_t seed = 1;
};

/// Fills the existing folder `root` with what a developer's home folder holds: projects with
/// dependencies, build output and repositories, caches of several tools, documents and pictures,
/// each file at most a few bytes long but for a few of some megabytes.
///
/// Makes exactly `plan.entries` entries and returns how many of them the file system took: fewer
/// when it is full or something was in the way. Works on all cores; blocks.
std::int64_t makeHomeTree(const std::string& root, const TreePlan& plan);

}  // namespace Brimlo::Benchmarks
