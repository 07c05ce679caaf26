#include "Benchmarks/BareSystemCalls.h"
#include "Benchmarks/BenchmarkHome.h"
#include "Benchmarks/Compare.h"
#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/DiskScanner/Squarify.h"

#include <memory>
#include <random>
#include <vector>

// The scan into a tree on all cores against the same reads with nothing kept, and the layout of
// the picture that is made of it.

namespace Brimlo::Benchmarks {

namespace {

void scan(benchmark::State& state) {
    const std::string& tree = BenchmarkHome::tree();
    compare(
        state,
        [&] {
            DiskScanner scanner{std::make_shared<ScanControl>(), ScanOptions{}};
            benchmark::DoNotOptimize(scanner.scan(tree));
        },
        [&] { benchmark::DoNotOptimize(Bare::size(tree)); });
}

void squarify(benchmark::State& state) {
    std::mt19937 random{1};
    std::lognormal_distribution<double> sizes{10, 3};
    std::vector<double> weights(static_cast<std::size_t>(state.range(0)));
    for (double& weight : weights) {
        weight = sizes(random);
    }
    for ([[maybe_unused]] auto iteration : state) {
        benchmark::DoNotOptimize(Squarify::layout(weights, {0, 0, 1600, 900}));
    }
}

BENCHMARK(scan)->Name("Scan/Tree")->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(squarify)->Name("Squarify")->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace Brimlo::Benchmarks
