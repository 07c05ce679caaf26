#include "Benchmarks/BareSystemCalls.h"
#include "Benchmarks/BenchmarkHome.h"
#include "Benchmarks/Compare.h"
#include "BrimloCore/DiskScanner/DiskScanner.h"

// The walk that measures one path, on one thread, against the same reads with nothing kept.

namespace Brimlo::Benchmarks {

namespace {

void fastSizing(benchmark::State& state) {
    const std::string& tree = BenchmarkHome::tree();
    compare(
        state,
        [&] { benchmark::DoNotOptimize(DiskScanner::quickSize(tree)); },
        [&] { benchmark::DoNotOptimize(Bare::size(tree)); });
}

void plainSizing(benchmark::State& state) {
    const std::string& tree = BenchmarkHome::tree();
    compare(
        state,
        [&] { benchmark::DoNotOptimize(DiskScanner::legacyQuickSize(tree)); },
        [&] { benchmark::DoNotOptimize(Bare::size(tree)); });
}

BENCHMARK(fastSizing)->Name("Sizing/Fast")->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(plainSizing)->Name("Sizing/Plain")->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace Brimlo::Benchmarks
