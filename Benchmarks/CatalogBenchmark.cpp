#include "Benchmarks/BenchmarkHome.h"
#include "BrimloCore/RulePacks/Catalog.h"
#include "BrimloCore/RulePacks/RulePacks.h"
#include "BrimloCore/Support/AtomicFile.h"
#include "BrimloCore/Support/Json.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

// From the texts of the packs to the merged rules, for packs as long as a full catalog's. They are
// made from the rows that are embedded, each as often as it takes, with ids of its own.

namespace Brimlo::Benchmarks {

namespace {

constexpr std::size_t kRules = 624;
constexpr std::size_t kPatterns = 134;
constexpr std::size_t kPacks = 10;
constexpr std::size_t kLongestPack = std::size_t{64} << 20U;

/// Appends the rows under `key` in the embedded packs.
void collect(const Json::Value& pack, std::string_view key, Json::Array& rows) {
    if (const Json::Value* list = pack.as_object().if_contains(key)) {
        rows.insert(rows.end(), list->as_array().begin(), list->as_array().end());
    }
}

/// The rows that the pack at `place` of kPacks gets when there are to be `count` in all.
Json::Array share(const Json::Array& rows, std::size_t count, std::size_t place) {
    Json::Array part;
    for (std::size_t i = place; i < count; i += kPacks) {
        Json::Value row = rows[i % rows.size()];
        Json::Value& id = row.as_object()["id"];
        id = std::string{id.as_string().c_str()} + "." + std::to_string(i / rows.size());
        part.push_back(std::move(row));
    }
    return part;
}

std::string packPath(std::size_t place) {
    return BenchmarkHome::scratch() + "/packs/pack-" + std::to_string(place) + ".json";
}

void writePacks() {
    Json::Array rules;
    Json::Array patterns;
    for (const RulePacks::Source& source : RulePacks::embedded()) {
        const Json::Value pack = *Json::parse(source.text);
        collect(pack, "rules", rules);
        collect(pack, "artifacts", patterns);
    }
    for (std::size_t place = 0; place < kPacks; ++place) {
        Json::Object pack;
        pack["pack"] = "pack-" + std::to_string(place);
        pack["version"] = 1;
        pack["rules"] = share(rules, kRules, place);
        pack["artifacts"] = share(patterns, kPatterns, place);
        static_cast<void>(AtomicFile::write(packPath(place), Json::pretty(pack)));
    }
}

/// The texts of the packs. A child makes them, so that neither the parser nor the heap of this
/// process has been used when a cold start is measured.
std::vector<std::string> packTexts() {
    const std::string folder = BenchmarkHome::scratch() + "/packs";
    if (mkdir(folder.c_str(), 0700) == 0) {
        if (const pid_t child = fork(); child == 0) {
            writePacks();
            _exit(0);
        } else if (child > 0) {
            waitpid(child, nullptr, 0);
        }
    }
    std::vector<std::string> texts;
    texts.reserve(kPacks);
    for (std::size_t place = 0; place < kPacks; ++place) {
        texts.push_back(readFile(packPath(place), kLongestPack).value_or(""));
    }
    return texts;
}

void catalog(benchmark::State& state) {
    const std::vector<std::string> texts = packTexts();
    std::vector<RulePacks::Source> sources;
    sources.reserve(texts.size());
    double bytes = 0;
    for (const std::string& text : texts) {
        sources.push_back({.fileName = "pack.json", .text = text});
        bytes += static_cast<double>(text.size());
    }
    std::size_t rules = 0;
    std::size_t patterns = 0;
    for ([[maybe_unused]] auto iteration : state) {
        RulePacks::Loaded loaded = RulePacks::load(sources);
        const auto merged =
            Catalog::merge(std::move(loaded.rules), Catalog::UnsupportedSafe::lowerToRebuild);
        rules = merged.size();
        patterns = loaded.artifacts.size();
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
