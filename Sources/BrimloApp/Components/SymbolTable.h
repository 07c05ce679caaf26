#pragma once

#include <optional>
#include <span>
#include <string_view>

/// Which drawing stands for which symbol.
///
/// A symbol is named by what it means to the screens and the core ("trash",
/// "checkmark.circle.fill"); the drawings are those in `icons`.
namespace Brimlo::SymbolTable {

struct Entry {
    std::string_view symbol;
    std::string_view file;  ///< Without folder and ".svg".
};

/// All of them, sorted by symbol, each once.
[[nodiscard]] std::span<const Entry> entries();

/// The name of the symbol's drawing, or nullopt for a symbol that nobody drew.
[[nodiscard]] std::optional<std::string_view> file(std::string_view symbol);

}  // namespace Brimlo::SymbolTable
