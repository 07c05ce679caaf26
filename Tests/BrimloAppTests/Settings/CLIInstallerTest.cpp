#include "BrimloApp/Settings/CLIInstaller.h"

#include "Support/TempHome.h"

#include <filesystem>

namespace Brimlo::CLIInstaller {
namespace {

class CLIInstallerTest : public Testing::TempHome {
protected:
    void program(const std::string& name, const std::string& script = "") const {
        const std::string path = write(name, "#!/bin/sh\n" + script + "\n");
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    }
    /// With the script in the place of what asks the user; it comes after two that can't be run.
    [[nodiscard]] Places places(const std::string& script = "exec \"$@\"") const {
        program("pkexec", script);
        return {
            at("app"), at("bin/brimlo"), {at("gone"), home(), at("pkexec")}
        };
    }
    const Result installed{Outcome::installed, ""};
    const Result notMade{Outcome::failed, "symlink was not created"};
};

TEST_F(CLIInstallerTest, ReplacesWhateverIsNotTheLinkButAFolder) {
    const std::string tool = write("app/brimlo");
    link("bin/brimlo", tool);
    EXPECT_EQ(install(places()), (Result{Outcome::noTool, ""})) << "it may not be run";
    EXPECT_FALSE(installedAt(places()).has_value());
    program("app/brimlo");
    makeFolder("old");
    const std::pair<std::string, Result> cases[] = {
        {tool,               {Outcome::alreadyInstalled, ""}},
        {at("gone"),         installed                      },
        {at("app/./brimlo"), installed                      },
        {at("old"),          notMade                        },
        {"",                 /* a file */ installed         },
    };
    for (const auto& [target, expected] : cases) {
        SCOPED_TRACE(target);
        std::filesystem::remove_all(at("bin"));
        target.empty() ? write("bin/brimlo") : link("bin/brimlo", target);
        EXPECT_EQ(installedAt(places()).has_value(), target == tool);
        EXPECT_EQ(install(places()), expected);
        EXPECT_EQ(installedAt(places()).has_value(), expected != notMade);
    }
    EXPECT_FALSE(Testing::exists(at("old/brimlo"))) << "made in the folder";
}

TEST_F(CLIInstallerTest, AsksForNoPasswordWhereTheToolIsOnThePath) {
    program("app/brimlo");
    program("other/brimlo");
    write("dull/brimlo");
    link("packaged/brimlo", "../app/brimlo");
    const std::string packaged = at("packaged") + ":";
    const std::string before = at("none") + ":relative::" + at("dull") + ":";
    const std::pair<std::string, bool> cases[] = {
        {before + packaged,                     true },
        {before + at("other") + ":" + packaged, false},
        {before,                                false},
    };
    for (const auto& [path, isThere] : cases) {
        SCOPED_TRACE(path);
        Places places = this->places("exit 126");
        places.searchPath = path;
        EXPECT_EQ(
            installedAt(places), isThere ? std::optional{at("packaged/brimlo")} : std::nullopt);
        const Outcome outcome = isThere ? Outcome::alreadyInstalled : Outcome::cancelled;
        EXPECT_EQ(install(places).outcome, outcome);
    }
}

TEST_F(CLIInstallerTest, TakesEveryByteOfAPathAsItIs) {
    std::string name;
    for (int byte = 1; byte < 256; ++byte) {
        name += byte == '/' ? '\'' : static_cast<char>(byte);
    }
    const Places hard{at(name), at("to/" + name + "/brimlo"), places().authorizers};
    program(name + "/brimlo");
    EXPECT_EQ(install(hard), installed);
    EXPECT_EQ(std::filesystem::read_symlink(hard.link).native(), at(name + "/brimlo"));
}

TEST_F(CLIInstallerTest, TellsACancelFromAFailure) {
    program("app/brimlo");
    const Result noWord{Outcome::failed, "authorization failed"};
    const std::string notice = "\\n\\nThis incident has been reported.\\n' >&2; exit 127";
    const std::pair<std::string, Result> cases[] = {
        {"echo a >&2; exit 126",                     {Outcome::cancelled, ""}          },
        {"exit 127",                                 noWord                            },
        {"printf '" + notice,                        noWord                            },
        {"printf 'x\\nNot allowed" + notice,         {Outcome::failed, "Not allowed"}  },
        {"printf 'a\\n b\\033\\377\\n' >&2; exit 3", {Outcome::failed, "b\uFFFD\uFFFD"}},
        {"test \"$#$1$2\" = 3/bin/sh-c || exit 1",   notMade                           },
    };
    for (const auto& [script, expected] : cases) {
        EXPECT_EQ(install(places(script)), expected) << script;
    }
    const Places nobody{
        at("app"), at("bin/brimlo"), {at("gone"), home()}
    };
    EXPECT_EQ(install(nobody).text, "the system has no way to ask for administrator rights");
}

}  // namespace
}  // namespace Brimlo::CLIInstaller
