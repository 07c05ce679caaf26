#include "BrimloApp/Shell/AppWindow.h"

#include "BrimloAppTests/Support/ModelTest.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtGui/QWindow>

namespace Brimlo {
namespace {

class AppWindowTest : public Testing::ModelTest {
protected:
    static void closeWindow(const QSize size, const bool isMaximized) {
        QWindow window;
        const AppWindow::SizeKeeper keeper{window};
        window.resize(size);
        window.setWindowStates(isMaximized ? Qt::WindowMaximized : Qt::WindowNoState);
        window.setVisible(true);
        window.close();
    }
};

TEST_F(AppWindowTest, OpensAsItWasClosed) {
    const QVariantMap smaller{
        {"width",  500},
        {"height", 400}
    };
    EXPECT_EQ(AppWindow::lastSize(), QVariantMap{});
    closeWindow({500, 400}, false);
    EXPECT_EQ(AppWindow::lastSize(), smaller);
    closeWindow({700, 600}, true);
    QVariantMap maximized = smaller;
    maximized["visibility"] = QWindow::Maximized;
    EXPECT_EQ(AppWindow::lastSize(), maximized);
    closeWindow({500, 400}, false);
    EXPECT_EQ(AppWindow::lastSize(), smaller);
}

TEST_F(AppWindowTest, TakesWhatMakesNoSenseForUnknown) {
    const char* const file = "Library/Application Support/Brimlo/window.json";
    for (const char* const text :
         {"",
          "{\"width\":",
          R"({"width":"wide","height":700})",
          R"({"width":-5,"height":700})",
          R"({"width":900})"}) {
        write(file, text);
        EXPECT_EQ(AppWindow::lastSize(), QVariantMap{}) << text;
    }
    write(file, R"({"width":9000000000000000000,"height":9000000000000000000})");
    const QSize screen = QGuiApplication::primaryScreen()->availableSize();
    EXPECT_EQ(AppWindow::lastSize()["width"], screen.width());
    EXPECT_EQ(AppWindow::lastSize()["height"], screen.height());
}

}  // namespace
}  // namespace Brimlo
