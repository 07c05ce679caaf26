#include "Benchmarks/TreeGenerator.h"

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>

// make-tree: makes the tree that the benchmarks walk.

namespace {

constexpr int kWrongUsage = 2;

int usage() {
    std::fputs(
        "Usage: make-tree DIR [--entries N] [--shape home]\n"
        "Fills DIR, which must be missing or empty, with N entries (600000).\n",
        stderr);
    return kWrongUsage;
}

}  // namespace

int main(int argc, char** argv) {
    using namespace Brimlo::Benchmarks;
    namespace fs = std::filesystem;

    TreePlan plan;
    std::string root;
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        const std::string_view value = i + 1 < argc ? argv[i + 1] : "";
        if (word == "--entries") {
            const auto [end, error] =
                std::from_chars(value.data(), value.data() + value.size(), plan.entries);
            if (error != std::errc{} || end != value.data() + value.size() || plan.entries < 0) {
                return usage();
            }
            ++i;
        } else if (word == "--shape") {
            if (value != "home") {
                return usage();
            }
            ++i;
        } else if (root.empty() && !word.starts_with('-')) {
            root = word;
        } else {
            return usage();
        }
    }
    if (root.empty()) {
        return usage();
    }
    std::error_code error;
    fs::create_directories(root, error);
    if (!fs::is_empty(root, error) || error) {
        std::fprintf(stderr, "make-tree: %s is not an empty folder.\n", root.c_str());
        return 1;
    }
    const std::int64_t made = makeHomeTree(root, plan);
    std::printf("%lld entries\n", static_cast<long long>(made));
    return made == plan.entries ? 0 : 1;
}
