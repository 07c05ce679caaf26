#include "BrimloAppTests/Support/WindowTest.h"

#include "BrimloApp/Shell/AppWindow.h"

#include <QtCore/QFile>
#include <QtCore/QMimeData>
#include <QtDBus/QDBusConnection>
#include <QtGui/QDesktopServices>
#include <QtQml/QQmlComponent>
#include <QtTest/QTest>
#include <gmock/gmock.h>

#include <functional>
#include <stdexcept>

namespace Brimlo::Testing {
namespace {

std::vector<std::string> warnings;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

void keepWarning(const QtMsgType type, const QMessageLogContext& /*where*/, const QString& text) {
    // Qt says so of its own lists when one that was being filled turns empty, or is closed.
    const bool isQts = text.startsWith("DelegateModel::cancel: index out range") ||
                       text.contains("being created at engine destruction");
    if (type != QtDebugMsg && type != QtInfoMsg && !isQts) {
        warnings.push_back(text.toStdString());
    }
}

bool fits(const QString& name, const QString& wanted) {
    return wanted.endsWith('*')     ? name.startsWith(wanted.chopped(1))
           : wanted.startsWith('*') ? name.endsWith(wanted.mid(1))
                                    : name == wanted;
}

/// The part of an item that is seen, in the scene; empty when there is none.
QRectF seenPart(const QQuickItem& item) {
    QRectF part = item.mapRectToScene(item.boundingRect());
    for (const QQuickItem* up = item.parentItem(); up != nullptr; up = up->parentItem()) {
        if (up->clip()) {
            part &= up->mapRectToScene(up->boundingRect());
        }
    }
    return part & QRectF{QPointF{}, item.window()->size()};
}

/// The first seen of the tree below that is accepted.
QQuickItem* findIn(
    QAccessibleInterface* tree, const std::function<bool(QAccessibleInterface&)>& accepted) {
    for (int i = 0; tree != nullptr && i < tree->childCount(); ++i) {
        QAccessibleInterface* const child = tree->child(i);
        if (child == nullptr || child->state().invisible) {
            continue;
        }
        auto* const item = qobject_cast<QQuickItem*>(child->object());
        if (item != nullptr && accepted(*child) && !seenPart(*item).isEmpty()) {
            return item;
        }
        if (QQuickItem* const deeper = findIn(child, accepted)) {
            return deeper;
        }
    }
    return nullptr;
}

QAccessibleInterface* interfaceOf(QObject& item) {
    return QAccessible::queryAccessibleInterface(&item);
}

}  // namespace

/// Takes the place of the programs that open folders and links.
class WindowTest::Opener : public QObject {
    Q_OBJECT
public:
    Opener() { QDesktopServices::setUrlHandler("file", this, "take"); }
    ~Opener() override { QDesktopServices::unsetUrlHandler("file"); }
    Q_DISABLE_COPY_MOVE(Opener)

    Q_INVOKABLE void take(const QUrl& url) { urls.push_back(url); }

