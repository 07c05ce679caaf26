#pragma once

#include "BrimloApp/Platform/DesktopSettings.h"
#include "BrimloApp/Settings/Updater.h"
#include "BrimloAppTests/Support/LayoutAudit.h"
#include "BrimloAppTests/Support/ModelTest.h"

#include <QtCore/QUrl>
#include <QtGui/QAccessible>
#include <QtQml/QQmlApplicationEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Brimlo::Testing {

/// The application's real window over the model, which a test uses as a person does: controls are
/// found by what they are and what they are called, among those that can be seen, and get real
/// clicks and keys. While a menu or a sheet is open, only what is in it can be found.
///
/// Nothing moves or fades. A test fails when anything was written to the log.
class WindowTest : public ModelTest {
protected:
    WindowTest();
    ~WindowTest() override;

    /// Shows the window, at its smallest unless said otherwise, once the model is idle. `section`
    /// is shown first.
    void open(Section section = Section::Overview, QSize size = {1000, 660});
    /// Ends the window and its model, as if the program ended.
    void close();
    [[nodiscard]] QQuickWindow& window() const { return *window_; }
    /// Sets one of the things that the desktop decides.
    void setTheme(const char* property, const QVariant& value);
    [[nodiscard]] QVariant theme(const char* property) const;

    /// The first that bears the name; a "*" at its beginning or end stands for any text. Null if
    /// none.
    [[nodiscard]] QQuickItem* find(QAccessible::Role role, const QString& name) const;
    /// The same, once it is there.
    [[nodiscard]] QQuickItem& get(QAccessible::Role role, const QString& name) const;
    /// Whether there is anything with that name, whatever it is.
    [[nodiscard]] bool sees(const QString& name) const;
    /// Those of these names that are seen, in the order given.
    [[nodiscard]] std::vector<std::string> seen(const std::vector<const char*>& names) const;
    [[nodiscard]] bool isEnabled(const QString& button) const;
    [[nodiscard]] bool isChecked(QAccessible::Role role, const QString& name) const;

    /// Waits for the control, and clicks into its middle.
    void click(QAccessible::Role role, const QString& name, Qt::MouseButton = Qt::LeftButton);
    void press(const QString& button) { click(QAccessible::Button, button); }
    void choose(const QString& entry) { click(QAccessible::MenuItem, entry); }
    void clickAt(QPointF scene, Qt::MouseButton = Qt::LeftButton, Qt::KeyboardModifiers = {});
    void doubleClickAt(QPointF scene);
    /// Moves the pointer there.
    void pointAt(QPointF scene);
    [[nodiscard]] static QPointF middle(const QQuickItem& item);

    void key(int key, Qt::KeyboardModifiers modifiers = {});
    void type(const QString& text);
    /// Presses Tab until the control has the focus; fails the test when the focus comes round.
    void tabTo(QAccessible::Role role, const QString& name);
    /// What the focus is on: its accessible name.
    [[nodiscard]] QString focused() const;
    /// Waits some seconds at most; what never comes ends the test.
    static void await(const std::function<bool()>& condition, const QString& what);
    void waitToSee(const QString& name);

    /// Fails the test if text in the window is misplaced or faint (`LayoutAudit`) and stays so: a
    /// list lays its rows out, and a color changes, over several frames.
    void expectLaidOut(LayoutAudit::Elision elision = LayoutAudit::Elision::ofPaths);
    void expectReadable();

    /// Drops files on a place of the window; whether they were taken.
    bool drop(const std::vector<std::string>& paths, QPointF at);

    /// What was to be opened in another program.
    [[nodiscard]] const std::vector<QUrl>& opened() const;

    /// Answers the panel for a file or a folder that is open with a path.
    void answerPanel(const std::string& path);

private:
    class Opener;

    [[nodiscard]] std::vector<QQuickItem*> popups() const;
    [[nodiscard]] QQuickItem* find(
        const std::function<bool(QAccessibleInterface&)>& accepted) const;
    /// What is open last, or the window.
    [[nodiscard]] QAccessibleInterface* scope() const;

    DesktopSettings settings_;
    Updater updater_{UpdateSource{.version = "1.2.3"}};
    std::unique_ptr<Opener> opener_;
    std::unique_ptr<QQmlApplicationEngine> engine_;
    std::unique_ptr<QObject> theme_;
    QQuickWindow* window_ = nullptr;
};

}  // namespace Brimlo::Testing
