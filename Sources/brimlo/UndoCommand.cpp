#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Journal/JournalEntry.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"
#include "brimlo/CleanRun.h"
#include "brimlo/Commands.h"
#include "brimlo/Console.h"

#include <memory>

namespace Brimlo {

namespace {

struct Arguments {
    std::vector<std::string> ids;
    std::string batch;
    bool last = false;
};

/// Whether an id begins with these characters, letter case ignored.
bool begins(const Uuid& id, const std::string& beginning) {
    return Text::lowercased(id.text()).starts_with(Text::lowercased(beginning));
}

/// The only entry or batch whose id begins so, or an error.
template <typename T>
std::expected<T, std::string> find(
    const std::vector<T>& all, const std::string& beginning, const std::string& noun) {
    const auto isMeant = [&](const T& one) { return begins(one.id, beginning); };
    const auto found = std::ranges::find_if(all, isMeant);
    if (beginning.empty() || found == all.end()) {
        return std::unexpected("No " + noun + " has the id \"" + beginning + "\".");
    }
    if (std::find_if(found + 1, all.end(), isMeant) != all.end()) {
        return std::unexpected(
            "More than one " + noun + " has an id that begins with \"" + beginning + "\".");
    }
    return *found;
}

/// The batch that the arguments name, or an error.
std::expected<HistoryBatch, std::string> meantBatch(
    const std::vector<HistoryBatch>& batches, const Arguments& arguments) {
    if (!arguments.last) {
        return find(batches, arguments.batch, "clean");
    }
    const auto found = std::ranges::find_if(
        batches, [](const HistoryBatch& batch) { return batch.restorableCount() > 0; });
    if (found == batches.end()) {
        return std::unexpected("Nothing is left that could be put back.");
    }
    return *found;
}

/// The entries to restore, or an error.
std::expected<std::vector<Uuid>, std::string> meant(
    const std::vector<JournalEntry>& entries, const Arguments& arguments) {
    std::vector<Uuid> result;
    for (const std::string& id : arguments.ids) {
        const auto entry = find(entries, id, "entry of the journal");
        if (!entry) {
            return std::unexpected(entry.error());
        }
        result.push_back(entry->id);
    }
    if (!arguments.ids.empty()) {
        return result;
    }
    const auto batch = meantBatch(HistoryBatch::group(entries), arguments);
    if (!batch) {
        return std::unexpected(batch.error());
    }
    for (const JournalEntry& entry : batch->items) {
        if (entry.isRestorable()) {
            result.push_back(entry.id);
        }
    }
    return result;
}

ExitCode run(const Arguments& arguments, const Tool& tool) {
    Cleaner cleaner{std::make_shared<Journal>(StoragePaths::journal())};
    const auto entries = cleaner.history();
    if (!entries) {
        complain("The journal can't be read: " + entries.error().description + ".");
        return ExitCode::problems;
    }
    const auto ids = meant(*entries, arguments);
    if (!ids) {
        complain(ids.error());
        return ExitCode::problems;
    }
    Tool::noteInterrupts(Tool::kFinishesFirst);
    return CleanRun::tell(cleaner.undo(*ids), tool);
}

}  // namespace

void addUndoCommand(CLI::App& app, Tool& tool) {
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* command = tool.add(
        app, "undo", "Restore items from the Trash to where they were", [arguments, &tool] {
            return run(*arguments, tool);
        });
    command->group(kCleanGroup);
    CLI::Option_group* what = command->add_option_group("What to restore, one of");
    what->require_option(1);
    what->add_option(
            "ids", arguments->ids, "Entries of \"brimlo history\", by the beginning of their ids")
        ->type_name("ENTRY");
    what->add_option("--batch", arguments->batch, "All items of this clean")->type_name("UUID");
    what->add_flag("--last", arguments->last, "All items of the latest clean that can be restored");
    command->footer(
        "Nothing is overwritten: if the original path is taken, the item stays in the Trash.");
}

}  // namespace Brimlo
