#include "brimlo/Manual/Completions.h"

#include <sstream>
#include <string_view>

namespace Brimlo::Completions {

namespace {

/// What stands for a value; the scripts have a function for each.
enum class Kind : std::uint8_t { anything, words, files, rules, settings };

Kind kind(const ArgumentDescription& argument) {
    if (!argument.choices.empty()) {
        return Kind::words;
    }
    const std::string& value = argument.value;
    return value == "PATH" || value == "FILE" ? Kind::files
           : value == "ID"                    ? Kind::rules
           : value == "KEY"                   ? Kind::settings
                                              : Kind::anything;
}

std::string joined(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& word : words) {
        line.append(line.empty() ? "" : " ").append(word);
    }
    return line;
}

std::vector<std::string> optionNames(const CommandDescription& command) {
    std::vector<std::string> names;
    for (const ArgumentDescription& option : command.options) {
        names.insert(names.end(), option.names.begin(), option.names.end());
    }
    return names;
}

std::vector<std::string> commandNames(const CommandDescription& command) {
    std::vector<std::string> names;
    names.reserve(command.commands.size());
    for (const CommandDescription& below : command.commands) {
        names.push_back(below.name());
    }
    return names;
}

/// A word in apostrophes; `apostrophe` is how the shell writes one within.
std::string shellWord(std::string_view text, std::string_view apostrophe = R"('\'')") {
    std::string word = "'";
    for (const char c : text) {
        word += c == '\'' ? std::string{apostrophe} : std::string{c};
    }
    return word + '\'';
}

/// The call that puts forth what an argument takes, in bash.
std::string bashCall(const ArgumentDescription& argument) {
    switch (kind(argument)) {
        case Kind::words:
            return "_brimlo_words " + shellWord(joined(argument.choices));
        case Kind::files:
            return "_brimlo_files";
        case Kind::rules:
            return "_brimlo_words \"$(_brimlo_rules)\"";
        case Kind::settings:
            return "_brimlo_words \"$(_brimlo_settings)\"";
        case Kind::anything:
            break;
    }
    return ":";
}

/// The same in zsh, as the action of `_arguments`.
std::string zshAction(const ArgumentDescription& argument) {
    switch (kind(argument)) {
        case Kind::words:
            return "(" + joined(argument.choices) + ")";
        case Kind::files:
            return "_files";
        case Kind::rules:
            return "__brimlo_rule_ids";
        case Kind::settings:
            return "__brimlo_setting_keys";
        case Kind::anything:
            break;
    }
    return " ";
}

/// The same in fish, as options of `complete`.
std::string fishAction(const ArgumentDescription& argument) {
    switch (kind(argument)) {
        case Kind::words:
            return " -a " + shellWord(joined(argument.choices));
        case Kind::files:
            return " -F";
        case Kind::rules:
            return " -a '(__brimlo_rules)'";
        case Kind::settings:
            return " -a '(__brimlo_settings)'";
        case Kind::anything:
            break;
    }
    return "";
}

std::string zshText(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (std::string_view{R"([]:\)"}.contains(c)) {
            escaped += '\\';
        }
        escaped += c;
    }
    return escaped;
}

/// "'--depth=[Show so many levels]:INT: '"; the "=" lets the value stand behind one, too.
void writeZshOption(std::ostream& out, const ArgumentDescription& option) {
    const std::string equals = option.value.empty() ? "" : "=";
    const std::string value =
        option.value.empty() ? "" : ":" + option.value + ":" + zshAction(option);
    const std::string again = option.isRepeatable ? "*" : "";
    for (const std::string& name : option.names) {
        out << " \\\n        "
            << shellWord(again + name + equals + "[" + zshText(option.text) + "]" + value);
    }
}

std::string zshFunctionName(const CommandDescription& command) {
    std::string name = "_" + command.path;
    for (char& c : name) {
        c = c == ' ' ? '_' : c;
    }
    return name;
}

