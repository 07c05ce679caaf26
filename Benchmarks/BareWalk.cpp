#include "Benchmarks/BareSystemCalls.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <iterator>
#include <string_view>

// bare-walk: what `brimlo suggest` asks the file system for, without all that makes it of use.
//
// The paths to measure come on standard input, each with a NUL after it, as `brimlo suggest --json`
// lists them. With --walk the folders are read, too, in which projects are searched; the paths
// given are not entered then, as a folder that was found is not. Each step tells its seconds on
// standard error.

namespace {

using namespace Brimlo::Benchmarks;

constexpr int kWrongUsage = 2;
constexpr int kProjectDepth = 8;
constexpr unsigned kThreads = 2;

std::vector<std::string> readPaths() {
    std::vector<std::string> paths;
    std::string path;
    while (std::getline(std::cin, path, '\0')) {
        paths.push_back(path);
    }
    return paths;
}

template <typename Step>
void timed(const char* name, const Step& step) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    const auto result = static_cast<long long>(step());
    const std::chrono::duration<double> elapsed = Clock::now() - start;
    std::fprintf(stderr, "%s %.6f %lld\n", name, elapsed.count(), result);
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view option = argc > 1 ? argv[1] : "";
    if (argc != 1 && (argc != 3 || option != "--walk")) {
        std::fputs("Usage: bare-walk [--walk ROOT] < PATHS\n", stderr);
        return kWrongUsage;
    }
    std::ios::sync_with_stdio(false);
    const std::vector<std::string> paths = readPaths();
    if (argc == 3) {
        const auto notEntered = Bare::inodes(paths);
        timed("walk", [&] { return Bare::walkProjects(argv[2], kProjectDepth, notEntered); });
    }
    timed("size", [&] { return Bare::sizeAll(paths, kThreads); });
    return 0;
}
