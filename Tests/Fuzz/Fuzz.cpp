#include "Fuzz/Targets.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>

// BRIMLO_FUZZ names the target, BRIMLO_FUZZ_HOME a folder for nothing else: it becomes the home.

namespace {

void (*chosen)(const std::string& bytes) = nullptr;

}  // namespace

// The names and types of both are the fuzzer's.
extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    const char* name = std::getenv("BRIMLO_FUZZ");
    const char* home = std::getenv("BRIMLO_FUZZ_HOME");
    for (const auto targets : std::array{Brimlo::Fuzz::decoders(), Brimlo::Fuzz::spellings()}) {
        for (const Brimlo::Fuzz::Target& target : targets) {
            if (name == nullptr) {
                static_cast<void>(std::printf("%s\n", std::string{target.name}.c_str()));
            } else if (target.name == name) {
                chosen = target.take;
            }
        }
    }
    if (chosen == nullptr || home == nullptr) {
        std::exit(name == nullptr ? 0 : 2);
    }
    std::filesystem::create_directories(home);
    setenv("HOME", home, 1);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string bytes(size, '\0');
    std::copy_n(data, size, bytes.begin());
    chosen(bytes);
    return 0;
}
