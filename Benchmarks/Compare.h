#pragma once

#include <benchmark/benchmark.h>

#include <functional>

namespace Brimlo::Benchmarks {

/// Times `ours` and `limit` in alternation, so that what else the machine does meanwhile hits both.
///
/// The benchmark's time is that of `ours`. The counters hold the medians, in seconds: "ours",
/// "limit", and "ratio" of the one to the other. Each is called once before the first is timed.
void compare(
    benchmark::State& state, const std::function<void()>& ours, const std::function<void()>& limit);

}  // namespace Brimlo::Benchmarks
