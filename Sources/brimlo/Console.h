#pragma once

#include "BrimloCore/Cleaner/CleanReport.h"
#include "BrimloCore/Models/CleanupRule.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// What a person in a terminal sees.
namespace Brimlo::Console {

/// Prints a line on standard output. Paths in it have been through `shortPath`, and all else that
/// comes from files through one of the functions below or `Text::printable`.
void line(std::string_view text = "");

/// Prints a text dimly, set in by four blanks and broken between words at the terminal's width.
void paragraph(std::string_view text);

/// The text in colour or bold, where standard output is a terminal that wants it.
[[nodiscard]] std::string bold(std::string_view text);
[[nodiscard]] std::string dim(std::string_view text);

/// The rating's word in its colour.
[[nodiscard]] std::string badge(Risk risk);

/// The text with blanks before or behind it, so that it is `width` characters wide.
[[nodiscard]] std::string right(std::string_view text, std::size_t width);
[[nodiscard]] std::string left(std::string_view text, std::size_t width);

/// A count of bytes, as wide as all others, so that they stand in a column.
[[nodiscard]] std::string size(std::int64_t bytes);

/// A path as a person would write it: the home folder as "~".
[[nodiscard]] std::string shortPath(std::string_view path);

/// What a person knows an item by: its short path, or the kind and the id of a Docker object.
[[nodiscard]] std::string itemName(std::string_view path);

/// An item by its name, and why it did not go as meant.
[[nodiscard]] std::string problem(const ItemProblem& problem);

/// "1 item" or "12 items".
[[nodiscard]] std::string count(std::size_t number, std::string_view noun);

/// Whether a person can be asked: standard input and standard error are a terminal.
[[nodiscard]] bool canAsk();

/// Asks on standard error; only "y" or "yes" agrees.
[[nodiscard]] bool confirm(std::string_view question);

/// One line on standard error that says what the program is doing now, where that is a terminal.
/// Goes away with the object.
class Progress {
public:
    Progress() = default;
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    void show(std::string_view words);
    void clear();

private:
    bool isShown_ = false;
};

}  // namespace Brimlo::Console
