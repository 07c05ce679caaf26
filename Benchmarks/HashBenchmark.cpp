#include "Benchmarks/BenchmarkHome.h"
#include "Benchmarks/Compare.h"
#include "BrimloCore/Cleaner/DuplicateFinder.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <vector>

#include <fcntl.h>
#include <openssl/evp.h>
#include <unistd.h>

// The search for duplicates where all is one: two equal files, both read in full. Against OpenSSL
// on bytes that lie in memory, and on bytes read in the plainest loop.

namespace Brimlo::Benchmarks {

namespace {

constexpr std::size_t kFileBytes = std::size_t{64} << 20U;
constexpr std::array<const char*, 2> kNames{"one", "two"};

struct alignas(4096) Chunk {
    std::array<std::byte, std::size_t{4} << 20U> bytes;
};

std::string makeFiles() {
    std::string folder = BenchmarkHome::scratch() + "/duplicates";
    std::filesystem::create_directory(folder);
    std::mt19937_64 random{1};
    std::vector<std::uint64_t> words(kFileBytes / sizeof(std::uint64_t));
    std::ranges::generate(words, random);
    for (const char* name : kNames) {
        std::ofstream{folder + "/" + name, std::ios::binary}.write(
            reinterpret_cast<const char*>(words.data()), kFileBytes);
    }
    return folder;
}

const std::string& files() {
    static const std::string kFolder = makeFiles();
    return kFolder;
}

/// OpenSSL's SHA-256 of what `feed` hands to the function it is given.
void digest(const auto& feed) {
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context{
        EVP_MD_CTX_new(), EVP_MD_CTX_free};
    std::array<unsigned char, EVP_MAX_MD_SIZE> result{};
    EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr);
    feed([&](const void* bytes, std::size_t count) {
        EVP_DigestUpdate(context.get(), bytes, count);
    });
    EVP_DigestFinal_ex(context.get(), result.data(), nullptr);
    benchmark::DoNotOptimize(result);
}

void readAndDigest(const std::string& path, Chunk& chunk) {
    const Platform::Descriptor file{open(path.c_str(), O_RDONLY | O_CLOEXEC)};
    digest([&](const auto& update) {
        ssize_t length = 0;
        while ((length = read(file.number(), chunk.bytes.data(), chunk.bytes.size())) > 0) {
            update(chunk.bytes.data(), static_cast<std::size_t>(length));
        }
    });
}

void findDuplicates() {
    benchmark::DoNotOptimize(DuplicateFinder::find({files()}, 1));
}

void againstMemory(benchmark::State& state) {
    const std::vector<std::byte> bytes(kFileBytes, std::byte{1});
    compare(state, findDuplicates, [&] {
        for (std::size_t i = 0; i < kNames.size(); ++i) {
            digest([&](const auto& update) { update(bytes.data(), bytes.size()); });
        }
    });
}

void againstReading(benchmark::State& state) {
    const auto chunk = std::make_unique<Chunk>();
    compare(state, findDuplicates, [&] {
        for (const char* name : kNames) {
            readAndDigest(files() + "/" + name, *chunk);
        }
    });
}

BENCHMARK(againstMemory)->Name("Hash/Memory")->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(againstReading)->Name("Hash/Reading")->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace Brimlo::Benchmarks
