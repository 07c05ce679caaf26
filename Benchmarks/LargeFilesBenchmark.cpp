#include "Benchmarks/BareSystemCalls.h"
#include "Benchmarks/BenchmarkHome.h"
#include "Benchmarks/Compare.h"
#include "BrimloCore/LargeFiles/LargeFiles.h"

// The search for the largest files, on one thread, against the same reads with nothing kept.

namespace Brimlo::Benchmarks {

namespace {

void largest(benchmark::State& state, std::int64_t minSize) {
    constexpr std::size_t kLimit = 200;
    const std::string& tree = BenchmarkHome::tree();
    compare(
        state,
        [&] {
            ScanControl control;
            benchmark::DoNotOptimize(LargeFiles::find(tree, kLimit, minSize, control));
        },
        [&] { benchmark::DoNotOptimize(Bare::size(tree)); });
}

/// As the tool asks for them.
void above50MiB(benchmark::State& state) {
    largest(state, std::int64_t{50} << 20U);
}

/// With a list that fills at once and is then displaced bit by bit.
void ofAnySize(benchmark::State& state) {
    largest(state, 0);
}

BENCHMARK(above50MiB)->Name("LargeFiles/50MiB")->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ofAnySize)->Name("LargeFiles/AnySize")->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace Brimlo::Benchmarks
