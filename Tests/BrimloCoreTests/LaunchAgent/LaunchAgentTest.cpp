#include "BrimloCore/LaunchAgent/LaunchAgent.h"

#include "Support/TempHome.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

#include <sys/stat.h>

namespace Brimlo {
namespace {

using Testing::contentOf;

class LaunchAgentTest : public Testing::TempHome {
protected:
    /// Puts a "systemctl" on the path that writes down how it was called, and which service it saw.
    LaunchAgentTest() {
        makeTool(
            "bin/systemctl",
            "#!/bin/sh\necho \"$*:\" $(sed -n 's|^Exec.*/\\(.\\)\" .*|\\1|p' " + service +
                ") | sed 's/^--user //; s/app.brimlo.autoclean.timer/T/' >>" + at("calls"));
        setenv("PATH", (at("bin") + ":/usr/bin:/bin").c_str(), 1);
    }

    std::string makeTool(const std::string& name, const std::string& text = "#!/bin/sh\n") {
        const std::string path = write(name, text);
        chmod(path.c_str(), 0755);
        return path;
    }

    const std::string service = at(".config/systemd/user/app.brimlo.autoclean.service");
    const std::string timer = at(".config/systemd/user/app.brimlo.autoclean.timer");
};

TEST_F(LaunchAgentTest, WritesAServiceAndItsTimer) {
    setenv("PATH", at("nothing").c_str(), 1);  // As on a system without systemctl.
    ASSERT_TRUE(LaunchAgent::install(makeTool("brimlo")));
    const std::string log = "append:" + at("Library/Logs/brimlo-autoclean.log") + "\n";
    EXPECT_TRUE(contentOf(service).ends_with(
        "\n[Service]\nType=oneshot\nTimeoutStartSec=2h\nExecStart=\":" + at("brimlo") +
        "\" \"autoclean\" \"--execute\"\nStandardOutput=" + log + "StandardError=" + log));
    EXPECT_TRUE(
        contentOf(timer).ends_with("\n[Timer]\nOnActiveSec=21600s\nOnUnitActiveSec=21600s\n\n"
                                   "[Install]\nWantedBy=timers.target\n"));
    EXPECT_TRUE(Testing::exists(at("Library/Logs")));
}

TEST_F(LaunchAgentTest, TellsSystemdOfEachChange) {
    ASSERT_TRUE(LaunchAgent::install(makeTool("1")));
    ASSERT_TRUE(LaunchAgent::install(makeTool("2")));
    link(".config/systemd/user/timers.target.wants/app.brimlo.autoclean.timer", timer);
    LaunchAgent::uninstall();
    LaunchAgent::uninstall();
    EXPECT_FALSE(LaunchAgent::isInstalled());
    EXPECT_THAT(Testing::describeTree(at(".config/systemd")), testing::SizeIs(3)) << "folders only";
    const auto stop = [](const std::string& seen) { return "stop T:" + seen + "\n"; };
    const auto start = [](const std::string& seen) {
        return "daemon-reload:" + seen + "\nenable --now T:" + seen + "\n";
    };
    const std::string gone = "daemon-reload:\n";
    EXPECT_EQ(
        contentOf(at("calls")),
        stop("") + start(" 1") + stop(" 1") + start(" 2") + stop(" 2") + gone + stop("") + gone);
}

TEST_F(LaunchAgentTest, KeepsWhatMeansSomethingToSystemd) {
    const bool canVerify = std::system("command -v systemd-analyze >/dev/null") == 0;
    setenv("XDG_RUNTIME_DIR", home().c_str(), 1);
    const std::string verify = "cd '" + at(".config/systemd/user") +
                               "' && systemd-analyze verify --user --man=no *.* >~/said 2>&1";
    std::istringstream names{
        "a b|%h|100%|$HOME|${H}|a\"b|it's|\\x41|\\|-e|:+!|a;b|a=b|#|\u00e9| a "};
    for (std::string name; std::getline(names, name, '|');) {
        const std::string tool = makeTool(name + "/brimlo");
        ASSERT_TRUE(LaunchAgent::install(tool)) << tool;
        EXPECT_EQ(LaunchAgent::installedExecutable(), tool);
        EXPECT_TRUE(!canVerify || std::system(verify.c_str()) == 0) << tool;
        EXPECT_EQ(contentOf(at("said")), "");
    }
    if (!canVerify) {
        GTEST_SKIP() << "systemd-analyze is not installed, which would look at the files";
    }
    std::filesystem::remove(at(" a /brimlo"));
    EXPECT_NE(std::system(verify.c_str()), 0) << "where there is no tool, it is missed";
}

TEST_F(LaunchAgentTest, RefusesWhatCannotBeStarted) {
    ASSERT_TRUE(LaunchAgent::install(makeTool("brimlo")));
    const std::string before = contentOf(service) + contentOf(timer) + contentOf(at("calls"));
    const std::string control = "A path holds a line break or another control character";
    std::filesystem::current_path(home());
    const auto error = [](const std::string& path) { return LaunchAgent::install(path).error(); };
    for (const std::string& path :
         {at("none"), write("plain"), makeFolder("a"), std::string{"bin/systemctl"}}) {
        EXPECT_EQ(error(path), (Error{"Brimlo", 20, "Command line tool not found at " + path}));
    }
    EXPECT_EQ(error(makeTool("a\nb")), (Error{"Brimlo", 21, control}));
    EXPECT_EQ(error(makeTool("a\x7f")), (Error{"Brimlo", 21, control}));
    EXPECT_EQ(error(makeTool("a\xff")), (Error{"Brimlo", 21, "A path is not valid text"}));
    EXPECT_EQ(contentOf(service) + contentOf(timer) + contentOf(at("calls")), before);
}

TEST_F(LaunchAgentTest, ReadsWhatAnotherHandWrote) {
    EXPECT_EQ(LaunchAgent::installedExecutable(), std::nullopt);
    const std::pair<std::string, std::optional<std::string>> cases[] = {
        {"",                                             std::nullopt},
        {"[Service]\n#ExecStart=/b\nExecStart=-!/a b\n", "/a"        },
        {"ExecStart='/a b'\t\"c\"",                      "/a b"      },
        {"ExecStart=\"/a",                               std::nullopt},
        {"ExecStart=%h/a",                               std::nullopt},
    };
    for (const auto& [text, program] : cases) {
        write(service.substr(home().size() + 1), text);
        EXPECT_TRUE(LaunchAgent::isInstalled());
        EXPECT_EQ(LaunchAgent::installedExecutable(), program) << text;
    }
}

}  // namespace
}  // namespace Brimlo
