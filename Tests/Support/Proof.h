#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace Brimlo::Testing {

/// How often something is tried: as often as the environment variable says, else `usual`.
[[nodiscard]] inline std::int64_t rounds(const char* variable, std::int64_t usual) {
    const char* text = std::getenv(variable);  // NOLINT(concurrency-mt-unsafe): nobody sets it
    return text == nullptr ? usual : std::strtoll(text, nullptr, 10);
}

/// Tells tools/prove how often a promise was tried, and how often it was broken.
inline void told(const std::string& what, std::int64_t tried, std::int64_t broken) {
    std::printf(
        "PROVED {\"what\": \"%s\", \"tried\": %lld, \"broken\": %lld}\n",
        what.c_str(),
        static_cast<long long>(tried),
        static_cast<long long>(broken));
    std::fflush(stdout);
}

}  // namespace Brimlo::Testing
