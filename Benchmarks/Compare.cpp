#include "Benchmarks/Compare.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <vector>

namespace Brimlo::Benchmarks {

namespace {

double seconds(const std::function<void()>& body) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    body();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

double median(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

}  // namespace

void compare(
    benchmark::State& state,
    const std::function<void()>& ours,
    const std::function<void()>& limit) {
    std::vector<double> oursTimes;
    std::vector<double> limitTimes;
    limit();
    ours();
    for ([[maybe_unused]] auto iteration : state) {
        oursTimes.push_back(seconds(ours));
        limitTimes.push_back(seconds(limit));
        state.SetIterationTime(oursTimes.back());
    }
    const double oursMedian = median(oursTimes);
    const double limitMedian = median(limitTimes);
    state.counters["ours"] = oursMedian;
    state.counters["limit"] = limitMedian;
    state.counters["ratio"] = oursMedian / limitMedian;
}

}  // namespace Brimlo::Benchmarks
