#include "BrimloCore/Shell/Shell.h"

#include "BrimloCore/Platform/Processes.h"
#include "BrimloCore/Support/Files.h"
#include "Support/TempHome.h"

#include <chrono>
#include <csignal>
#include <thread>

#include <sys/wait.h>

namespace Brimlo {
namespace {

using Clock = std::chrono::steady_clock;

std::optional<Shell::Result> shell(const std::string& script, double timeoutSeconds = 20) {
    return Shell::run("/bin/sh", {"-c", script}, std::nullopt, timeoutSeconds);
}

using ShellTest = Testing::TempHome;

TEST_F(ShellTest, TellsHowAToolEndedAndWhatItPrinted) {
    const std::string megabytes = "head -c 3000000 /dev/zero | tr '\\0' x";
    const std::string caught = "trap 'exit 3' TERM; echo a; while :; do sleep 0.1; done";
    const struct {
        const char* name;
        std::string script;
        double timeoutSeconds;
        std::optional<Shell::Result> result;
    } cases[] = {
        {"fails",            "echo a; echo b >&2; exit 255",            20,    {{255, "a\n"}}                  },
        {"both in bulk",     megabytes + " | tee /dev/stderr",          20,    {{0, std::string(3000000, 'x')}}},
        {"no UTF-8",         "printf 'a\\377\\342\\202b\\000c'",        20,    {{0, {"a\uFFFD\uFFFDb\0c", 10}}}},
        {"killed",           "echo a; kill -9 $$",                      20,    std::nullopt                    },
        {"out of time",      "echo a; exec sleep 30",                   0.2,   std::nullopt                    },
        {"no time at all",   "exec sleep 30",                           -1,    std::nullopt                    },
        {"ends on its own",  caught,                                    0.3,   {{3, "a\n"}}                    },
        {"closes and stays", "exec sleep 30 >&- 2>&-",                  0.2,   std::nullopt                    },
        {"will not end",     "trap '' TERM; while :; do sleep 9; done", 0.2,   std::nullopt                    },
        {"holds the pipe",   "(trap '' TERM; sleep 9) & echo a",        0.2,   std::nullopt                    },
        {"leaves the group", "setsid sleep 9 & echo a",                 0.2,   std::nullopt                    },
        {"floods",           "yes; :",                                  20,    std::nullopt                    },
        {"a long limit",     "echo a",                                  1e300, {{0, "a\n"}}                    },
        {"ends before all",  "(sleep 0.3; echo late) & echo a",         20,    {{0, "a\nlate\n"}}              },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const Clock::time_point start = Clock::now();
        EXPECT_EQ(shell(c.script, c.timeoutSeconds), c.result);
        EXPECT_LT(Clock::now() - start, std::chrono::seconds{8});
    }
}

TEST_F(ShellTest, HandsArgumentsFolderAndEnvironmentOverAsTheyAre) {
    const std::string print = R"(printf '<%s>' "$@"; pwd; echo "$HOME")";
    const std::vector<std::string> arguments{"-c", print, "sh", "", " a  b", "$(c)*'\"", "\n"};
    EXPECT_EQ(
        Shell::run("/bin/sh", arguments, makeFolder("in here"), 20),
        (Shell::Result{0, "<>< a  b><$(c)*'\"><\n>" + at("in here") + "\n" + home() + "\n"}));
    const std::string plain = write("plain", "text");
    EXPECT_EQ(Shell::run(at("missing"), {}, std::nullopt, 20), std::nullopt);
    EXPECT_EQ(Shell::run(plain, {}, std::nullopt, 20), std::nullopt);
    EXPECT_EQ(Shell::run("sh", {"-c", "true"}, std::nullopt, 20), std::nullopt) << "no search";
    EXPECT_EQ(Shell::run("/bin/sh", {"-c", "true"}, at("missing"), 20), std::nullopt);
    const std::string nul{"a\0b", 3};
    EXPECT_EQ(Shell::run("/bin/echo", {nul}, std::nullopt, 20), std::nullopt);
}

TEST_F(ShellTest, GivesTheToolItsSignalsBack) {
    sigset_t mask;
    sigset_t old;
    sigfillset(&mask);
    sigprocmask(SIG_BLOCK, &mask, &old);
    std::signal(SIGTERM, SIG_IGN);
    EXPECT_EQ(shell("exec sleep 30", 0.1), std::nullopt);
    std::signal(SIGTERM, SIG_DFL);
    sigprocmask(SIG_SETMASK, &old, nullptr);
}

TEST_F(ShellTest, LeavesNothingBehindWhenManyRunAtOnce) {
    const auto openDescriptors = [] { return Folders::names("/proc/self/fd").value().size(); };
    const std::size_t before = openDescriptors();
    const auto work = [] {
        for (int i = 0; i < 500; ++i) {
            EXPECT_EQ(Shell::run("/bin/echo", {"a"}, std::nullopt, 20), (Shell::Result{0, "a\n"}));
            EXPECT_EQ(Shell::run("/missing", {}, std::nullopt, 20), std::nullopt);
        }
    };
    std::thread other{work};
    work();
    other.join();
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child is left";
    // A pipe that another thread has open is not handed on: its reader would wait for this child.
    const auto pipe = Platform::openPipe();
    const std::string number = std::to_string(pipe.value().writeEnd.number());
    EXPECT_EQ(shell("test -e /proc/$$/fd/" + number), (Shell::Result{1, ""}));
}

}  // namespace
}  // namespace Brimlo
