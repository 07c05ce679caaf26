#include "BrimloApp/WindowCloser.h"

#include "BrimloAppTests/Support/ModelTest.h"

#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>

namespace Brimlo {
namespace {

using namespace std::chrono_literals;

constexpr int kStillRunning = 77;

class WindowCloserTest : public Testing::ModelTest {
protected:
    /// Closes the only window, and tells how the application ends within that time.
    static int endAfterClosing(const std::chrono::milliseconds limit) {
        QWindow window;
        window.show();
        QTimer::singleShot(0, &window, &QWindow::close);
        QTimer::singleShot(limit, qGuiApp, [] { QCoreApplication::exit(kStillRunning); });
        return QGuiApplication::exec();
    }
};

TEST_F(WindowCloserTest, EndsAtOnceWhenIdle) {
    const WindowCloser closer{model()};
    finish();
    EXPECT_EQ(endAfterClosing(5s), 0);
}

TEST_F(WindowCloserTest, EndsOnlyWhenWorkOnFilesIsDone) {
    const WindowCloser closer{model()};
    finish();
    model().purgeOwnTrash();
    ASSERT_NE(model().busy(), "");
    EXPECT_EQ(endAfterClosing(5s), 0);
    EXPECT_EQ(model().busy(), "");
}

TEST_F(WindowCloserTest, GoesOnWhileTheWindowIsOpen) {
    const WindowCloser closer{model()};
    model().purgeOwnTrash();
    QWindow window;
    window.show();
    QTimer::singleShot(300ms, qGuiApp, [] { QCoreApplication::exit(kStillRunning); });
    EXPECT_EQ(QGuiApplication::exec(), kStillRunning);
    EXPECT_EQ(model().busy(), "");
}

}  // namespace
}  // namespace Brimlo
