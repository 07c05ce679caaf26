#include "brimlo/Commands.h"
#include "brimlo/Manual/Completions.h"
#include "brimlo/Manual/ManualPage.h"

#include <cstdio>
#include <fstream>
#include <map>
#include <span>

namespace {

using namespace Brimlo;

/// What stands in the templates, alone on a line.
using Pieces = std::map<std::string, std::string>;

Pieces pieces() {
    CLI::App app;
    Tool tool;
    addCommands(app, tool);
    const CommandDescription program = CommandDescription::of(app);
    return {
        {"@title@",      ".Dt BRIMLO 1\n.Os brimlo " BRIMLO_VERSION "\n"},
        {"@commands@",   ManualPage::commands(program)                  },
        {"@paths@",      Completions::paths(program)                    },
        {"@bashValues@", Completions::bashValues(program)               },
        {"@bashWords@",  Completions::bashWords(program)                },
        {"@zsh@",        Completions::zshFunctions(program)             },
        {"@fish@",       Completions::fishLines(program)                },
    };
}

bool fill(const Pieces& pieces, const std::string& from, const std::string& to) {
    std::ifstream in{from};
    std::ofstream out{to};
    for (std::string line; std::getline(in, line);) {
        const auto piece = pieces.find(line);
        out << (piece == pieces.end() ? line + '\n' : piece->second);
    }
    out.close();
    return in.eof() && out;
}

}  // namespace

/// Fills the templates of one folder and writes them into another.
int main(int argc, char** argv) {
    const std::span arguments{argv, static_cast<std::size_t>(argc)};
    if (argc != 3) {
        std::fputs("Usage: BrimloManual TEMPLATES FOLDER\n", stderr);
        return 2;
    }
    const Pieces filling = pieces();
    for (const char* name : {"/brimlo.1", "/brimlo.bash", "/brimlo.fish", "/brimlo.zsh"}) {
        if (!fill(
                filling,
                std::string{arguments[1]} + name + ".in",
                arguments[2] + std::string{name})) {
            std::fprintf(stderr, "BrimloManual: %s could not be written\n", name + 1);
            return 1;
        }
    }
    return 0;
}
