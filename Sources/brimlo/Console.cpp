#include "brimlo/Console.h"

#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Docker/DockerSnapshot.h"
#include "BrimloCore/Platform/Fmt.h"
#include "BrimloCore/Support/Text.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

#include <sys/ioctl.h>
#include <unistd.h>

namespace Brimlo::Console {

namespace {

constexpr std::string_view kEraseLine = "\r\033[K";
constexpr std::chrono::milliseconds kSampling{150};

bool hasColour() {
    static const bool kHasColour =
        isatty(STDOUT_FILENO) == 1 &&
        std::getenv("NO_COLOR") == nullptr;  // NOLINT(concurrency-mt-unsafe): set at start only
    return kHasColour;
}

std::string styled(std::string_view code, std::string_view text) {
    const std::string shown = Text::printable(text);
    return hasColour() ? "\033[" + std::string{code} + "m" + shown + "\033[0m" : shown;
}

std::string blanks(std::string_view text, std::size_t width) {
    const std::size_t used = Text::characterCount(text);
    return std::string(width > used ? width - used : 0, ' ');
}

/// The terminal's width in columns, or 100 for a file.
std::size_t terminalWidth() {
    constexpr std::size_t kPageWidth = 100;
    constexpr std::size_t kNarrowest = 40;
    winsize size{};
    const bool isKnown = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? std::max<std::size_t>(size.ws_col, kNarrowest) : kPageWidth;
}

}  // namespace

void line(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fputc('\n', stdout);
}

void paragraph(std::string_view text) {
    constexpr std::string_view kIndent = "    ";
    const std::size_t room = terminalWidth() - kIndent.size();
    while (!text.empty()) {
        std::size_t end = text.size();
        if (end > room) {
            const std::size_t space = text.rfind(' ', room);
            end = space == std::string_view::npos ? std::min(text.find(' '), text.size()) : space;
        }
        line(std::string{kIndent} + dim(text.substr(0, end)));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

std::string bold(std::string_view text) {
    return styled("1", text);
}

std::string dim(std::string_view text) {
    return styled("2", text);
}

std::string badge(Risk risk) {
    constexpr std::size_t kWidth = 8;
    const char* colour = risk == Risk::safe ? "32" : risk == Risk::rebuild ? "33" : "31";
    return styled(colour, left(label(risk), kWidth));
}

std::string right(std::string_view text, std::size_t width) {
    return blanks(text, width) + std::string{text};
}

std::string left(std::string_view text, std::size_t width) {
    return Text::printable(text) + blanks(text, width);
}

std::string size(std::int64_t bytes) {
    constexpr std::size_t kWidth = 10;
    return right(Fmt::bytes(bytes), kWidth);
}

std::string localTime(std::chrono::sys_seconds time) {
    const std::time_t seconds = time.time_since_epoch().count();
    std::tm local{};
    localtime_r(&seconds, &local);
    std::array<char, 32> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", &local);
    return {text.data(), length};
}

std::string shortPath(std::string_view path) {
    return Text::printable(UserRules::tildeForm(path));
}

std::string itemName(std::string_view path, const std::optional<std::string>& title) {
    return isPseudoPath(path) ? Text::printable(DockerObject::words(path, title.value_or("")))
                              : shortPath(path);
}

std::string folder(const ItemGroup& group) {
    return shortPath(group.folder) + "/  " + dim(count(group.items.size(), "item"));
}

std::string problem(const ItemProblem& problem) {
    return itemName(problem.path, problem.title) + ": " + Text::printable(problem.reason);
}

std::string count(std::size_t number, std::string_view noun) {
    return std::to_string(number) + " " + std::string{noun} + (number == 1 ? "" : "s");
}

bool canAsk() {
    return isatty(STDIN_FILENO) == 1 && isatty(STDERR_FILENO) == 1;
}

bool confirm(std::string_view question) {
    std::cerr << question << " [y/N] " << std::flush;
    std::string answer;
    std::getline(std::cin, answer);
    const std::string word = Text::lowercased(Text::trimmed(answer));
    return word == "y" || word == "yes";
}

Progress::~Progress() {
    clear();
}

void Progress::clear() {
    if (isShown_) {
        std::cerr << kEraseLine << std::flush;
        isShown_ = false;
    }
}

void Progress::show(std::string_view words) {
    if (isatty(STDERR_FILENO) == 1) {
        isShown_ = true;
        std::cerr << kEraseLine << Text::printable(words) << std::flush;
    }
}

WalkProgress::WalkProgress(const ScanControl& control)
    : control_{control}
    , thread_{[this] { show(); }} {}

WalkProgress::~WalkProgress() {
    {
        const std::lock_guard guard{mutex_};
        hasEnded_ = true;
    }
    ended_.notify_all();
    thread_.join();
}

void WalkProgress::show() {
    Progress shown;
    std::unique_lock guard{mutex_};
    while (!ended_.wait_for(guard, kSampling, [this] { return hasEnded_; })) {
        const ScanControl::Progress progress = control_.progress();
        shown.show(
            std::to_string(progress.files) + " files, " + Fmt::bytes(progress.bytes) + "  " +
            shortPath(progress.path));
    }
    shown.clear();
}

}  // namespace Brimlo::Console
