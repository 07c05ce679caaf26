#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Journal/JournalEntry.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/Fmt.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "brimlo/Commands.h"
#include "brimlo/Console.h"
#include "brimlo/JsonForms.h"

#include <memory>

namespace Brimlo {

namespace {

std::string_view word(JournalEntry::State state) {
    switch (state) {
        case JournalEntry::State::inTrash:
            return "in Trash";
        case JournalEntry::State::restored:
            return "restored";
        case JournalEntry::State::gone:
            return "gone";
        case JournalEntry::State::removed:
            return "removed";
    }
    return "";
}

void show(const HistoryBatch& batch) {
    const std::int64_t total = Bytes::total(batch.items, &JournalEntry::size);
    Console::line(
        Console::bold(Console::localTime(batch.date())) + "  " +
        Console::count(batch.items.size(), "item") + ", " + Fmt::bytes(total) +
        Console::dim("  batch " + batch.id.text()));
    constexpr std::size_t kShownDigits = 8;
    constexpr std::size_t kStateWidth = 8;
    for (const JournalEntry& entry : batch.items) {
        Console::line(
            "  " + Console::dim(entry.id.text().substr(0, kShownDigits)) + "  " +
            Console::left(word(entry.state()), kStateWidth) + Console::size(entry.size) + "  " +
            Console::itemName(entry.originalPath));
    }
    Console::line();
}

ExitCode run(const Tool& tool) {
    const auto entries = Cleaner{std::make_shared<Journal>(StoragePaths::journal())}.history();
    if (!entries) {
        complain("The journal can't be read: " + entries.error().description + ".");
        return ExitCode::problems;
    }
    if (tool.isJson()) {
        Json::Array document;
        for (const JournalEntry& entry : *entries) {
            document.push_back(JsonForms::entry(entry));
        }
        print(document);
        return ExitCode::done;
    }
    if (entries->empty()) {
        Console::line("Nothing has been cleaned yet.");
    }
    for (const HistoryBatch& batch : HistoryBatch::group(*entries)) {
        show(batch);
    }
    return ExitCode::done;
}

}  // namespace

void addHistoryCommand(CLI::App& app, Tool& tool) {
    CLI::App* command = tool.add(
        app, "history", "Show what was cleaned and where it is now", [&tool] { return run(tool); });
    command->group(kCleanGroup);
}

}  // namespace Brimlo
