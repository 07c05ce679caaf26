#include "brimlo/Tool.h"

#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/Text.h"

#include <atomic>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

#include <unistd.h>

namespace Brimlo {

namespace {

// A signal handler may only use lock-free atomics and the functions of signal-safety(7).
std::atomic<bool> isNoted = false;
std::atomic<const std::string*> saidWhenNoted = nullptr;  ///< Without it, Ctrl-C ends the program.
static_assert(std::atomic<bool>::is_always_lock_free);
static_assert(std::atomic<const std::string*>::is_always_lock_free);

void say(std::string_view text) {
    static_cast<void>(!write(STDERR_FILENO, text.data(), text.size()));
}

void handle(int) {
    if (const std::string* const said = saidWhenNoted) {
        isNoted = true;
        say(*said);
        return;
    }
    say("\n");
    _exit(static_cast<int>(ExitCode::interrupted));
}

CLI::Option* asPath(CLI::Option* option) {
    const auto check = [](const std::string& path) {
        const auto meant = Path::typed(path);
        return meant ? std::string{} : meant.error().description;
    };
    return option->type_name("PATH")->check(CLI::Validator{check, ""});
}

}  // namespace

CLI::App* Tool::add(
    CLI::App& parent, const std::string& name, const std::string& description, Run run) {
    CLI::App* command = parent.add_subcommand(name, description);
    command->add_flag("--json", json_, "Answer with one JSON document");
    command->callback([this, run = std::move(run)] { run_ = run; });
    return command;
}

CLI::App* Tool::addTaking(
    const std::string& argument,
    CLI::App& parent,
    const std::string& name,
    const std::string& description,
    const std::function<ExitCode(const std::string&, const Tool&)>& run) {
    const auto text = std::make_shared<std::string>();
    CLI::App* command =
        add(parent, name, description, [this, text, run] { return run(*text, *this); });
    command->add_option(argument, *text)->required()->type_name(argument);
    return command;
}

ExitCode Tool::run() const {
    return run_();
}

void Tool::endOnInterrupt() {
    saidWhenNoted = nullptr;
    std::signal(SIGPIPE, SIG_DFL);
    struct sigaction action{};
    action.sa_handler = handle;
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
}

void Tool::noteInterrupts(std::string_view words) {
    static std::string said;
    said = "\nbrimlo: " + std::string{words} + ".\n";
    saidWhenNoted = &said;
    // Nor may a closed standard output stop the clean.
    std::signal(SIGPIPE, SIG_IGN);
}

bool Tool::wasInterrupted() {
    return isNoted;
}

void print(const Json::Value& document) {
    std::puts(Json::compact(document).c_str());
}

void complain(std::string_view sentence) {
    const char* end = sentence.ends_with('.') ? "" : ".";
    std::fprintf(stderr, "brimlo: %s%s\n", Text::printable(sentence).c_str(), end);
}

CLI::Option* addPath(CLI::App& command, std::string& path, const std::string& description) {
    return asPath(command.add_option("path", path, description));
}

CLI::Option* addPaths(
    CLI::App& command, std::vector<std::string>& paths, const std::string& description) {
    return asPath(command.add_option("paths", paths, description));
}

std::string meantPath(const std::string& typed) {
    return Path::typed(typed).value_or(typed);
}

CLI::Validator wholeNumber() {
    const auto check = [](const std::string& text) {
        std::int64_t number = -1;
        const char* end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, number);
        return error == std::errc{} && stop == end && number >= 0
                   ? std::string{}
                   : "\"" + text + "\" is not a whole number (0 or greater).";
    };
    return {check, ""};
}

}  // namespace Brimlo
