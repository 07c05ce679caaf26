#include "BrimloCore/Platform/PeriodicJob.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

// A job is a service and a timer of systemd's user manager: systemd.service(5), systemd.timer(5),
// systemd.syntax(7). They lie in "~/.config" whatever this process's `XDG_CONFIG_HOME` is, because
// the manager was started at login without a shell's environment.

namespace Brimlo::Platform {

namespace {

constexpr std::string_view kStart = "ExecStart=";

/// Starts a program whose path systemd accepts only as an argument.
constexpr std::array<std::string_view, 3> kDetour{"/bin/sh", "-c", R"(exec "$0" "$@")"};

/// With "%" doubled: a single one begins a placeholder.
std::string literal(std::string_view text) {
    std::string result;
    for (const char character : text) {
        result.append(character == '%' ? 2 : 1, character);
    }
    return result;
}

std::string inQuotes(std::string_view text) {
    std::string result{'"'};
    for (const char character : literal(text)) {
        if (character == '"' || character == '\\') {
            result += '\\';
        }
        result += character;
    }
    return result + '"';
}

/// The value of "ExecStart". The colon before the program turns the expansion of "$" off.
std::string commandLine(std::vector<std::string> arguments) {
    if (arguments.front().find_first_of(R"("'\)") != std::string::npos) {
        arguments.insert(arguments.begin(), kDetour.begin(), kDetour.end());
    }
    std::string line = inQuotes(":" + arguments.front());
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        line += ' ' + inQuotes(arguments[i]);
    }
    return line;
}

std::string service(const PeriodicJob::Settings& settings) {
    const std::string output = "append:" + literal(settings.log) + "\n";
    return "[Unit]\n"
           "Description=Brimlo's unattended clean\n"
           "\n"
           "[Service]\n"
           "Type=oneshot\n"
           // Without a timeout, a run that hangs would prevent all later ones.
           "TimeoutStartSec=2h\n" +
           std::string{kStart} + commandLine(settings.arguments) +
           "\n"
           "StandardOutput=" +
           output + "StandardError=" + output;
}

/// The first span starts with the timer, the second with the last run.
std::string timer(const PeriodicJob::Settings& settings) {
    const std::string span = std::to_string(settings.intervalSeconds) + "s\n";
    return "[Unit]\n"
           "Description=Starts Brimlo's unattended clean now and then\n"
           "\n"
           "[Timer]\n"
           "OnActiveSec=" +
           span + "OnUnitActiveSec=" + span +
           "\n"
           "[Install]\n"
           "WantedBy=timers.target\n";
}

/// Removes one character of a word from `text`, unescaping it. Nullopt for other escapes and for
/// placeholders, which this program never writes.
std::optional<char> takeCharacter(std::string_view& text) {
    const char first = text.front();
    text.remove_prefix(1);
    if (first != '\\' && first != '%') {
        return first;
    }
    const std::string_view known = first == '%' ? "%" : R"("'\)";
    if (text.empty() || !known.contains(text.front())) {
        return std::nullopt;
    }
    const char second = text.front();
    text.remove_prefix(1);
    return second;
}

/// The words of a command line; nullopt when it is not understood.
std::optional<std::vector<std::string>> words(std::string_view line) {
    std::vector<std::string> result;
    bool isInWord = false;
    char quote = 0;
    while (!line.empty()) {
        const char next = line.front();
        if (quote == 0 && (next == ' ' || next == '\t')) {
            isInWord = false;
            line.remove_prefix(1);
            continue;
        }
        if (!isInWord) {
            isInWord = true;
            result.emplace_back();
        }
        if (next == quote || (quote == 0 && (next == '"' || next == '\''))) {
            quote = quote == 0 ? next : '\0';
            line.remove_prefix(1);
        } else if (const auto character = takeCharacter(line)) {
            result.back() += *character;
        } else {
            return std::nullopt;
        }
    }
    return quote == 0 ? std::optional{result} : std::nullopt;
}

}  // namespace

PeriodicJob::PeriodicJob(std::string label, std::string home)
    : label_(std::move(label))
    , folder_(std::move(home) + "/.config/systemd/user/") {}

std::vector<std::string> PeriodicJob::paths() const {
    // The last one is the symlink that "systemctl enable" makes.
    return {
        folder_ + label_ + ".service",
        folder_ + label_ + ".timer",
        folder_ + "timers.target.wants/" + label_ + ".timer",
    };
}

std::expected<std::vector<PeriodicJob::File>, Error> PeriodicJob::files(
    const Settings& settings) const {
    if (auto fit = checkFit(settings); !fit) {
        return std::unexpected(std::move(fit.error()));
    }
    return std::vector<File>{
        {.path = folder_ + label_ + ".timer",   .text = timer(settings)  },
        {.path = folder_ + label_ + ".service", .text = service(settings)},
    };
}

std::vector<PeriodicJob::Command> PeriodicJob::commands(Moment moment) const {
    // "env" finds systemctl in whatever folder the system has it.
    const auto systemctl = [&](std::vector<std::string> words) {
        const std::vector<std::string> start{"/usr/bin/env", "systemctl", "--user"};
        words.insert(words.begin(), start.begin(), start.end());
        return words;
    };
    const std::string timer = label_ + ".timer";
    switch (moment) {
        case Moment::beforeChange:
            return {systemctl({"stop", timer})};
        case Moment::afterWriting:
            return {systemctl({"daemon-reload"}), systemctl({"enable", "--now", timer})};
        case Moment::afterRemoving:
            break;
    }
    return {systemctl({"daemon-reload"})};
}

PeriodicJob::Command PeriodicJob::notification(const std::string& text) {
    const std::string name = "org.freedesktop.Notifications";
    // The numbers are the notification to replace, and the time that the desktop shows it by
    // default. An action could not be answered, because the job has ended by then.
    return {
        "/usr/bin/env",
        "gdbus",
        "call",
        "--session",
        "--dest",
        name,
        "--object-path",
        "/org/freedesktop/Notifications",
        "--method",
        name + ".Notify",
        "Brimlo",
        "0",
        "brimlo",  // The icon.
        "Brimlo",
        text,
        "@as []",
        "@a{sv} {}",
        "int32 -1"};
}

std::optional<std::string> PeriodicJob::program(std::string_view definition) {
    while (!definition.empty()) {
        const std::size_t end = std::min(definition.find('\n'), definition.size());
        const std::string_view line = definition.substr(0, end);
        definition.remove_prefix(std::min(end + 1, definition.size()));
        if (!line.starts_with(kStart)) {
            continue;
        }
        auto command = words(line.substr(kStart.size()));
        if (!command || command->empty()) {
            return std::nullopt;
        }
        std::string& program = command->front();
        program.erase(0, std::min(program.find_first_not_of("@-:+!"), program.size()));
        const bool isDetour = command->size() > kDetour.size() &&
                              std::equal(kDetour.begin(), kDetour.end(), command->begin());
        program = isDetour ? (*command)[kDetour.size()] : program;
        return program.starts_with('/') ? std::optional{program} : std::nullopt;
    }
    return std::nullopt;
}

}  // namespace Brimlo::Platform
