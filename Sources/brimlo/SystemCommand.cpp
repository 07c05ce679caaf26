#include "BrimloCore/Platform/Fmt.h"
#include "BrimloCore/Support/Text.h"
#include "BrimloCore/SystemSpace/SystemSpace.h"
#include "brimlo/Commands.h"
#include "brimlo/Console.h"
#include "brimlo/JsonForms.h"

namespace Brimlo {

namespace {

void show(const SystemPart& part) {
    Console::line(
        Console::size(part.size) + "  " + Console::bold(part.store.name) +
        (part.isComplete ? "" : Console::dim("  what you may read of it")));
    Console::paragraph(part.store.about);
    for (const std::string& path : part.store.paths) {
        Console::paragraph(Console::shortPath(path));
    }
    for (const std::string& command : part.store.commands) {
        Console::line("    " + Text::printable(command));
    }
}

ExitCode run(const Tool& tool) {
    std::vector<SystemPart> parts;
    {
        Console::Progress progress;
        progress.show("Measuring…");
        parts = SystemSpace::measure();
    }
    if (tool.isJson()) {
        print(JsonForms::systemParts(parts));
        return ExitCode::done;
    }
    for (const SystemPart& part : parts) {
        show(part);
    }
    if (parts.empty()) {
        Console::line("Nothing outside your files that you may look at.");
    }
    return ExitCode::done;
}

}  // namespace

void addSystemCommand(CLI::App& app, Tool& tool) {
    CLI::App* command =
        tool.add(app, "system", "Measure what the system keeps outside your files", [&tool] {
            return run(tool);
        });
    command->group(kLookGroup);
    command->footer(
        "Brimlo never removes any of it. Below each part stands the command of its owner that\n"
        "does, to be run by you.");
}

}  // namespace Brimlo
