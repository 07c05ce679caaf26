#include "Benchmarks/TreeGenerator.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

// make-tree: makes the tree that the benchmarks walk.

int main(int argc, char** argv) {
    namespace fs = std::filesystem;
    constexpr int kWrongUsage = 2;
    const long long entries = argc == 3 ? std::atoll(argv[2]) : 0;
    if (entries <= 0) {
        std::fputs("Usage: make-tree DIR ENTRIES\n", stderr);
        return kWrongUsage;
    }
    const std::string root = argv[1];
    std::error_code error;
    fs::create_directories(root, error);
    if (!fs::is_empty(root, error) || error) {
        std::fprintf(stderr, "make-tree: %s is not an empty folder.\n", root.c_str());
        return 1;
    }
    const auto made = Brimlo::Benchmarks::makeHomeTree(root, {.entries = entries});
    std::printf("%lld entries\n", static_cast<long long>(made));
    return made == entries ? 0 : 1;
}
