#include "BrimloCore/Platform/Linux/UserFolders.h"

#include "Support/TempHome.h"

#include <cstdlib>
#include <tuple>

namespace Brimlo::Platform {

namespace {

using namespace std::string_literals;

class UserFoldersTest : public Testing::TempHome {};

TEST_F(UserFoldersTest, ReadsWhatTheFileNames) {
    const std::string tooLong(5000, 'x');
    const std::tuple<const char*, std::string, std::vector<std::string>> cases[] = {
        {"as it is written", "# Comment\nXDG_VIDEOS_DIR=\"$HOME/Filme\"\n",         {"/h/Filme"}    },
        {"elsewhere",        "  XDG_MUSIC_DIR = \"/disk/M u\\\"s\"  # x",           {"/disk/M u\"s"}},
        {"switched off",     "XDG_PUBLICSHARE_DIR=\"$HOME/\"\nXDG_X_DIR=\"$HOME\"", {}              },
        {"not quoted",       "XDG_DOCUMENTS_DIR=${HOME}/a/./b/../Briefe/",          {"/h/a/Briefe"} },
        {"no value, no end", "XDG_VIDEOS_DIR=\nXDG_MUSIC_DIR=\"$HOME/Musik",        {"/h/Musik"}    },
        {"relative",         "XDG_VIDEOS_DIR=\"Filme\"\nXDG_MUSIC_DIR=$HOMEx",      {}              },
        {"no folder",        "PATH=/x\nXDG_DATA_HOME=/x\n=\n\\\n",                  {}              },
        {"no text",          "XDG_VIDEOS_DIR=\"/a\0b\"\n\xff\xfe"s,                 {}              },
        {"too long",         "XDG_VIDEOS_DIR=/" + tooLong,                          {}              },
    };
    for (const auto& [name, text, folders] : cases) {
        EXPECT_EQ(parseUserFolders(text, "/h"), folders) << name;
    }
}

TEST_F(UserFoldersTest, ReadsTheFileOfTheUser) {
    EXPECT_EQ(userFolders(), std::vector<std::string>{});
    write(".config/user-dirs.dirs", "XDG_VIDEOS_DIR=\"$HOME/Filme\"");
    EXPECT_EQ(userFolders(), std::vector{at("Filme")});
    write("elsewhere/user-dirs.dirs", "XDG_VIDEOS_DIR=/disk/v");
    setenv("XDG_CONFIG_HOME", at("elsewhere").c_str(), 1);
    EXPECT_EQ(userFolders(), std::vector<std::string>{"/disk/v"});
}

}  // namespace

}  // namespace Brimlo::Platform
