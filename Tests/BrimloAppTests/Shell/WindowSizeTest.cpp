#include "BrimloApp/Shell/WindowSize.h"

#include "BrimloAppTests/Support/ModelTest.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtGui/QWindow>

#include <filesystem>
#include <fstream>
#include <string>

namespace Brimlo {
namespace {

class WindowSizeTest : public Testing::ModelTest {
protected:
    static void write(const std::string& text) {
        std::filesystem::create_directories(StoragePaths::support());
        std::ofstream{StoragePaths::support() + "/window.json"} << text;
    }
    static void closeWindow(const QSize size, const bool isMaximized) {
        QWindow window;
        const WindowSize keeper{window};
        window.resize(size);
        window.setWindowStates(isMaximized ? Qt::WindowMaximized : Qt::WindowNoState);
        window.setVisible(true);
        window.close();
    }
};

TEST_F(WindowSizeTest, OpensAsItWasClosed) {
    const QVariantMap smaller{
        {"width",  500},
        {"height", 400}
    };
    EXPECT_EQ(WindowSize::last(), QVariantMap{});
    closeWindow({500, 400}, false);
    EXPECT_EQ(WindowSize::last(), smaller);
    closeWindow({700, 600}, true);
    QVariantMap maximized = smaller;
    maximized["visibility"] = QWindow::Maximized;
    EXPECT_EQ(WindowSize::last(), maximized);
    closeWindow({500, 400}, false);
    EXPECT_EQ(WindowSize::last(), smaller);
}

TEST_F(WindowSizeTest, TakesWhatMakesNoSenseForUnknown) {
    for (const char* const text :
         {"",
          "[]",
          "{\"width\":",
          R"({"width":"wide","height":700})",
          R"({"width":-5,"height":700})",
          R"({"width":0,"height":0,"isMaximized":false})",
          R"({"width":900})"}) {
        write(text);
        EXPECT_EQ(WindowSize::last(), QVariantMap{}) << text;
    }
    write(R"({"width":9000000000000000000,"height":9000000000000000000})");
    const QSize screen = QGuiApplication::primaryScreen()->availableSize();
    EXPECT_EQ(WindowSize::last()["width"], screen.width());
    EXPECT_EQ(WindowSize::last()["height"], screen.height());
}

}  // namespace
}  // namespace Brimlo
