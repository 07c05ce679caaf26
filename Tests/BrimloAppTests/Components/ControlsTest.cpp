#include "BrimloAppTests/Support/AppTest.h"
#include "BrimloAppTests/Support/Contrast.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QAccessible>
#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QTest>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace Brimlo {
namespace {

std::vector<std::string> warnings;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

void keepWarning(const QtMsgType type, const QMessageLogContext& /*where*/, const QString& text) {
    if (type != QtDebugMsg && type != QtInfoMsg) {
        warnings.push_back(text.toStdString());
    }
}

/// A window with what a test writes in it, under an engine of its own.
class ControlsTest : public Testing::AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        engine_.addImportPath(QStringLiteral("qrc:/qt/qml"));
        warnings.clear();
        previous_ = qInstallMessageHandler(keepWarning);
    }

    void TearDown() override {
        window_.reset();
        qInstallMessageHandler(previous_);
        EXPECT_EQ(warnings, std::vector<std::string>{});
        AppTest::TearDown();
    }

    /// Shows the body of a window; its children with an `objectName` are found by `item`.
    void show(const QByteArray& body) {
        QQmlComponent component(&engine_);
        component.setData(
            "import QtQuick\nimport QtQuick.Layouts\nimport Brimlo\nWindow { id: window; width: "
            "500; height: "
            "400; visible: true; property var theme: Theme; property int count: 0;" +
                body + "}",
            QUrl());
        window_.reset(qobject_cast<QQuickWindow*>(component.create()));
        ASSERT_TRUE(window_) << component.errorString().toStdString();
        window_->requestActivate();
        waitFor([&] { return window_->isActive() && window_->isExposed(); });
    }

    [[nodiscard]] QObject* item(const char* name) const {
        return window_->findChild<QObject*>(QString::fromLatin1(name));
    }
    [[nodiscard]] int count() const { return window_->property("count").toInt(); }
    [[nodiscard]] QObject* theme() const { return window_->property("theme").value<QObject*>(); }
    void press(const Qt::Key key) { QTest::keyClick(window_.get(), key); }

    QQmlEngine engine_;
    std::unique_ptr<QQuickWindow> window_;

private:
    QtMessageHandler previous_ = nullptr;
};

TEST_F(ControlsTest, WordsStandOutFromEveryGround) {
    show("");
    const std::map<const char*, const char*> tints{
        {"safeText",    "safe"   },
        {"rebuildText", "rebuild"},
        {"reviewText",  "review" },
        {"infoText",    "info"   }
    };
    ASSERT_NEAR(Testing::contrast(Qt::white, Qt::black), 21, 0.01);
    for (const bool dark : {false, true}) {
        for (const bool high : {false, true}) {
            for (const auto* accent : {"", "#1f6f8b", "#f5c211", "#000000", "#ffffff", "#3584e4"}) {
                SCOPED_TRACE(testing::Message() << dark << high << accent);
                theme()->setProperty("dark", dark);
                theme()->setProperty("highContrast", high);
                theme()->setProperty("accentColor", QColor(QString::fromLatin1(accent)));
                const auto color = [&](const char* name) {
                    return theme()->property(name).value<QColor>();
                };
                EXPECT_GE(Testing::contrast(color("inkOnAccent"), color("accent")), 4.5);
                for (const auto* ground : {"window", "sidebar", "card", "popup", "field"}) {
                    for (const auto* ink : {"text", "secondaryText", "accentText"}) {
                        EXPECT_GE(Testing::contrast(color(ink), color(ground)), 4.5)
                            << ink << " on " << ground;
                    }
                    for (const auto& [ink, tint] : tints) {
                        EXPECT_GE(Testing::contrast(color(ink), color(ground)), 4.5)
                            << ink << " on " << ground;
                    }
                }
            }
        }
    }
}

TEST_F(ControlsTest, ChangeNothingThatIsNotTheirs) {
    show(
        "CheckBox { objectName: 'box'; checkState: Qt.PartiallyChecked; focus: true; label: 'x'; "
        "onClicked: ++count }"
        "Toggle { objectName: 'toggle'; onSwitched: value => count += value ? 10 : 0 }"
        "SegmentedPicker { objectName: 'picker'; model: [{text: 'a'}, {text: 'b'}]; "
        "onActivated: index => count += 100 * index }");
    press(Qt::Key_Space);
    press(Qt::Key_Return);
    EXPECT_EQ(count(), 2);
    EXPECT_EQ(item("box")->property("checkState").toInt(), Qt::PartiallyChecked);
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_EQ(count(), 12);
    EXPECT_FALSE(item("toggle")->property("on").toBool());
    press(Qt::Key_Tab);
    press(Qt::Key_Right);
    EXPECT_EQ(count(), 112);
    EXPECT_EQ(item("picker")->property("currentIndex").toInt(), 0);
}

TEST_F(ControlsTest, AStepperKeepsWhatIsOutOfItsRangeUntilTouched) {
    struct Case {
        int value;
        Qt::Key key;
        int asked;
    };
    const Case cases[] = {
        {20,  Qt::Key_Up,   25 },
        {20,  Qt::Key_Down, 15 },
        {5,   Qt::Key_Down, 0  },
        {498, Qt::Key_Up,   500},
        {2,   Qt::Key_Up,   7  },
        {2,   Qt::Key_Down, 0  },
        {900, Qt::Key_Up,   0  },
        {900, Qt::Key_Down, 895},
        {500, Qt::Key_Up,   0  },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.value << ' ' << c.key);
        show(
            "Stepper { objectName: 'stepper'; focus: true; from: 5; to: 500; step: 5; value: " +
            QByteArray::number(c.value) + "; onStepped: value => count = value }");
        EXPECT_EQ(item("stepper")->property("value").toInt(), c.value);
        press(c.key);
        EXPECT_EQ(count(), c.asked);
    }
}

