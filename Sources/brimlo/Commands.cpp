#include "brimlo/Commands.h"

namespace Brimlo {

void addCommands(CLI::App& app, Tool& tool) {
    app.description("Finds what fills the disk and moves what can safely go to the Trash.");
    app.name("brimlo");
    app.set_version_flag("--version", "brimlo " BRIMLO_VERSION, "Print the version and exit");
    app.require_subcommand(1);
    app.footer(
        "Without a command, on a terminal: a list to tick what is to be cleaned.\n"
        "\n"
        "Examples:\n"
        "  brimlo suggest                  what can be cleaned, and how risky that is\n"
        "  brimlo clean --safe --dry-run   what a clean of the safe part would take\n"
        "  brimlo clean --safe --yes       take it to the Trash\n"
        "  brimlo undo --last              put it all back\n"
        "\n"
        "Exit codes: 0 done, 1 done with problems, 2 wrong usage, 130 interrupted.\n"
        "\"brimlo COMMAND --help\" tells more of a command.");

    addSuggestCommand(app, tool);
    addScanCommand(app, tool);
    addSizeCommand(app, tool);
    addLargeCommand(app, tool);
    addDuplicatesCommand(app, tool);
    addDockerCommand(app, tool);
    addSystemCommand(app, tool);
    addAccountCommand(app, tool);
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
}

}  // namespace Brimlo
