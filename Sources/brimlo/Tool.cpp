#include "brimlo/Tool.h"

#include "BrimloCore/Support/Text.h"

#include <cstdio>
#include <utility>

namespace Brimlo {

CLI::App* Tool::add(
    CLI::App& parent, const std::string& name, const std::string& description, Run run) {
    CLI::App* command = parent.add_subcommand(name, description);
    command->add_flag("--json", json_, "Answer with one JSON document");
    command->callback([this, run = std::move(run)] { run_ = run; });
    return command;
}

ExitCode Tool::run() const {
    return run_();
}

void print(const Json::Value& document) {
    std::puts(Json::compact(document).c_str());
}

void complain(std::string_view sentence) {
    const std::string text = Text::printable(sentence);
    std::fprintf(stderr, "brimlo: %s\n", text.c_str());
}

}  // namespace Brimlo
