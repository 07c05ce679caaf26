#pragma once

#include "BrimloApp/Platform/DesktopSettings.h"
#include "BrimloApp/Settings/Updater.h"
#include "BrimloApp/Shell/AppModel.h"

#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <functional>
#include <memory>
#include <string>

namespace Brimlo::Benchmarks {

/// What one frame, or another piece of work of the main thread, took in milliseconds.
struct Frame {
    double milliseconds = 0;
    double work = 0;  ///< Of the processor, so that a busy machine makes little difference.
    bool isDrawn = true;
};

[[nodiscard]] Frame measured(const std::function<void()>& work);

/// The application's own window over a model of a home folder that is empty to begin with.
///
/// One a process, on its main thread. The folder goes with it.
class WindowStage {
public:
    WindowStage(int& argc, char** argv);
    ~WindowStage();

    WindowStage(const WindowStage&) = delete;
    WindowStage& operator=(const WindowStage&) = delete;
    WindowStage(WindowStage&&) = delete;
    WindowStage& operator=(WindowStage&&) = delete;

    [[nodiscard]] const std::string& home() const { return home_; }
    [[nodiscard]] AppModel& model() { return *model_; }
    [[nodiscard]] QQuickWindow& window() { return *window_; }

    /// Opens the window. What the home folder is to hold is there by now.
    void open();

    /// The first item on show of a type, named as in QML or with its namespace; ends the program
    /// when there is none.
    [[nodiscard]] QQuickItem* item(const char* type) const;

    /// Runs the event loop until `condition` holds; ends the program when it doesn't in a minute.
    void waitFor(const std::function<bool()>& condition) const;
    /// Runs the event loop until no frame has been drawn for a while.
    void settle();

    /// From an input to the end of the frame that shows it; not drawn when it changed nothing.
    [[nodiscard]] Frame frameAfter(const std::function<void()>& input) const;

private:
    std::string home_;
    std::unique_ptr<QGuiApplication> application_;
    QTimer heartbeat_;  ///< So that waiting for events ends when nothing happens.
    std::unique_ptr<AppModel> model_;
    std::unique_ptr<Updater> updater_;
    std::unique_ptr<DesktopSettings> desktopSettings_;
    std::unique_ptr<QQmlApplicationEngine> engine_;
    QQuickWindow* window_ = nullptr;  ///< The engine's.
    int frames_ = 0;
};

}  // namespace Brimlo::Benchmarks
