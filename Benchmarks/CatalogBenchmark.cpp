#include "BrimloCore/RulePacks/Catalog.h"
#include "BrimloCore/RulePacks/RulePacks.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <utility>

// From the texts of the packs to the merged and capped rules.

namespace Brimlo::Benchmarks {

namespace {

void catalog(benchmark::State& state) {
    std::size_t rules = 0;
    std::size_t patterns = 0;
    for ([[maybe_unused]] auto iteration : state) {
        RulePacks::Loaded loaded = RulePacks::load();
        const auto merged =
            Catalog::merge(std::move(loaded.rules), Catalog::UnsupportedSafe::lowerToRebuild);
        rules = merged.size();
        patterns = loaded.artifacts.size();
    }
    double bytes = 0;
    for (const RulePacks::Source& source : RulePacks::embedded()) {
        bytes += static_cast<double>(source.text.size());
    }
    state.counters["rules"] = static_cast<double>(rules);
    state.counters["patterns"] = static_cast<double>(patterns);
    state.counters["bytes"] = bytes;
}

// The first is cold in a process that runs nothing before it.
BENCHMARK(catalog)->Name("Catalog/First")->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(catalog)->Name("Catalog/Again")->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace Brimlo::Benchmarks
