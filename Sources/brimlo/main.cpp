#include "BrimloCore/Platform/Processes.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "brimlo/Commands.h"
#include "brimlo/PickerScreen.h"
#include "brimlo/Tool.h"

#include <cstdio>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    using namespace Brimlo;
    Platform::prepareProcess();
    Tool::endOnInterrupt();

    CLI::App app;
    Tool tool;
    addCommands(app, tool);

    try {
        if (argc == 1 && PickerScreen::isPossible()) {
            app.parse("clean");  // It offers the list to tick.
        } else {
            app.parse(argc, argv);
        }
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
    if (const auto reason = StoragePaths::reasonNotToStart()) {
        complain(*reason);
        return static_cast<int>(ExitCode::problems);
    }
    ExitCode exit = tool.run();
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        complain("The answer could not be written.");
        exit = exit == ExitCode::done ? ExitCode::problems : exit;
    }
    return static_cast<int>(exit);
}
