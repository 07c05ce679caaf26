#include "BrimloCore/Platform/Fmt.h"
#include "BrimloCore/Support/Text.h"
#include "BrimloCore/VolumeAccount/VolumeAccount.h"
#include "brimlo/Commands.h"
#include "brimlo/Console.h"
#include "brimlo/JsonForms.h"

#include <memory>

namespace Brimlo {

namespace {

/// Printed; `--json` has all lines.
constexpr std::size_t kMostLines = 20;

void show(const AccountLine& line) {
    const std::string name = line.kind == AccountLine::Kind::area ? Console::shortPath(line.name)
                                                                  : Text::printable(line.name);
    Console::line(
        Console::size(line.bytes) + "  " + name +
        (line.files > 0
             ? Console::dim("  " + Console::count(static_cast<std::size_t>(line.files), "file"))
             : ""));
}

void show(const VolumeAccount& account) {
    const Platform::VolumeUse& use = account.use;
    Console::line(
        Console::bold(Console::shortPath(account.tops.front())) + " has " + Fmt::bytes(use.total) +
        ": " + Fmt::bytes(account.taken()) + " taken, " + Fmt::bytes(use.available) + " free.");
    for (const AccountLine& line : account.largest(kMostLines)) {
        show(line);
    }
    if (use.files > 0) {
        Console::line(Console::dim(
            std::to_string(use.files - use.freeFiles) + " of " + std::to_string(use.files) +
            " entries for files are used."));
    }
    for (const std::string& remark : account.remarks()) {
        Console::paragraph(Text::printable(remark));
    }
}

ExitCode run(const std::string& typed, const Tool& tool) {
    ScanControl control;
    std::optional<VolumeAccount> account;
    {
        const Console::WalkProgress progress{control};
        account = VolumeAccount::of(meantPath(typed), control);
    }
    if (!account) {
        complain("The volume of " + typed + " could not be looked at.");
        return ExitCode::problems;
    }
    if (tool.isJson()) {
        print(JsonForms::account(*account));
    } else {
        show(*account);
    }
    return ExitCode::done;
}

}  // namespace

void addAccountCommand(CLI::App& app, Tool& tool) {
    const auto path = std::make_shared<std::string>("~");
    CLI::App* command =
        tool.add(app, "account", "Account for all that is taken on a volume", [path, &tool] {
            return run(*path, tool);
        });
    command->group(kLookGroup);
    addPath(*command, *path, "A path on the volume (default: your home folder)");
    command->footer(
        "The lines add up to what is taken. What no file and nothing known of the file system\n"
        "explains is the last line; it is below 0 where files share their data.");
}

}  // namespace Brimlo
