#include "BrimloCore/Shell/Shell.h"

#include "BrimloCore/Shell/ChildProcess.h"
#include "BrimloCore/Support/Text.h"

namespace Brimlo::Shell {

std::optional<Result> run(
    const std::string& executable,
    const std::vector<std::string>& arguments,
    const std::optional<std::string>& cwd,
    double timeoutSeconds) {
    const auto ending = ChildProcess::run({
        .executable = executable,
        .arguments = arguments,
        .cwd = cwd,
        .timeoutSeconds = timeoutSeconds,
    });
    if (!ending || ending->bySignal || ending->cut != ChildProcess::Cut::none) {
        return std::nullopt;
    }
    return Result{.status = ending->code, .out = Text::repaired(ending->out)};
}

}  // namespace Brimlo::Shell
