#include "Benchmarks/BenchmarkHome.h"
#include "BrimloCore/Gate/Safety.h"

#include <benchmark/benchmark.h>

#include <string>

// What one question to the gate costs, by how far it has to look.

namespace Brimlo::Benchmarks {

namespace {

void refusal(benchmark::State& state, const char* below) {
    const std::string path = BenchmarkHome::tree() + below;
    for ([[maybe_unused]] auto iteration : state) {
        benchmark::DoNotOptimize(Safety::judge(path).refusal);
    }
}

BENCHMARK_CAPTURE(refusal, allowed, "/Projects/first/project-1/node_modules")
    ->Name("Safety/RefusalAllowed");
BENCHMARK_CAPTURE(refusal, refused, "/.ssh/id_ed25519")->Name("Safety/RefusalRefused");

}  // namespace

}  // namespace Brimlo::Benchmarks
