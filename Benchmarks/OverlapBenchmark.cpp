#include "BrimloCore/SuggestionEngine/OverlapResolver.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

// Candidates of which a quarter lies inside others, with ratings that make some give way. None of
// their paths exists, so the names of their places cost little.

namespace Brimlo::Benchmarks {

namespace {

using SuggestionEngine::Candidate;
using SuggestionEngine::PendingSuggestion;

std::vector<Candidate> candidates(std::size_t count, std::size_t suggestionCount) {
    std::vector<Candidate> list;
    for (std::size_t i = 0; i < count; ++i) {
        std::string path = "/home/somebody/Projects/project-";
        path.append(std::to_string(i - i % 4)).append("/build");
        if (i % 4 == 1) {
            path.append("/inside");
        } else if (i % 4 != 0) {
            path.append("-").append(std::to_string(i));
        }
        list.push_back({i % suggestionCount, {.path = path}});
    }
    return list;
}

void overlaps(benchmark::State& state) {
    std::vector<PendingSuggestion> pending(3);
    pending[0].isCatchAll = true;
    pending[1].suggestion.risk = Risk::safe;
    pending[2].suggestion.risk = Risk::rebuild;
    const auto list = candidates(static_cast<std::size_t>(state.range(0)), pending.size());
    for ([[maybe_unused]] auto iteration : state) {
        benchmark::DoNotOptimize(SuggestionEngine::resolveOverlaps(list, pending));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(overlaps)->Name("Overlap")->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace Brimlo::Benchmarks
