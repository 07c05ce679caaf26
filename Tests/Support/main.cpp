#include "BrimloCore/Platform/Processes.h"
#include "Support/TempHome.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;

/// Keeps the tests of this process from the machine. `HOME` is an empty folder: a test that forgets
/// its fixture finds nothing to harm. Nobody answers where the message buses and Docker's daemon
/// are looked for, and the programs that would reach a user's session are stand-ins that write down
/// how they were called. tools/alone.py does the same for scripts.
class Alone {
public:
    Alone() {
        std::string pattern = (fs::temp_directory_path() / "brimlo-alone-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
        fs::create_directories(folder_ + "/home");
        fs::create_directories(folder_ + "/bin");
        fs::create_directories(folder_ + "/run");
        fs::permissions(folder_ + "/run", fs::perms::owner_all);
        for (const auto* program : {"systemctl", "docker", "pkexec", "xdg-open"}) {
            const std::string path = folder_ + "/bin/" + program;
            std::ofstream{path} << "#!/bin/sh\necho \"" << program << " $*\" >>" << calls()
                                << "\nexit 1\n";
            fs::permissions(path, fs::perms::owner_all);
        }
        forgetSession();
        set("HOME", folder_ + "/home");
        set("CFFIXED_USER_HOME", folder_ + "/home");  // What macOS calls it.
        set("XDG_RUNTIME_DIR", folder_ + "/run");
        set("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere/bus");
        set("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere/bus");
        set("DOCKER_HOST", "unix:///nowhere/docker.sock");
        const char* path = std::getenv("PATH");
        set("PATH", folder_ + "/bin:" + (path == nullptr ? "/usr/bin:/bin" : path));
    }
    Alone(const Alone&) = delete;
    Alone& operator=(const Alone&) = delete;
    Alone(Alone&&) = delete;
    Alone& operator=(Alone&&) = delete;
    ~Alone() {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }

    [[nodiscard]] std::string calls() const { return folder_ + "/calls"; }

private:
    static void set(const char* name, const std::string& value) { setenv(name, value.c_str(), 1); }

    /// Unsets what leads to the user's folders and session, or through a proxy of the machine.
    static void forgetSession() {
        std::vector<std::string> names{"AT_SPI_BUS_ADDRESS", "DOCKER_CONTEXT", "BRIMLO_TIMING"};
        for (char** entry = Brimlo::Platform::environment(); *entry != nullptr; ++entry) {
            const std::string_view name{*entry, std::string_view{*entry}.find('=')};
            if (name.starts_with("XDG_") || name.ends_with("_proxy") || name.ends_with("_PROXY")) {
                names.emplace_back(name);
            }
        }
        for (const std::string& name : names) {
            unsetenv(name.c_str());
        }
    }

    std::string folder_;
};

}  // namespace

int main(int argc, char** argv) {
    const Alone alone;
    testing::InitGoogleMock(&argc, argv);
    const int result = RUN_ALL_TESTS();
    const std::string calls = Brimlo::Testing::contentOf(alone.calls());
    if (!calls.empty()) {
        std::fprintf(stderr, "The machine's own was called:\n%s", calls.c_str());
    }
    return calls.empty() ? result : 1;
}
