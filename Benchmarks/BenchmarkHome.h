#pragma once

#include <string>

/// The folders that the benchmarks use. `main` makes them, points `HOME` at the tree, and removes
/// afterwards what it made.
namespace Brimlo::Benchmarks::BenchmarkHome {

/// A fresh, empty folder for files that are written; below TMPDIR.
[[nodiscard]] const std::string& scratch();

/// The tree to walk: that of the variable BRIMLO_BENCH_TREE, or a small one made when it is first
/// asked for.
[[nodiscard]] const std::string& tree();

}  // namespace Brimlo::Benchmarks::BenchmarkHome
