#include "BrimloCore/DiskScanner/Squarify.h"

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

// The layout of a treemap of weights as unequal as the sizes in a folder.

namespace Brimlo::Benchmarks {

namespace {

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

BENCHMARK(squarify)->Name("Squarify")->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace Brimlo::Benchmarks
