#include "brimlo/PickerScreen.h"

#include "BrimloCore/Support/Text.h"
#include "brimlo/Console.h"
#include "brimlo/Tool.h"

#include <algorithm>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <cwchar>
#include <optional>
#include <string>
#include <string_view>

#include <curses.h>
#include <unistd.h>

namespace Brimlo::PickerScreen {

namespace {

constexpr std::string_view kKeys = "↑↓ move  Space tick  Enter review  q leave";
constexpr int kControlC = 3;
constexpr int kEscape = 27;
constexpr int kLinesBelow = 2;  ///< What the row means, and the sum with the keys.

/// A variable of the environment, null when it is unset.
const char* variable(const char* name) {
    return std::getenv(name);  // NOLINT(concurrency-mt-unsafe): set at start only
}

/// The beginning of a printable text that fits into so many columns.
std::string fitting(std::string_view text, int columns) {
    std::string result;
    int used = 0;
    for (const std::string_view character : Text::characters(text)) {
        wchar_t wide = 0;
        std::mbstate_t state{};
        std::mbrtowc(
            &wide, character.data(), character.size(), &state);  // NOLINT(*-mt-unsafe): own state
        used += std::max(wcwidth(wide), 0);
        if (used > columns) {
            break;
        }
        result += character;
    }
    return result;
}

void writeAt(int line, int column, std::string_view text, chtype look = A_NORMAL) {
    const int columns = getmaxx(stdscr) - column;
    if (columns <= 0 || line < 0 || wmove(stdscr, line, column) == ERR) {
        return;
    }
    wattrset(stdscr, static_cast<int>(look));
    waddstr(stdscr, fitting(Text::printable(text), columns).c_str());
    wattrset(stdscr, A_NORMAL);
}

/// The rows that the list has room for.
std::size_t listHeight() {
    return static_cast<std::size_t>(std::max(getmaxy(stdscr) - kLinesBelow, 1));
}

chtype colour(Risk risk) {
    return has_colors() ? static_cast<chtype>(COLOR_PAIR(static_cast<int>(risk) + 1)) : A_NORMAL;
}

std::string nameOf(const ItemPicker::Row& row) {
    if (!row.group) {
        return row.suggestion->name + " · " + row.suggestion->group;
    }
    if (row.group->isFolder()) {
        return Console::shortPath(row.group->folder) + "/  " +
               Console::count(row.group->items.size(), "item");
    }
    const SuggestionItem& item = row.suggestion->items[row.group->items.front()];
    return Console::itemName(item.path, item.detail);
}

void draw(const ItemPicker& picker, const ItemPicker::Row& row, int line, bool isCurrent) {
    const ItemPicker::Mark mark = picker.mark(row);
    const char* box = mark == ItemPicker::Mark::none  ? "[ ]"
                      : mark == ItemPicker::Mark::all ? "[x]"
                                                      : "[-]";
    const int indent = row.group ? 2 : 0;
    const chtype look = (isCurrent ? A_REVERSE : A_NORMAL) | (row.group ? A_NORMAL : A_BOLD);
    const std::string beginning = box + Console::size(row.size()) + "  ";
    writeAt(line, indent, beginning, look);
    int column = indent + static_cast<int>(Text::characterCount(beginning));
    if (!row.group) {
        constexpr std::size_t kRatingWidth = 10;
        writeAt(
            line,
            column,
            Console::left(label(row.suggestion->risk), kRatingWidth),
            look | colour(row.suggestion->risk));
        column += static_cast<int>(kRatingWidth);
    }
    writeAt(line, column, nameOf(row), look);
}

/// What the person should know of the current row.
std::string meaning(const Suggestion& suggestion) {
    return suggestion.runningApps.empty()
               ? suggestion.regenerates
               : suggestion.runningApps.front() + " is running: close it first.";
}

void draw(ItemPicker& picker) {
    werase(stdscr);
    const std::size_t height = listHeight();
    const std::size_t top = picker.top(height);
    const auto& rows = picker.rows();
    for (std::size_t i = top; i < std::min(top + height, rows.size()); ++i) {
        draw(picker, rows[i], static_cast<int>(i - top), i == picker.cursor());
    }
    const int below = getmaxy(stdscr) - kLinesBelow;
    const CleanFigures& figures = picker.figures();
    writeAt(below, 0, meaning(*rows[picker.cursor()].suggestion), A_DIM);
    writeAt(
        below + 1,
        0,
        Console::count(static_cast<std::size_t>(figures.count), "item") + ", " + figures.amount() +
            "   " + std::string{kKeys},
        A_BOLD);
    wmove(stdscr, static_cast<int>(picker.cursor() - top), 0);
    wrefresh(stdscr);
}

std::optional<ItemPicker::Key> meant(int key) {
    switch (key) {
        case KEY_UP:
        case 'k':
            return ItemPicker::Key::up;
        case KEY_DOWN:
        case 'j':
            return ItemPicker::Key::down;
        case KEY_PPAGE:
            return ItemPicker::Key::pageUp;
        case KEY_NPAGE:
            return ItemPicker::Key::pageDown;
        case KEY_HOME:
            return ItemPicker::Key::first;
        case KEY_END:
            return ItemPicker::Key::last;
        case ' ':
            return ItemPicker::Key::toggle;
        default:
            return std::nullopt;
    }
}

void setColours() {
    if (variable("NO_COLOR") != nullptr || !has_colors()) {
        return;
    }
    start_color();
    use_default_colors();
    for (const auto& [risk, ink] : {
             std::pair{Risk::safe,    COLOR_GREEN },
             std::pair{Risk::rebuild, COLOR_YELLOW},
             std::pair{Risk::review,  COLOR_RED   }
    }) {
        init_pair(static_cast<short>(static_cast<int>(risk) + 1), static_cast<short>(ink), -1);
    }
}

/// Follows the keys until one ends the list. A changed size of the terminal comes as a key, too.
End follow(ItemPicker& picker) {
    while (true) {
        draw(picker);
        const int key = wgetch(stdscr);
        if (key == kControlC) {
            return End::interrupted;
        }
        if (key == kEscape || key == 'q' || key == ERR) {
            return End::left;
        }
        const bool isEnter = key == KEY_ENTER || key == '\n' || key == '\r';
        if (isEnter && picker.figures().count > 0) {
            return End::accepted;
        }
        if (const auto move = meant(key)) {
            picker.press(*move, listHeight());
        }
    }
}

}  // namespace

bool isPossible() {
    const char* const named = variable("TERM");
    const std::string_view terminal = named == nullptr ? "" : named;
    return isatty(STDIN_FILENO) == 1 && isatty(STDOUT_FILENO) == 1 && !terminal.empty() &&
           terminal != "dumb" && terminal != "unknown";
}

End run(ItemPicker& picker) {
    constexpr int kEscapeDelay = 50;  // Milliseconds in which an arrow's other bytes arrive.
    std::setlocale(LC_CTYPE, "");     // NOLINT(concurrency-mt-unsafe): no other thread is at work
    if (MB_CUR_MAX == 1) {
        std::setlocale(LC_CTYPE, "C.UTF-8");  // NOLINT(concurrency-mt-unsafe)
    }
    // A signal from elsewhere finds the handler of the screen, which restores the terminal.
    std::signal(SIGINT, SIG_DFL);
    SCREEN* const screen = newterm(nullptr, stdout, stdin);
    End end = End::impossible;
    if (screen != nullptr) {
        raw();
        noecho();
        keypad(stdscr, true);
        set_escdelay(kEscapeDelay);
        setColours();
        end = follow(picker);
        endwin();
        delscreen(screen);
    }
    Tool::endOnInterrupt();
    return end;
}

}  // namespace Brimlo::PickerScreen
