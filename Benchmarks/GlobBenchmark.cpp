#include "Benchmarks/BenchmarkHome.h"
#include "BrimloCore/Support/Glob.h"

#include <benchmark/benchmark.h>

// Rules' path patterns: those with a wildcard read folders, those without look at one path.

namespace Brimlo::Benchmarks {

namespace {

void expand(benchmark::State& state, const char* pattern) {
    benchmark::DoNotOptimize(BenchmarkHome::tree());  // "~" stands for it, so it must be there.
    for ([[maybe_unused]] auto iteration : state) {
        benchmark::DoNotOptimize(Glob::expand(pattern));
    }
}

void matches(benchmark::State& state) {
    const std::string name = "cmake-build-debug-coverage";
    const std::string pattern = "cmake-build-*";
    for ([[maybe_unused]] auto iteration : state) {
        benchmark::DoNotOptimize(Glob::matches(name, pattern));
    }
}

BENCHMARK_CAPTURE(expand, path, "~/.cache/google-chrome")->Name("Glob/ExpandPath");
BENCHMARK_CAPTURE(expand, missing, "~/.cache/absent/*/Cache")->Name("Glob/ExpandMissing");
BENCHMARK_CAPTURE(expand, wildcard, "~/.cache/mozilla/firefox/*/cache2")
    ->Name("Glob/ExpandWildcard");
BENCHMARK(matches)->Name("Glob/Matches");

}  // namespace

}  // namespace Brimlo::Benchmarks
