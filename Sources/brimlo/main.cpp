#include "brimlo/Interrupt.h"
#include "brimlo/Tool.h"

#include <cstdio>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    using namespace Brimlo;
    Interrupt::install();

    CLI::App app{"Finds what fills the disk and moves what can safely go to the Trash."};
    app.name("brimlo");
    app.set_version_flag("--version", "brimlo " BRIMLO_VERSION);
    app.require_subcommand(1);
    app.footer(
        "Examples:\n"
        "  brimlo suggest                  what can be cleaned, and how risky that is\n"
        "  brimlo clean --safe --dry-run   what a clean of the safe part would take\n"
        "  brimlo clean --safe --yes       take it to the Trash\n"
        "  brimlo undo --last              put it all back\n"
        "\n"
        "Exit codes: 0 done, 1 done with problems, 2 wrong usage, 130 interrupted.\n"
        "\"brimlo COMMAND --help\" tells more of a command.");

    Tool tool;
    addSuggestCommand(app, tool);
    addScanCommand(app, tool);
    addSizeCommand(app, tool);
    addLargeCommand(app, tool);
    addDuplicatesCommand(app, tool);
    addDockerCommand(app, tool);
    addSafetyCommand(app, tool);
    addBackupCommand(app, tool);
    addCoverageCommand(app, tool);
    addCleanCommand(app, tool);
    addAutocleanCommand(app, tool);
    addHistoryCommand(app, tool);
    addUndoCommand(app, tool);
    addTrashCommand(app, tool);
    addRulesCommand(app, tool);
    addConfigCommand(app, tool);

    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& success) {
        return app.exit(success);
    } catch (const CLI::ParseError& error) {
        const std::vector<std::string> rest = app.remaining(true);
        complain(
            rest.empty() || dynamic_cast<const CLI::RequiredError*>(&error) == nullptr
                ? error.what()
                : "\"" + rest.front() + "\" is not understood; \"brimlo --help\" tells what is.");
        return static_cast<int>(ExitCode::wrongUsage);
    }
    ExitCode exit = tool.run();
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        complain("The answer could not be written.");
        exit = exit == ExitCode::done ? ExitCode::problems : exit;
    }
    return static_cast<int>(exit);
}