TEST_F(ControlsTest, ASheetEndsByEscapeAndAnswersReturnAndKeepsTheFocus) {
    show(
        "OutlineButton { text: 'behind' }"
        "Sheet { id: sheet; objectName: 'sheet'; presented: true; title: 't'; defaultButton: ok;"
        "  onDismissed: { presented = false; ++count }"
        "  footer: [OutlineButton { text: 'no' }, SolidButton { id: ok; text: 'ok'; onClicked: "
        "count += 10 }]"
        "  Field { objectName: 'field' } }");
    auto* sheet = item("sheet");
    waitFor([&] { return sheet->property("opened").toBool(); });
    press(Qt::Key_Return);
    EXPECT_EQ(count(), 10);
    std::set<QObject*> reached;
    for (int i = 0; i < 6; ++i) {
        press(Qt::Key_Tab);
        reached.insert(window_->activeFocusItem());
    }
    EXPECT_EQ(reached.size(), 3U) << "the field and the two buttons, round and round";
    qobject_cast<QQuickItem*>(item("field"))->forceActiveFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(count(), 20);
    press(Qt::Key_Escape);
    waitFor([&] { return !sheet->property("visible").toBool(); });
    EXPECT_EQ(count(), 21);
    sheet->setProperty("presented", true);
    waitFor([&] { return sheet->property("opened").toBool(); });
}

TEST_F(ControlsTest, AListIsWalkedByItsKeys) {
    show(
        "ScrollList { objectName: 'list'; anchors.fill: parent; focus: true; model: 1000;"
        "  onOpened: index => window.count = index; delegate: ListRow { text: 'row' } }");
    const auto at = [&] { return item("list")->property("currentIndex").toInt(); };
    press(Qt::Key_End);
    EXPECT_EQ(at(), 999);
    press(Qt::Key_Up);
    press(Qt::Key_Return);
    EXPECT_EQ(count(), 998);
    press(Qt::Key_Home);
    press(Qt::Key_PageDown);
    EXPECT_GT(at(), 5);
    EXPECT_LT(at(), 20);
    press(Qt::Key_PageUp);
    press(Qt::Key_PageUp);
    EXPECT_EQ(at(), 0);
}

TEST_F(ControlsTest, TellTheirRoleAndNameAndCanBePressed) {
    struct Case {
        const char* control;
        QAccessible::Role role;
        const char* name;
    };
    const Case cases[] = {
        {"SolidButton { text: 'Clean'; onClicked: ++count",                    QAccessible::Button,   "Clean"  },
        {"ToolbarButton { symbol: 'trash'; help: 'Empty'; onClicked: ++count",
         QAccessible::Button,
         "Empty"                                                                                               },
        {"CheckBox { help: 'All'; onClicked: ++count",                         QAccessible::CheckBox, "All"    },
        {"Toggle { text: 'Updates'; onSwitched: ++count",                      QAccessible::CheckBox, "Updates"},
        {"ListRow { text: 'Row'; onClicked: ++count",                          QAccessible::ListItem, "Row"    },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        show(QByteArray(c.control) + "; objectName: 'it'}");
        auto* interface = QAccessible::queryAccessibleInterface(item("it"));
        ASSERT_NE(interface, nullptr);
        EXPECT_EQ(interface->role(), c.role);
        EXPECT_EQ(interface->text(QAccessible::Name).toStdString(), c.name);
        ASSERT_NE(interface->actionInterface(), nullptr);
        interface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        EXPECT_EQ(count(), 1);
        item("it")->setProperty("enabled", false);
        interface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        EXPECT_EQ(count(), 1) << "although disabled";
    }
}

TEST_F(ControlsTest, AllAreDrawnInLightAndDarkWithoutAWarning) {
    std::set<QRgb> grounds;
    for (const auto* file : {"Gallery.qml", "Sheets.qml"}) {
        for (const bool dark : {false, true}) {
            show("");
            theme()->setProperty("dark", dark);
            QQmlComponent component(
                &engine_,
                QUrl::fromLocalFile(
                    QStringLiteral(BRIMLO_CONTROL_PICTURES "/") + QString::fromLatin1(file)));
            std::unique_ptr<QObject> made(component.create());
            ASSERT_TRUE(made) << component.errorString().toStdString();
            auto* window = qobject_cast<QQuickWindow*>(made.get());
            if (auto* picture = qobject_cast<QQuickItem*>(made.get())) {
                window = window_.get();
                window->resize(picture->size().toSize());
                picture->setParentItem(window->contentItem());
            }
            // A sheet and what lies behind it come in over some frames.
            waitFor([&] {
                const auto image = window->grabWindow();
                std::set<QRgb> colors;
                for (int y = 0; y < image.height(); y += 3) {
                    for (int x = 0; x < image.width(); x += 3) {
                        colors.insert(image.pixel(x, y));
                    }
                }
                return colors.size() > 100 && grounds.insert(image.pixel(2, 2)).second;
            });
        }
    }
}

}  // namespace
}  // namespace Brimlo