void writeZshLeaf(std::ostream& out, const CommandDescription& command) {
    out << zshFunctionName(command) << "() {\n    _arguments -s";
    for (const ArgumentDescription& option : command.options) {
        writeZshOption(out, option);
    }
    for (const ArgumentDescription& operand : command.operands) {
        const std::string place = operand.isRepeatable ? "*" : "";
        out << " \\\n        " << shellWord(place + ":" + operand.value + ":" + zshAction(operand));
    }
    out << "\n}\n\n";
}

void writeZshBranch(std::ostream& out, const CommandDescription& command) {
    out << zshFunctionName(command) << "() {\n    local -a commands=(\n";
    for (const CommandDescription& below : command.commands) {
        out << "        " << shellWord(below.name() + ":" + zshText(below.text)) << '\n';
    }
    out << "    )\n    local -a options=(";
    for (const ArgumentDescription& option : command.options) {
        writeZshOption(out, option);
    }
    out << "\n    )\n    __brimlo_branch\n}\n\n";
}

/// "complete -c brimlo -n '__brimlo_at brimlo trash'"
std::string fishHead(const CommandDescription& command) {
    return "complete -c brimlo -n " + shellWord("__brimlo_at " + command.path);
}

std::string fishText(std::string_view text) {
    return " -d " + shellWord(text, R"(\')");
}

void writeFishOption(
    std::ostream& out, const std::string& head, const ArgumentDescription& option) {
    out << head;
    for (const std::string& name : option.names) {
        const bool isLong = name.starts_with("--");
        out << (isLong ? " -l " + name.substr(2) : " -s " + name.substr(1));
    }
    if (!option.value.empty()) {
        out << (kind(option) == Kind::files ? " -r" : " -x") << fishAction(option);
    }
    out << fishText(option.text) << '\n';
}

void writeFish(std::ostream& out, const CommandDescription& command) {
    const std::string head = fishHead(command);
    for (const CommandDescription& below : command.commands) {
        out << head << " -a " << below.name() << fishText(below.text) << '\n';
    }
    for (const ArgumentDescription& option : command.options) {
        writeFishOption(out, head, option);
    }
    for (const ArgumentDescription& operand : command.operands) {
        if (const std::string action = fishAction(operand); !action.empty()) {
            out << head << action << '\n';
        }
    }
}

}  // namespace

std::string paths(const CommandDescription& program) {
    std::string lines;
    for (const CommandDescription* command : program.all()) {
        lines += command->path + '\n';
    }
    return lines;
}

std::string bashValues(const CommandDescription& program) {
    std::ostringstream out;
    for (const CommandDescription* command : program.all()) {
        for (const ArgumentDescription& option : command->options) {
            if (!option.value.empty()) {
                out << "    " << shellWord(command->path + " " + option.names.back()) << ") "
                    << bashCall(option) << " ;;\n";
            }
        }
    }
    return out.str();
}

std::string bashWords(const CommandDescription& program) {
    std::ostringstream out;
    for (const CommandDescription* command : program.all()) {
        // Which operand it is doesn't matter: no command takes two that can be completed.
        const std::string call = command->operands.empty()
                                     ? "_brimlo_words " + shellWord(joined(commandNames(*command)))
                                     : bashCall(command->operands.front());
        out << "    " << shellWord(command->path)
            << ")\n        options=" << shellWord(joined(optionNames(*command)))
            << "\n        _brimlo_or_options " << call << " ;;\n";
    }
    return out.str();
}

std::string zshFunctions(const CommandDescription& program) {
    std::ostringstream out;
    for (const CommandDescription* command : program.all()) {
        if (command->commands.empty()) {
            writeZshLeaf(out, *command);
        } else {
            writeZshBranch(out, *command);
        }
    }
    return out.str();
}

std::string fishLines(const CommandDescription& program) {
    std::ostringstream out;
    for (const CommandDescription* command : program.all()) {
        writeFish(out, *command);
    }
    return out.str();
}

}  // namespace Brimlo::Completions
