#include "Benchmarks/BenchmarkHome.h"
#include "Benchmarks/Compare.h"
#include "BrimloCore/Journal/Journal.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// Appending to a long journal against writing the same bytes and waiting for the disk. Each append
// makes the journal an entry longer; over the few rounds that is below a hundredth.

namespace Brimlo::Benchmarks {

namespace {

constexpr int kEntries = 10'000;
constexpr int kRounds = 40;

JournalEntry entry(int number) {
    const std::string folder = "/home/somebody/Projects/project-" + std::to_string(number);
    const std::string name = "node_modules-" + std::to_string(number);
    return JournalEntry::make({
        .originalPath = folder + "/node_modules",
        .trashPath = "/home/somebody/.local/share/Trash/files/" + name,
        .size = 123'456'789,
        .ruleID = "artifact.node_modules",
        .trashID = "2049:" + std::to_string(number),
        .batchID = Uuid::random(),
    });
}

/// A journal of kEntries entries, as one file.
std::string longJournal() {
    std::string text = "[";
    for (int i = 0; i < kEntries; ++i) {
        text += i == 0 ? "" : ",";
        entry(i).encode(text);
    }
    return text + "]";
}

/// What replacing a file safely takes at least: new bytes on the disk, a rename, the folder synced.
void writePlainly(const std::string& folder, const std::string& bytes) {
    const std::string path = folder + "/plain";
    const std::string temporary = path + ".tmp";
    const Platform::Descriptor file{
        open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600)};
    bool isDone = Platform::writeAndSync(file.number(), bytes);
    isDone = isDone && std::rename(temporary.c_str(), path.c_str()) == 0;
    const Platform::Descriptor directory{open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    isDone = isDone && fsync(directory.number()) == 0;
    benchmark::DoNotOptimize(isDone);
}

/// A folder with a long journal in it.
std::string prepare(const std::string& name, const std::string& journal) {
    const std::string folder = BenchmarkHome::scratch() + "/" + name;
    mkdir(folder.c_str(), 0700);
    static_cast<void>(AtomicFile::write(folder + "/journal.json", journal));
    return folder;
}

void journalAppend(benchmark::State& state) {
    const std::string bytes = longJournal();
    const std::string folder = prepare("journal-append", bytes);
    Journal journal{folder + "/journal.json"};
    const JournalEntry added = entry(kEntries);
    compare(
        state,
        [&] { static_cast<void>(journal.append(added)); },
        [&] { writePlainly(folder, bytes); });
    state.counters["bytes"] = static_cast<double>(bytes.size());
}

void journalRead(benchmark::State& state) {
    const std::string folder = prepare("journal-read", longJournal());
    Journal journal{folder + "/journal.json"};
    for ([[maybe_unused]] auto iteration : state) {
        benchmark::DoNotOptimize(journal.entries());
    }
}

BENCHMARK(journalAppend)
    ->Name("Journal/Append")
    ->UseManualTime()
    ->Iterations(kRounds)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(journalRead)->Name("Journal/Read")->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace Brimlo::Benchmarks