    std::vector<QUrl> urls;
};

WindowTest::WindowTest()
    : settings_{QDBusConnection{"none"}}
    , opener_{std::make_unique<Opener>()} {
    // So that no file manager of the machine is asked.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    warnings.clear();
    qInstallMessageHandler(keepWarning);
}

WindowTest::~WindowTest() {
    close();
    qInstallMessageHandler(nullptr);
    EXPECT_THAT(warnings, testing::IsEmpty());
}

void WindowTest::close() {
    theme_.reset();
    engine_.reset();
    window_ = nullptr;
    restart();
}

void WindowTest::open(const Section section, const QSize size) {
    model().setSection(section);
    finish();
    engine_ = std::make_unique<QQmlApplicationEngine>();
    window_ = AppWindow::open(*engine_, model(), updater_, settings_);
    ASSERT_NE(window_, nullptr);
    window_->resize(size);
    QQmlComponent theme{engine_.get()};
    theme.setData("import QtQml\nimport Brimlo\nQtObject { property var it: Theme }", {});
    theme_.reset(theme.create());
    setTheme("reduceMotion", true);
    window_->requestActivate();
    await([&] { return window_->isActive() && window_->isExposed(); }, "a window");
    finish();
}

void WindowTest::setTheme(const char* property, const QVariant& value) {
    ASSERT_TRUE(theme_->property("it").value<QObject*>()->setProperty(property, value));
}

QVariant WindowTest::theme(const char* property) const {
    return theme_->property("it").value<QObject*>()->property(property);
}

std::vector<QQuickItem*> WindowTest::popups() const {
    std::vector<QQuickItem*> open;
    for (QQuickItem* const layer : window_->contentItem()->childItems()) {
        for (QQuickItem* const popup : layer->childItems()) {
            if (popup->isVisible() && popup->inherits("QQuickPopupItem")) {
                open.push_back(popup);
            }
        }
    }
    return open;
}

QAccessibleInterface* WindowTest::scope() const {
    QAccessibleInterface* scope = interfaceOf(*window_);
    for (QQuickItem* const popup : popups()) {
        if (interfaceOf(*popup)->role() != QAccessible::ToolTip) {
            scope = interfaceOf(*popup);
        }
    }
    return scope;
}

QQuickItem* WindowTest::find(const std::function<bool(QAccessibleInterface&)>& accepted) const {
    window_->grabWindow();  // All gets its place.
    return findIn(scope(), accepted);
}

QQuickItem* WindowTest::find(const QAccessible::Role role, const QString& name) const {
    return find([&](QAccessibleInterface& each) {
        return each.role() == role && fits(each.text(QAccessible::Name), name);
    });
}

bool WindowTest::sees(const QString& name) const {
    return find([&](QAccessibleInterface& each) {
               return fits(each.text(QAccessible::Name), name);
           }) != nullptr;
}

std::vector<std::string> WindowTest::seen(const std::vector<const char*>& names) const {
    std::vector<std::string> seen;
    for (const char* const name : names) {
        if (sees(name)) {
            seen.emplace_back(name);
        }
    }
    return seen;
}

bool WindowTest::isEnabled(const QString& button) const {
    const QQuickItem* const found = find(QAccessible::Button, button);
    EXPECT_NE(found, nullptr) << "there is no button " << button.toStdString();
    return found != nullptr && found->isEnabled();
}

bool WindowTest::isChecked(const QAccessible::Role role, const QString& name) const {
    QQuickItem* const found = find(role, name);
    EXPECT_NE(found, nullptr) << "there is no " << name.toStdString();
    return found != nullptr && interfaceOf(*found)->state().checked;
}

void WindowTest::click(
    const QAccessible::Role role, const QString& name, const Qt::MouseButton button) {
    clickAt(middle(get(role, name)), button);
}

QQuickItem& WindowTest::get(const QAccessible::Role role, const QString& name) const {
    QQuickItem* found = nullptr;
    await([&] { return (found = find(role, name)) != nullptr; }, name);
    return *found;
}

QPointF WindowTest::middle(const QQuickItem& item) {
    return seenPart(item).center();
}

void WindowTest::clickAt(
    const QPointF scene, const Qt::MouseButton button, const Qt::KeyboardModifiers modifiers) {
    QTest::mouseClick(window_, button, modifiers, scene.toPoint());
}

void WindowTest::doubleClickAt(const QPointF scene) {
    QTest::mouseDClick(window_, Qt::LeftButton, {}, scene.toPoint());
}

void WindowTest::pointAt(const QPointF scene) {
    QTest::mouseMove(window_, scene.toPoint());
}

void WindowTest::key(const int key, const Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(window_, static_cast<Qt::Key>(key), modifiers);
}

void WindowTest::type(const QString& text) {
    for (const QChar each : text) {
        QTest::sendKeyEvent(QTest::Click, window_, Qt::Key_unknown, each, Qt::NoModifier);
    }
}

QString WindowTest::focused() const {
    QQuickItem* const item = window_->activeFocusItem();
    QAccessibleInterface* const it = item == nullptr ? nullptr : interfaceOf(*item);
    return it == nullptr ? QString{} : it->text(QAccessible::Name);
}

void WindowTest::tabTo(const QAccessible::Role role, const QString& name) {
    std::string way;
    for (int i = 0; i < 60; ++i) {
        QQuickItem* const found = find(role, name);
        // The current row of a list has the focus for all of it.
        QQuickItem* const active = window_->activeFocusItem();
        if (found != nullptr && active != nullptr &&
            (found == active ||
             (found->hasActiveFocus() && active->inherits("QQuickItemDelegate")))) {
            return;
        }
        key(Qt::Key_Tab);
        way += focused().toStdString() + " > ";
    }
    throw std::runtime_error("Tab leads to " + way + "but not to " + name.toStdString());
}

void WindowTest::await(const std::function<bool()>& condition, const QString& what) {
    constexpr int kLongestMilliseconds = 30000;
    if (!QTest::qWaitFor(condition, kLongestMilliseconds)) {
        throw std::runtime_error("it never came: " + what.toStdString());
    }
}

void WindowTest::waitToSee(const QString& name) {
    await([&] { return sees(name); }, name);
}

void WindowTest::expectLaidOut(const LayoutAudit::Elision elision) {
    EXPECT_THAT(
        LayoutAudit::lasting(window(), [&] { return LayoutAudit::misplaced(window(), elision); }),
        testing::IsEmpty());
}

void WindowTest::expectReadable() {
    EXPECT_THAT(
        LayoutAudit::lasting(window(), [&] { return LayoutAudit::faint(window()); }),
        testing::IsEmpty());
}

bool WindowTest::drop(const std::vector<std::string>& paths, const QPointF at) {
    QMimeData data;
    QList<QUrl> urls;
    for (const std::string& path : paths) {
        urls.append(QUrl::fromLocalFile(QFile::decodeName(path.c_str())));
    }
    data.setUrls(urls);
    const auto actions = Qt::CopyAction | Qt::MoveAction;
    QDragEnterEvent enter{at.toPoint(), actions, &data, Qt::LeftButton, {}};
    QCoreApplication::sendEvent(window_, &enter);
    QDragMoveEvent move{at.toPoint(), actions, &data, Qt::LeftButton, {}};
    QCoreApplication::sendEvent(window_, &move);
    const bool isWelcome = move.isAccepted();
    QDropEvent drop{at, actions, &data, Qt::LeftButton, {}};
    drop.setAccepted(false);
    QCoreApplication::sendEvent(window_, &drop);
    EXPECT_EQ(drop.isAccepted(), isWelcome);
    return drop.isAccepted();
}

const std::vector<QUrl>& WindowTest::opened() const {
    return opener_->urls;
}

void WindowTest::answerPanel(const std::string& path) {
    QObject* panel = nullptr;
    const auto isOpen = [&] {
        for (QObject* const each : window_->findChildren<QObject*>()) {
            if (each->inherits("QQuickDialog") && each->property("visible").toBool()) {
                panel = each;
            }
        }
        return panel != nullptr;
    };
    await(isOpen, "a panel");
    const bool isFolder = panel->inherits("QQuickFolderDialogImpl");
    const auto url = QUrl::fromLocalFile(QFile::decodeName(path.c_str()));
    panel->setProperty(isFolder ? "selectedFolder" : "selectedFile", url);
    QMetaObject::invokeMethod(panel, "accept");
    await([&] { return !panel->property("visible").toBool(); }, "the end of the panel");
}

}  // namespace Brimlo::Testing

#include "WindowTest.moc"
