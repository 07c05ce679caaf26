#include "BrimloCore/SuggestionEngine/OverlapResolver.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

// Candidates of which a quarter lies inside others, with ratings that make some give way.

namespace Brimlo::Benchmarks {

namespace {

std::vector<Candidate> candidates(std::size_t count, std::size_t metaCount) {
    std::vector<Candidate> list;
    for (std::size_t i = 0; i < count; ++i) {
        std::string path = "/home/somebody/Projects/project-";
        path.append(std::to_string(i - i % 4)).append("/build");
        if (i % 4 == 1) {
            path.append("/inside");
        } else if (i % 4 != 0) {
            path.append("-").append(std::to_string(i));
        }
        list.push_back({.meta = i % metaCount, .item = {.path = path}, .place = path});
    }
    return list;
}

void overlaps(benchmark::State& state) {
    const std::vector<Meta> metas{
        {.id = "a", .risk = Risk::review, .catchAll = true},
        {.id = "b",         .risk = Risk::safe                    },
        {.id = "c",         .risk = Risk::rebuild},
    };
    const auto list = candidates(static_cast<std::size_t>(state.range(0)), metas.size());
    for ([[maybe_unused]] auto iteration : state) {
        benchmark::DoNotOptimize(SuggestionEngine::resolveOverlaps(list, metas));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(overlaps)->Name("Overlap")->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace Brimlo::Benchmarks
