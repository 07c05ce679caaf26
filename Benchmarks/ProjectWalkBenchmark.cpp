#include "Benchmarks/BareSystemCalls.h"
#include "Benchmarks/BenchmarkHome.h"
#include "Benchmarks/Compare.h"
#include "BrimloCore/SuggestionEngine/ProjectArtifactFinder.h"

// The search for projects against reading the same folders and nothing else.

namespace Brimlo::Benchmarks {

namespace {

void projectWalk(benchmark::State& state) {
    constexpr int kDepth = 8;
    const std::string& tree = BenchmarkHome::tree();
    std::vector<std::string> found;
    for (const FoundArtifact& artifact : ProjectArtifactFinder::find({tree}, kDepth)) {
        found.push_back(artifact.path);
    }
    const auto notEntered = Bare::inodes(found);
    compare(
        state,
        [&] { benchmark::DoNotOptimize(ProjectArtifactFinder::find({tree}, kDepth)); },
        [&] { benchmark::DoNotOptimize(Bare::walkProjects(tree, kDepth, notEntered)); });
}

BENCHMARK(projectWalk)->Name("ProjectWalk")->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace Brimlo::Benchmarks
