#include "brimlo/Manual/CommandDescription.h"

#include "BrimloCore/Models/Persona.h"

#include <string_view>

namespace Brimlo {

namespace {

std::vector<std::string> audiences() {
    std::vector<std::string> words;
    words.reserve(kAllPersonas.size());
    for (const Persona persona : kAllPersonas) {
        words.emplace_back(rawValue(persona));
    }
    return words;
}

/// The words of "{size,name}".
std::vector<std::string> wordsIn(std::string_view list) {
    return CLI::detail::split(std::string{list.substr(1, list.size() - 2)}, ',');
}

/// The library writes the type, and behind a colon what checks the value: "TEXT:AUDIENCE",
/// "KEY:{size,name}".
void describeValue(const std::string& type, ArgumentDescription& argument) {
    const std::size_t colon = type.find(':');
    const std::string check = colon == std::string::npos ? "" : type.substr(colon + 1);
    argument.value = type.substr(0, colon);
    if (check == "AUDIENCE") {
        argument.value = check;
        argument.choices = audiences();
    } else if (check.starts_with('{')) {
        argument.choices = wordsIn(check);
    }
}

ArgumentDescription describe(const CLI::Option& option) {
    ArgumentDescription argument{
        .text = option.get_description(),
        .isRequired = option.get_required(),
        .isRepeatable = option.get_expected_max() > 1,
    };
    for (const std::string& name : option.get_snames()) {
        argument.names.push_back("-" + name);
    }
    for (const std::string& name : option.get_lnames()) {
        argument.names.push_back("--" + name);
    }
    if (option.get_positional() || option.get_expected_max() > 0) {
        describeValue(option.get_type_name(), argument);
    }
    return argument;
}

void addArguments(const CLI::App& app, CommandDescription& command) {
    for (const CLI::Option* option : app.get_options()) {
        (option->get_positional() ? command.operands : command.options)
            .push_back(describe(*option));
    }
}

CommandDescription describe(const CLI::App& app, const std::string& above) {
    CommandDescription command{
        .path = above + app.get_name(),
        .group = app.get_group(),
        .text = app.get_description(),
        .footer = app.get_footer(),
    };
    addArguments(app, command);
    for (const CLI::App* below : app.get_subcommands([](const CLI::App*) { return true; })) {
        if (below->get_name().empty()) {
            addArguments(*below, command);  // A group of options that exclude each other.
            continue;
        }
        command.commands.push_back(describe(*below, command.path + " "));
        // One without lines of its own got those of the command above.
        if (below->get_footer() == app.get_footer()) {
            command.commands.back().footer.clear();
        }
    }
    return command;
}

void collect(const CommandDescription& command, std::vector<const CommandDescription*>& all) {
    all.push_back(&command);
    for (const CommandDescription& below : command.commands) {
        collect(below, all);
    }
}

}  // namespace

CommandDescription CommandDescription::of(const CLI::App& app) {
    return describe(app, "");
}

std::vector<const CommandDescription*> CommandDescription::all() const {
    std::vector<const CommandDescription*> found;
    collect(*this, found);
    return found;
}

}  // namespace Brimlo
