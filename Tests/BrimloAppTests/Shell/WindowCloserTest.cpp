#include "BrimloApp/Shell/WindowCloser.h"

#include "BrimloApp/History/History.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloAppTests/Support/ModelTest.h"

#include <QtCore/QEvent>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>

#include <csignal>
#include <functional>
#include <optional>

namespace Brimlo {
namespace {

using namespace std::chrono_literals;
using Testing::HeldWork;
using Testing::TestClock;

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
    EXPECT_EQ(endAfterClosing(1min), 0);
}

TEST_F(WindowCloserTest, EndsOnlyWhenWorkOnFilesIsDone) {
    const WindowCloser closer{model()};
    finish();
    model().history()->purgeOwnTrash();
    ASSERT_NE(model().busy(), "");
    EXPECT_EQ(endAfterClosing(1min), 0);
    EXPECT_EQ(model().busy(), "");
    model().cleanup()->run(CleanPlan{{{.path = write("data")}}});
    EXPECT_EQ(endAfterClosing(1min), 0);
    EXPECT_FALSE(model().cleanup()->isCleaning());
}

TEST_F(WindowCloserTest, WaitsForWorkOnFilesWhenToldToQuitFromOutside) {
    struct Case {
        const char* name;
        std::function<void()> quit;
        std::function<void(TestClock&)> then;  ///< Instead of the end of the work.
        const char* busy;                      ///< In the end.
    };
    const auto post = [] { QCoreApplication::postEvent(qGuiApp, new QEvent{QEvent::Quit}); };
    const auto late = [](auto& it) { it.advance(WindowCloser::kLongestWait); };
    const Case cases[] = {
        {"the session's end",   post,                   {},                     ""                    },
        {"SIGTERM",             [] { raise(SIGTERM); }, {},                     ""                    },
        {"SIGINT",              [] { raise(SIGINT); },  {},                     ""                    },
        {"work that hangs",     post,                   late,                   "Removing from Trash…"},
        {"one more, impatient", post,                   [&](auto&) { post(); }, "Removing from Trash…"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const WindowCloser closer{model(), clock};
        finish();
        std::optional<HeldWork> held{std::in_place, Background::writers()};
        model().history()->purgeOwnTrash();
        QWindow window;
        window.show();
        QTimer::singleShot(0, qGuiApp, c.quit);
        QTimer afterwards;
        QObject::connect(&afterwards, &QTimer::timeout, [&] {
            if (!window.isVisible()) {
                afterwards.stop();
                c.then ? c.then(clock) : held.reset();
            }
        });
        afterwards.start(0);
        EXPECT_EQ(QGuiApplication::exec(), 0);
        EXPECT_EQ(model().busy(), c.busy);
        held.reset();
        finish();
    }
}

TEST_F(WindowCloserTest, GoesOnWhileTheWindowIsOpen) {
    const WindowCloser closer{model()};
    model().history()->purgeOwnTrash();
    QWindow window;
    window.show();
    // Some turns of the event loop after the work has ended.
    int turns = 0;
    QTimer each;
    QObject::connect(&each, &QTimer::timeout, [&] {
        turns += model().busy().isEmpty() ? 1 : 0;
        if (turns == 10) {
            QCoreApplication::exit(kStillRunning);
        }
    });
    each.start(0);
    EXPECT_EQ(QGuiApplication::exec(), kStillRunning);
}

}  // namespace
}  // namespace Brimlo
