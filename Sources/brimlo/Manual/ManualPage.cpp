#include "brimlo/Manual/ManualPage.h"

#include <algorithm>
#include <sstream>
#include <string_view>

namespace Brimlo::ManualPage {

namespace {

/// Text that the formatter prints as it stands: what it would take for its own, or replace by a
/// prettier sign, is spelled out.
std::string literal(std::string_view text) {
    std::string line;
    for (const char c : text) {
        switch (c) {
            case '\\':
                line += "\\e";
                break;
            case '-':
                line += "\\-";
                break;
            case '~':
                line += "\\(ti";
                break;
            case '"':
                line += "\\(dq";
                break;
            case '\'':
                line += "\\(aq";
                break;
            default:
                line += c;
        }
    }
    return line.starts_with('.') ? "\\&" + line : line;
}

std::string sentence(std::string_view text) {
    return literal(text) + (text.ends_with('.') ? "\n" : ".\n");
}

/// "Fl \-depth Ar INT", "Ar PATH ..."
std::string form(const ArgumentDescription& argument) {
    std::string words;
    for (const std::string& name : argument.names) {
        words += (words.empty() ? "Fl " : " , Fl ") + literal(std::string_view{name}.substr(1));
    }
    if (!argument.value.empty()) {
        words += (words.empty() ? "Ar " : " Ar ") + argument.value;
    }
    // An option given again has one value each time; of operands there is a list.
    return argument.names.empty() && argument.isRepeatable ? words + " ..." : words;
}

/// The page tells once of what every command takes.
bool isOwn(const ArgumentDescription& option) {
    return option.names.back() != "--help" && option.names.back() != "--json";
}

void writeHead(std::ostream& out, const CommandDescription& command) {
    out << ".It Cm " << command.path.substr(command.path.find(' ') + 1);
    for (const ArgumentDescription& option : command.options) {
        if (isOwn(option)) {
            out << " Oo " << form(option) << " Oc";
        }
    }
    for (const ArgumentDescription& operand : command.operands) {
        out << (operand.isRequired ? " " : " Oo ") << form(operand)
            << (operand.isRequired ? "" : " Oc");
    }
    out << '\n' << sentence(command.text);
}

/// Operands that need no words ("ID") have none.
void writeArguments(std::ostream& out, const CommandDescription& command) {
    std::vector<ArgumentDescription> told;
    std::ranges::copy_if(command.operands, std::back_inserter(told), [](const auto& operand) {
        return !operand.text.empty();
    });
    std::ranges::copy_if(command.options, std::back_inserter(told), isOwn);
    if (told.empty()) {
        return;
    }
    out << ".Bl -tag -width Ds\n";
    for (const ArgumentDescription& argument : told) {
        out << ".It " << form(argument) << '\n' << sentence(argument.text);
        if (!argument.choices.empty()) {
            out << "One of";
            for (const std::string& choice : argument.choices) {
                out << (choice == argument.choices.front() ? " " : ", ") << literal(choice);
            }
            out << ".\n";
        }
    }
    out << ".El\n";
}

/// Indented lines are examples, to be shown as they are.
void writeFooter(std::ostream& out, const std::string& footer) {
    if (footer.empty()) {
        return;
    }
    out << ".Pp\n";
    bool inExamples = false;
    std::istringstream lines{footer};
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("  ") != inExamples) {
            inExamples = !inExamples;
            out << (inExamples ? ".Bd -literal -offset indent -compact\n" : ".Ed\n");
        }
        out << literal(inExamples ? line.substr(2) : line) << '\n';
    }
    out << (inExamples ? ".Ed\n" : "");
}

void write(std::ostream& out, const CommandDescription& command) {
    if (!command.commands.empty()) {
        for (const CommandDescription& below : command.commands) {
            write(out, below);
        }
        return;
    }
    writeHead(out, command);
    writeArguments(out, command);
    writeFooter(out, command.footer);
}

}  // namespace

std::string commands(const CommandDescription& program) {
    std::ostringstream out;
    std::string group;
    for (const CommandDescription& command : program.commands) {
        if (command.group != group) {
            out << (group.empty() ? "" : ".El\n") << ".Ss " << command.group
                << "\n.Bl -tag -width Ds\n";
            group = command.group;
        }
        write(out, command);
    }
    out << ".El\n";
    return out.str();
}

}  // namespace Brimlo::ManualPage
