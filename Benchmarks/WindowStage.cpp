#include "Benchmarks/WindowStage.h"

#include "BrimloApp/Shell/OpenWindow.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QThreadPool>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <system_error>
#include <utility>

#include <unistd.h>

namespace Brimlo::Benchmarks {
namespace {

constexpr std::chrono::milliseconds kBeat{20};

[[noreturn]] void fail(const char* const words) {
    static_cast<void>(std::fprintf(stderr, "window-bench: %s\n", words));
    std::_Exit(EXIT_FAILURE);
}

/// A home folder of its own: nothing measured may reach that of who measures.
std::string makeHome() {
    std::error_code ignored;
    std::string pattern =
        std::filesystem::temp_directory_path(ignored).string() + "/brimlo-window-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) {
        fail("no folder could be made");
    }
    qputenv("HOME", pattern.c_str());
    return pattern;
}

QQuickItem* itemBelow(const QQuickItem& parent, const QByteArray& type) {
    for (QQuickItem* const child : parent.childItems()) {
        // QML's types bear a suffix that counts them.
        const QByteArray name = child->metaObject()->className();
        if (name == type || name.startsWith(type + "_QMLTYPE_")) {
            return child;
        }
        if (QQuickItem* const found = itemBelow(*child, type)) {
            return found;
        }
    }
    return nullptr;
}

}  // namespace

Frame measured(const std::function<void()>& work) {
    const auto processor = [] {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    };
    Frame frame;
    const double before = processor();
    QElapsedTimer taken;
    taken.start();
    work();
    frame.milliseconds = static_cast<double>(taken.nsecsElapsed()) / 1e6;
    frame.work = processor() - before;
    return frame;
}

WindowStage::WindowStage(int& argc, char** argv)
    : home_{makeHome()} {
    for (const char* const folder : {"XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME"}) {
        qunsetenv(folder);
    }
    qputenv("QT_QUICK_BACKEND", "software");
    application_ = std::make_unique<QGuiApplication>(argc, argv);
    heartbeat_.start(kBeat);
}

WindowStage::~WindowStage() {
    engine_.reset();
    model_.reset();
    QThreadPool::globalInstance()->waitForDone();
    std::error_code ignored;
    std::filesystem::remove_all(home_, ignored);
}

void WindowStage::open() {
    model_ = std::make_unique<AppModel>(Surroundings{.cli = {}, .docker = {}});
    updater_ = std::make_unique<Updater>(UpdateSource::ofThisBuild());
    desktopSettings_ = std::make_unique<DesktopSettings>(nullptr);
    engine_ = std::make_unique<QQmlApplicationEngine>();
    window_ = openWindow(*engine_, *model_, *updater_, *desktopSettings_);
    if (window_ == nullptr) {
        fail("the window could not be made");
    }
    QObject::connect(window_, &QQuickWindow::frameSwapped, window_, [this] { ++frames_; });
    settle();
}

QQuickItem* WindowStage::item(const char* const type) const {
    if (QQuickItem* const found = itemBelow(*window_->contentItem(), type)) {
        return found;
    }
    fail(type);
}

void WindowStage::waitFor(const std::function<bool()>& condition) const {
    constexpr int kMinute = 60'000;
    QElapsedTimer waited;
    waited.start();
    while (!condition()) {
        if (waited.hasExpired(kMinute)) {
            fail("something never happened");
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void WindowStage::settle() {
    constexpr int kStill = 300;
    QElapsedTimer still;
    still.start();
    for (int seen = frames_; !still.hasExpired(kStill);) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (std::exchange(seen, frames_) != frames_) {
            still.restart();
        }
    }
}

Frame WindowStage::frameAfter(const std::function<void()>& input) const {
    constexpr int kNothing = 500;
    const int before = frames_;
    Frame frame = measured([&] {
        QElapsedTimer waited;
        waited.start();
        input();
        while (frames_ == before && !waited.hasExpired(kNothing)) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    });
    frame.isDrawn = frames_ != before;
    return frame;
}

}  // namespace Brimlo::Benchmarks
