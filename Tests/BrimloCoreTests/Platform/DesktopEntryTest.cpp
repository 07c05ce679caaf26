#include "BrimloCore/Platform/Linux/DesktopEntry.h"

#include "BrimloCore/Platform/RunningApps.h"
#include "Support/TempHome.h"

#include <algorithm>
#include <cstdlib>

#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Platform {
namespace {

class DesktopEntryTest : public Testing::TempHome {
protected:
    DesktopEntryTest() {
        setenv("PATH", at("bin").c_str(), 1);
        setenv("XDG_DATA_DIRS", "relative::/nowhere", 1);
        program("bin/app");
        program("bin/python3.11");
        program("opt/My App/app");
        write("bin/text");
        makeFolder("bin/folder");
    }

    std::string program(const std::string& relative) const {
        const std::string path = write(relative, "#!/bin/sh\n");
        chmod(path.c_str(), 0755);
        return path;
    }
};

TEST_F(DesktopEntryTest, ReadsWhatIsStarted) {
    const std::string main = "[Desktop Entry]\n";
    const std::string app = at("bin/app");
    const std::string spaced = at("opt/My App/app");
    const std::string noise = std::string(10'000, '[') + std::string(10'000, '\n');
    struct Case {
        const char* name;
        std::string text;
        std::optional<std::string> program;  ///< The name is always "App".
    };
    const Case cases[] = {
        {"plain",               main + "Type=Application\nName=App\nExec=app %U\n",                app         },
        {"quoted",              main + "Name=App\nExec=\"" + spaced + "\" %f\n",                   spaced      },
        {"env and assignments", main + "Name=App\nExec=/usr/bin/env A=1 C=2 app --x\n",            app         },
        {"translated name",     main + "Name[de]=Anwendung\nName=App\nName[fr]=Appli\nExec=app\n", app         },
        {"another group",
         main + "Name=App\nExec=app\n[Desktop Action x]\nName=X\nExec=gone\n",
         app                                                                                                   },
        {"no name",             main + "Exec=app\n",                                               std::nullopt},
        {"not there",           main + "Name=App\nExec=gone\n",                                    std::nullopt},
        {"not executable",      main + "Name=App\nExec=text\n",                                    std::nullopt},
        {"interpreter",         main + "Name=App\nExec=python3.11 app.py\n",                       std::nullopt},
        {"noise",               noise,                                                             std::nullopt},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto entry = DesktopEntry::parse(c.text);
        EXPECT_EQ(entry ? std::optional{entry->program} : std::nullopt, c.program);
        EXPECT_EQ(entry ? entry->name : "App", "App");
    }
}

TEST_F(DesktopEntryTest, PassesOverWhatIsNoEntry) {
    const std::string text = "[Desktop Entry]\nName=App\nExec=app\n";
    const std::string folder = ".local/share/applications/";
    write(folder + "good.desktop", text);
    write(folder + "good.txt", text);
    write(folder + "long.desktop", text + std::string(300'000, '#'));
    write(folder + "\xFF\n.desktop", "\xFF\xFE");
    makeFolder(folder + "folder.desktop");
    link(folder + "dangling.desktop", "nowhere");
    link(folder + "self.desktop", "self.desktop");
    link(folder + "endless.desktop", "/dev/zero");
    mkfifo(at(folder + "pipe.desktop").c_str(), 0600);
    std::vector<std::string> names;
    for (const DesktopEntry& entry : DesktopEntry::installed()) {
        names.push_back(entry.name);
    }
    EXPECT_EQ(names, std::vector<std::string>{"App"});
}

TEST_F(DesktopEntryTest, NamesRunningApplications) {
    std::string self(4'096, '\0');
    self.resize(static_cast<std::size_t>(readlink("/proc/self/exe", self.data(), self.size())));
    const std::string name = self.substr(self.rfind('/') + 1);
    const auto isRunning = [](const std::string& application) {
        const std::vector<std::string> names = runningAppNames();
        EXPECT_TRUE(std::ranges::is_sorted(names));
        return std::ranges::count(names, application) == 1;
    };
    EXPECT_TRUE(isRunning(name));
    EXPECT_FALSE(isRunning("The Tests"));
    write(
        ".local/share/applications/tests.desktop",
        "[Desktop Entry]\nName=The Tests\nExec=\"" + self + "\"\n");
    EXPECT_TRUE(isRunning("The Tests"));
}

}  // namespace
}  // namespace Brimlo::Platform
