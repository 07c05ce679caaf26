#include "BrimloToolTests/ToolTest.h"

#include "BrimloCore/Platform/Processes.h"
#include "BrimloCore/Support/Files.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <string>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Brimlo::Testing {

namespace {

/// A file without a name.
Platform::Descriptor nameless() {
    std::string pattern = "/tmp/brimlo-output-XXXXXX";
    Platform::Descriptor file{mkostemp(pattern.data(), O_CLOEXEC)};
    unlink(pattern.c_str());
    return file;
}

std::string contentOf(const Platform::Descriptor& file) {
    struct stat status{};
    fstat(file.number(), &status);
    std::string content(static_cast<std::size_t>(status.st_size), '\0');
    const ssize_t length = pread(file.number(), content.data(), content.size(), 0);
    content.resize(static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    return content;
}

}  // namespace

Outcome ToolTest::Running::wait() {
    int status = 0;
    waitpid(pid_, &status, 0);
    return {
        .exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status),
        .out = contentOf(out_),
        .err = contentOf(err_),
    };
}

bool ToolTest::Running::isReady() const {
    return hasSignal("SigCgt:", SIGINT);
}

bool ToolTest::Running::notesInterrupts() const {
    return isReady() && hasSignal("SigIgn:", SIGPIPE);
}

bool ToolTest::Running::hasSignal(const std::string& set, unsigned signal) const {
    const std::string status = Testing::contentOf("/proc/" + std::to_string(pid_) + "/status");
    const std::size_t place = status.find(set);
    return place != std::string::npos &&
           (std::stoull(status.substr(place + set.size()), nullptr, 16) >> (signal - 1U) & 1U) != 0;
}

void ToolTest::Running::interrupt() const {
    kill(pid_, SIGINT);
}

std::string ToolTest::Running::errSoFar() const {
    return contentOf(err_);
}

ToolTest::Running ToolTest::start(
    const std::vector<std::string>& arguments, const Streams& streams) {
    Running running;
    running.out_ = nameless();
    running.err_ = nameless();
    std::vector<char*> words{const_cast<char*>("brimlo")};
    for (const std::string& argument : arguments) {
        words.push_back(const_cast<char*>(argument.c_str()));
    }
    words.push_back(nullptr);
    const Platform::Descriptor nothing{open("/dev/null", O_RDONLY | O_CLOEXEC)};
    const auto orElse = [](int given, const Platform::Descriptor& other) {
        return given >= 0 ? given : other.number();
    };
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, orElse(streams.in, nothing), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, orElse(streams.out, running.out_), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, orElse(streams.err, running.err_), STDERR_FILENO);
    posix_spawn_file_actions_addchdir_np(&actions, getenv("HOME"));
    const int error = posix_spawn(
        &running.pid_, BRIMLO_TOOL, &actions, nullptr, words.data(), Platform::environment());
    posix_spawn_file_actions_destroy(&actions);
    EXPECT_EQ(error, 0);
    return running;
}

Outcome ToolTest::run(const std::vector<std::string>& arguments) {
    return start(arguments, {}).wait();
}

Json::Value ToolTest::answer(
    std::vector<std::string> arguments, int exitCode, const std::string& err) {
    arguments.emplace_back("--json");
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.exitCode, exitCode);
    EXPECT_EQ(outcome.err, err);
    const auto document = Json::parse(outcome.out);
    EXPECT_TRUE(document) << outcome.out;
    return document.value_or(Json::Value{});
}

std::string ToolTest::support(std::string_view name) {
    return "Library/Application Support/Brimlo/" + std::string{name};
}

std::string ToolTest::rule(const std::string& id, const std::string& path) {
    return R"({"id":")" + id + R"(","name":"N","group":"G","personas":["general"],"risk":"safe",)" +
           R"("paths":[")" + path + R"("],"regenerates":"The app makes it again."})";
}

std::string ToolTest::pack(const std::string& elements) {
    return R"({"pack":"custom","version":1,"rules":[)" + elements + "]}";
}

std::vector<std::string> ToolTest::trashed() const {
    auto names =
        Folders::names(at(".local/share/Trash/files")).value_or(std::vector<std::string>{});
    std::ranges::sort(names);
    return names;
}

std::string shape(const Json::Value& value) {
    if (const Json::Array* array = value.if_array()) {
        return "[" + (array->empty() ? "" : shape(array->front())) + "]";
    }
    const Json::Object* object = value.if_object();
    if (object == nullptr) {
        return "";
    }
    std::string text;
    for (const auto& [key, field] : *object) {
        text += (text.empty() ? "" : ",") + std::string{key} + shape(field);
    }
    return "{" + text + "}";
}

bool comesTrue(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds{10};
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds{1});
    }
    return true;
}

}  // namespace Brimlo::Testing
