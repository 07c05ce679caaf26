#include "Benchmarks/BenchmarkHome.h"
#include "Benchmarks/TreeGenerator.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <stdlib.h>

namespace Brimlo::Benchmarks::BenchmarkHome {

namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kSmallTree = 20'000;

std::string makeScratch() {
    std::error_code ignored;
    std::string pattern = fs::temp_directory_path(ignored).string() + "/brimlo-bench-XXXXXX";
    return mkdtemp(pattern.data()) != nullptr ? pattern : std::string{};
}

}  // namespace

const std::string& scratch() {
    static const std::string kFolder = makeScratch();
    return kFolder;
}

const std::string& tree() {
    static const std::string kTree = [] {
        if (const char* given =
                std::getenv("BRIMLO_BENCH_TREE")) {  // NOLINT(concurrency-mt-unsafe)
            return std::string{given};
        }
        std::string made = scratch() + "/home";
        fs::create_directory(made);
        makeHomeTree(made, {.entries = kSmallTree});
        return made;
    }();
    return kTree;
}

}  // namespace Brimlo::Benchmarks::BenchmarkHome

int main(int argc, char** argv) {
    using namespace Brimlo::Benchmarks;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv) || BenchmarkHome::scratch().empty()) {
        return 1;
    }
    // Nothing measured here may reach the home folder of who measures. The tree need not exist yet.
    const char* tree = std::getenv("BRIMLO_BENCH_TREE");  // NOLINT(concurrency-mt-unsafe)
    const std::string home = tree != nullptr ? tree : BenchmarkHome::scratch() + "/home";
    setenv("HOME", home.c_str(), 1);  // NOLINT(concurrency-mt-unsafe): no threads yet
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    std::error_code ignored;
    std::filesystem::remove_all(BenchmarkHome::scratch(), ignored);
    return 0;
}
