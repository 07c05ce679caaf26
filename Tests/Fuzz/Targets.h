#pragma once

#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>

/// What is fuzzed: each target takes any bytes, and ends the program when a promise is broken.
namespace Brimlo::Fuzz {

struct Target {
    std::string_view name;
    void (*take)(const std::string& bytes);
};

/// Whatever is read from a file or from another program.
[[nodiscard]] std::span<const Target> decoders();

/// Wildcards and the forms of a path, each against a second opinion.
[[nodiscard]] std::span<const Target> spellings();

/// Ends the program, which the fuzzer reports with the input, when a promise does not hold.
inline void demand(bool holds, const char* promise) {
    if (!holds) {
        static_cast<void>(std::fprintf(stderr, "broken: %s\n", promise));
        std::abort();
    }
}

}  // namespace Brimlo::Fuzz
