#include "BrimloCore/Shell/Shell.h"

#include "BrimloCore/Platform/Processes.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <csignal>
#include <thread>

#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

// One thread reads both pipes as they fill, so that the child never blocks on a full pipe, and
// checks the time limit in between. The child is reaped last: until then its process id can't be
// reused, so a late signal is harmless.

namespace Brimlo::Shell {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

/// Bytes kept of each stream; a program that prints more is killed.
constexpr std::size_t kMostOutput = std::size_t{16} << 20U;

/// The moment `seconds` from now. Clamped: the clock could not represent a very long limit.
Clock::time_point deadline(double seconds) {
    constexpr double kLongest = 1e9;
    const double limit = std::isnan(seconds) ? 0 : std::clamp(seconds, 0.0, kLongest);
    return Clock::now() +
           std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>{limit});
}

/// The attributes and file actions of a `posix_spawn`.
class SpawnSettings {
public:
    SpawnSettings() {
        posix_spawn_file_actions_init(&actions_);
        posix_spawnattr_init(&attributes_);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
    ~SpawnSettings() {
        posix_spawnattr_destroy(&attributes_);
        posix_spawn_file_actions_destroy(&actions_);
    }

    [[nodiscard]] bool redirect(const Platform::Pipe& pipe, int stream) {
        return posix_spawn_file_actions_adddup2(&actions_, pipe.writeEnd.number(), stream) == 0;
    }

    [[nodiscard]] bool enter(const std::optional<std::string>& folder) {
        return !folder || posix_spawn_file_actions_addchdir_np(&actions_, folder->c_str()) == 0;
    }

    /// The child gets the default actions, even for signals that this process ignores.
    [[nodiscard]] bool resetSignals() {
        sigset_t all;
        sigset_t none;
        sigfillset(&all);
        sigemptyset(&none);
        flags_ = static_cast<short>(flags_ | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
        return posix_spawnattr_setsigdefault(&attributes_, &all) == 0 &&
               posix_spawnattr_setsigmask(&attributes_, &none) == 0;
    }

    /// Makes the child lead a process group, so that one signal reaches its descendants too.
    [[nodiscard]] bool leadGroup() {
        flags_ = static_cast<short>(flags_ | POSIX_SPAWN_SETPGROUP);
        return posix_spawnattr_setpgroup(&attributes_, 0) == 0;
    }

    [[nodiscard]] bool keepFilesBack() {
        const std::optional<short> flags = Platform::inheritStreamsOnly(actions_);
        flags_ = static_cast<short>(flags_ | flags.value_or(0));
        return flags.has_value();
    }

    [[nodiscard]] std::optional<pid_t> spawn(const std::vector<char*>& arguments) {
        if (posix_spawnattr_setflags(&attributes_, flags_) != 0) {
            return std::nullopt;
        }
        pid_t child = 0;
        const int error = posix_spawn(
            &child,
            arguments.front(),
            &actions_,
            &attributes_,
            arguments.data(),
            Platform::environment());
        return error == 0 ? std::optional{child} : std::nullopt;
    }

private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
    short flags_ = 0;
};

/// The argument vector of `exec`; points into `command`.
std::vector<char*> argumentVector(const Command& command) {
    std::vector<char*> vector;
    const auto add = [&](const std::string& text) {
        // `exec` takes no const strings; it copies them before the child runs.
        vector.push_back(const_cast<char*>(text.c_str()));
    };
    add(command.executable);
    std::ranges::for_each(command.arguments, add);
    vector.push_back(nullptr);
    return vector;
}

/// Whether a string contains a NUL, where the system would cut it off.
bool holdsNul(const Command& command) {
    const auto hasNul = [](const std::string& text) { return text.contains('\0'); };
    return hasNul(command.executable) || (command.cwd && hasNul(*command.cwd)) ||
           std::ranges::any_of(command.arguments, hasNul);
}

std::optional<pid_t> start(
    const Command& command, const Platform::Pipe& out, const Platform::Pipe& err) {
    SpawnSettings settings;
    const bool isSet = !holdsNul(command) && settings.redirect(out, STDOUT_FILENO) &&
                       settings.redirect(err, STDERR_FILENO) && settings.enter(command.cwd) &&
                       settings.keepFilesBack() && settings.leadGroup() && settings.resetSignals();
    return isSet ? settings.spawn(argumentVector(command)) : std::nullopt;
}

/// A running child, the group it leads, and its time limit.
class Child {
public:
    Child(pid_t number, Clock::time_point deadline)
        : number_{number}
        , deadline_{deadline} {}

    /// Once the time is up: SIGTERM to the group, SIGKILL a second later, then gives up.
    void checkTime() {
        while (stage_ < Stage::givenUp && Clock::now() >= deadline_) {
            constexpr auto kPatience = std::chrono::seconds{1};
            stage_ = static_cast<Stage>(static_cast<int>(stage_) + 1);
            deadline_ = Clock::now() + kPatience;
            if (stage_ != Stage::givenUp) {
                kill(-number_, stage_ == Stage::asked ? SIGTERM : SIGKILL);
            }
        }
    }

    /// Ends the time limit now.
    void stop() { deadline_ = std::min(deadline_, Clock::now()); }

    [[nodiscard]] bool wasAsked() const { return stage_ >= Stage::asked; }
    [[nodiscard]] bool wasKilled() const { return stage_ >= Stage::killed; }
    [[nodiscard]] bool isGivenUp() const { return stage_ == Stage::givenUp; }

    /// The milliseconds until the deadline, for `poll`.
    [[nodiscard]] int wait() const {
        const auto rest = std::chrono::ceil<milliseconds>(deadline_ - Clock::now()).count();
        constexpr std::int64_t kLongest = 1'000'000'000;
        return static_cast<int>(std::clamp<std::int64_t>(rest, 0, kLongest));
    }

    /// Waits for the exit and stores it in `ending`; false when the child was reaped elsewhere.
    [[nodiscard]] bool reap(Ending& ending) {
        // A child usually exits just after closing its streams. One that keeps working could
        // outlast the time limit, so this must not block before the child was killed.
        constexpr auto kLongestNap = milliseconds{20};
        auto nap = std::chrono::microseconds{100};
        int status = 0;
        pid_t reaped = 0;
        do {
            checkTime();
            reaped = waitpid(number_, &status, stage_ >= Stage::killed ? 0 : WNOHANG);
            if (reaped == 0) {
                std::this_thread::sleep_for(nap);
                nap = std::min<std::chrono::microseconds>(2 * nap, kLongestNap);
            }
        } while (reaped == 0 || (reaped < 0 && errno == EINTR));
        ending.bySignal = WIFSIGNALED(status);
        ending.code = ending.bySignal ? WTERMSIG(status) : WEXITSTATUS(status);
        return reaped == number_;
    }

private:
    enum class Stage { running, asked, killed, givenUp };

    pid_t number_;
    Clock::time_point deadline_;  ///< Of this stage.
    Stage stage_ = Stage::running;
};

/// A stream of the child, and the text read from it.
struct Stream {
    std::string* text = nullptr;  ///< Null when the text is dropped.
    std::size_t length = 0;

    [[nodiscard]] bool isTooLong() const { return length > kMostOutput; }
};

/// Reads what is available; false at the end.
bool readSome(int pipe, Stream& stream) {
    constexpr std::size_t kBlock = 65536;
    std::array<char, kBlock> block;  // NOLINT(*-member-init): filled by the call
    const ssize_t count = read(pipe, block.data(), block.size());
    if (count > 0) {
        stream.length += static_cast<std::size_t>(count);
        if (stream.text != nullptr && !stream.isTooLong()) {
            stream.text->append(block.data(), static_cast<std::size_t>(count));
        }
    }
    return count > 0 || (count < 0 && errno == EINTR);
}

/// Reads both pipes to their end or until the time is up; false when there was too much output.
bool drain(int outPipe, int errPipe, std::array<Stream, 2> streams, Child& child) {
    std::array<pollfd, 2> pipes{
        {{.fd = outPipe, .events = POLLIN, .revents = 0},
         {.fd = errPipe, .events = POLLIN, .revents = 0}}
    };
    bool isTooMuch = false;
    while ((pipes[0].fd >= 0 || pipes[1].fd >= 0) && !child.isGivenUp()) {
        child.checkTime();
        const int ready = poll(pipes.data(), pipes.size(), child.wait());
        for (std::size_t i = 0; ready > 0 && i < pipes.size(); ++i) {
            if (pipes.at(i).revents != 0 && !readSome(pipes.at(i).fd, streams.at(i))) {
                pipes.at(i).fd = -1;  // `poll` skips it.
            }
            if (!isTooMuch && streams.at(i).text != nullptr && streams.at(i).isTooLong()) {
                isTooMuch = true;
                child.stop();
            }
        }
    }
    return !isTooMuch;
}

}  // namespace

std::optional<Ending> run(const Command& command) {
    auto out = Platform::openPipe();
    auto err = Platform::openPipe();
    if (!out || !err) {
        return std::nullopt;
    }
    const Clock::time_point limit = deadline(command.timeoutSeconds);
    const std::optional<pid_t> number = start(command, *out, *err);
    if (!number) {
        return std::nullopt;
    }
    // Otherwise reading would never reach the end.
    out->writeEnd = Platform::Descriptor{};
    err->writeEnd = Platform::Descriptor{};

    Ending ending;
    Child child{*number, limit};
    const bool keepsErr = command.standardError == StandardError::keep;
    const bool isWhole = drain(
        out->readEnd.number(),
        err->readEnd.number(),
        {
            {{.text = &ending.out}, {.text = keepsErr ? &ending.err : nullptr}}
    },
        child);
    if (!child.reap(ending)) {
        return std::nullopt;
    }
    // A program that handles SIGTERM and exits by itself counts as not cut.
    const bool isCut = child.wasKilled() || (child.wasAsked() && ending.bySignal);
    ending.cut = !isWhole ? Cut::output : isCut ? Cut::time : Cut::none;
    return ending;
}

std::optional<Result> run(
    const std::string& executable,
    const std::vector<std::string>& arguments,
    const std::optional<std::string>& cwd,
    double timeoutSeconds) {
    const auto ending = run(Command{
        .executable = executable,
        .arguments = arguments,
        .cwd = cwd,
        .timeoutSeconds = timeoutSeconds,
    });
    if (!ending || ending->bySignal || ending->cut != Cut::none) {
        return std::nullopt;
    }
    return Result{.status = ending->code, .out = Text::repaired(ending->out)};
}

}  // namespace Brimlo::Shell
