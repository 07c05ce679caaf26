#include "BrimloCore/Platform/Linux/DesktopEntry.h"

#include "BrimloCore/Platform/Linux/ApplicationNames.h"
#include "Support/TempHome.h"

#include <algorithm>
#include <cstdlib>
#include <tuple>

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
    using Program = std::optional<std::string>;
    const std::tuple<const char*, std::string, Program> cases[] = {
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
        {"in a package",        main + "Name=App\nExec=flatpak run a.App\nX-Flatpak=a.App\n",      ""          },
        {"noise",               noise,                                                             std::nullopt},
    };
    for (const auto& [name, text, program] : cases) {
        SCOPED_TRACE(name);
        const auto entry = DesktopEntry::parse(text);
        EXPECT_EQ(entry ? Program{entry->program} : std::nullopt, program);
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

TEST_F(DesktopEntryTest, NamesApplicationsInPackagesAndBehindInterpreters) {
    const std::string user = "Name:\tapp\nUid:\t" + std::to_string(getuid()) + "\t0\t0\t0\n";
    const std::string flatpak = "[Application]\nname=org.example.Web\n\n[Instance]\nname=other\n";
    const std::string scope = "0::/user.slice/app.slice/app-flatpak-org.a.Two\\x2dWords-4.scope\n";
    const std::string snap = "1:x:/\n0::/user.slice/snap.chromium.chromium-3f-2b.scope\n";
    const std::string java = "java|-cp|a|-Didea.paths.selector=AndroidStudio2025.1|";
    const std::vector<DesktopEntry> entries{
        {.name = "Example Web",      .package = "flatpak org.example.Web"},
        {.name = "Chromium Browser", .package = "snap chromium"          },
        {.name = "Reader",           .program = "/usr/bin/reader"        },
    };
    struct Case {
        const char* name;
        std::string exe;  ///< "" when it can't be read.
        std::string words;
        std::string info;
        std::string groups;
        std::string names;
    };
    const Case cases[] = {
        {"flatpak",              "/app/bin/web",              "web|",                   flatpak, "",    "Example Web|"                 },
        {"flatpak by its scope", "/app/bin/two",              "two|",                   "",      scope, "Two Words|Two-Words|two|"     },
        {"snap",                 "/snap/chromium/7/chrome",   "chrome|",                "",      snap,  "Chromium Browser|"            },
        {"by its makers' name",  "/opt/google/chrome/chrome", "c|",                     "",      "",    "Google Chrome|chrome|"        },
        {"script with an entry", "/usr/bin/python3.11",       "p|-E|/usr/bin/reader|",  "",      "",    "Reader|"                      },
        {"script without",       "/bin/python3.11",           "p|/bin/lm-vim|",         "",      "",    "lm vim|lm-vim|"               },
        {"shared Electron",      "/lib/electron27",           "e|/lib/notes/app.asar|", "",      "",    "app.asar|notes|"              },
        {"Java",                 "/opt/jbr/bin/java",         java,                     "",      "",    "Android Studio|AndroidStudio|"},
        {"kernel thread",        "",                          "",                       "",      "",    ""                             },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string proc = std::string{"proc of "} + c.name + "/";
        std::string words = c.words;
        std::ranges::replace(words, '|', '\0');
        write(proc + "17/status", user);
        write(proc + "17/cmdline", words);
        write(proc + "17/cgroup", c.groups);
        if (!c.exe.empty()) {
            link(proc + "17/exe", c.exe);
        }
        if (!c.info.empty()) {
            write(proc + "17/root/.flatpak-info", c.info);
        }
        write(proc + "18/status", "Name:\tinit\nUid:\t4294967294\t0\t0\t0\n");
        write(proc + "18/cmdline", "somebody else's");
        std::string names;
        for (const std::string& name : applicationNames(at(proc), entries)) {
            names += name + "|";
        }
        EXPECT_EQ(names, c.names);
    }
}

}  // namespace
}  // namespace Brimlo::Platform
