#include "BrimloApp/Analyzer/TreemapItem.h"

#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloAppTests/Support/Contrast.h"
#include "BrimloAppTests/Support/ModelTest.h"

#include <QtQuick/QQuickWindow>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>

namespace Brimlo {
namespace {

constexpr int kWidth = 824;
constexpr int kHeight = 424;

/// A window of one treemap, of a tree that was put together by hand.
class TreemapItemTest : public Testing::ModelTest {
protected:
    TreemapItemTest() {
        root->isDirectory = true;
        root->children.emplace();
        item.setParentItem(window.contentItem());
        item.setRows(&rows);
        show(kWidth, kHeight);
    }

    void show(const int width, const int height) {
        window.resize(width, height);
        item.setSize(QSizeF(width, height));
        window.show();
        window.requestActivate();
        waitFor([this] { return window.isActive() && window.isExposed(); });
    }

    std::shared_ptr<FileNode> add(const std::string& name, const std::int64_t size) {
        auto node = std::make_shared<FileNode>();
        node->name = name;
        node->size = size;
        node->parent = root;
        root->children->push_back(node);
        return node;
    }

    void setTree() {
        model().analyzer()->setCurrent(nullptr);
        model().analyzer()->setCurrent(root);
    }

    /// What is seen.
    QImage picture() { return window.grabWindow().convertToFormat(QImage::Format_RGB32); }

    /// The same by a plain drawing of all cells.
    [[nodiscard]] QImage expected(const std::optional<std::size_t> hovered) const {
        const double ratio = window.effectiveDevicePixelRatio();
        QImage image{
            QSize{kWidth, kHeight}
            * ratio, QImage::Format_ARGB32_Premultiplied
        };
        image.fill(Qt::transparent);
        QPainter painter{&image};
        painter.scale(ratio, ratio);
        item.cells().draw(painter, item.boundingRect(), hovered);
        painter.end();
        QImage ground{image.size(), QImage::Format_RGB32};
        ground.fill(window.color());
        QPainter{&ground}.drawImage(0, 0, image);
        return ground;
    }

    [[nodiscard]] QPoint middle(const std::size_t cell) const {
        return item.cells().cells().at(cell).place.center().toPoint();
    }

    void press(const Qt::Key key) { QTest::keyClick(&window, key); }

    std::shared_ptr<FileNode> root = std::make_shared<FileNode>();
    NodeRows& rows = *model().analyzer()->rows();
    QQuickWindow window;
    TreemapItem item;
};

TEST_F(TreemapItemTest, WritesReadablyOnEveryColour) {
    const char* const names[] = {"a.mp4", "b.wav", "c.png", "d.zip", "e.cpp", "f.pdf", "g.js"};
    for (const char* const name : names) {
        add(name, 100);
    }
    for (int i = 0; i < 10; ++i) {
        add("folder" + std::to_string(i), 100)->isDirectory = true;  // Each of another shade.
    }
    setTree();
    for (const char* const ground : {"#ffffff", "#f5f6f8", "#15181c", "#000000"}) {
        window.setColor(ground);
        item.setGround(ground);
        const auto& cells = item.cells().cells();
        for (std::size_t i = 0; i < cells.size(); ++i) {
            SCOPED_TRACE(testing::Message() << ground << ' ' << i);
            QTest::mouseMove(&window, i % 2 == 0 ? middle(i) : QPoint{2, 2});
            const QImage image = picture();
            const QColor fill =
                image.pixelColor((cells[i].drawn.bottomRight() - QPointF{6, 6}).toPoint());
            double best = 1;
            for (int y = 8; y < 24; ++y) {
                for (int x = 8; x < 60; ++x) {
                    const QPointF at = cells[i].drawn.topLeft() + QPointF(x, y);
                    best = std::max(best, Testing::contrast(image.pixelColor(at.toPoint()), fill));
                }
            }
            EXPECT_GE(best, 4.5);
        }
    }
}

TEST_F(TreemapItemTest, HoversAndSelectsWithoutDrawingTheRestAnew) {
    add("a name so long that it goes on into the cells to the right of it, and beyond.mp4", 40);
    add(std::string(300, 'W'), 30);
    for (int i = 0; i < 30; ++i) {
        add("file" + std::to_string(i), 2);
    }
    add("folder", 20)->isDirectory = true;
    setTree();
    EXPECT_EQ(picture(), expected(std::nullopt));
    for (const std::size_t hovered : {0U, 1U, 2U, 10U, 32U, 3U}) {
        QTest::mouseMove(&window, middle(hovered));
        EXPECT_EQ(picture(), expected(hovered)) << hovered;
    }
    const QPointF corner = item.cells().cells()[1].drawn.topLeft();
    const QPoint selected = QPointF{corner.x() + 40, std::ceil(corner.y())}.toPoint();
    EXPECT_NE(picture().pixelColor(selected), QColor(Qt::white));
    rows.select(1);
    EXPECT_EQ(picture(), expected(3));
    EXPECT_EQ(picture().pixelColor(selected), QColor(Qt::white));
    QTest::mouseMove(&window, {2, 2});
    EXPECT_EQ(picture(), expected(std::nullopt));
    EXPECT_EQ(item.hoveredRow(), -1);
}

TEST_F(TreemapItemTest, AnswersToPointerAndKeys) {
    const auto folder = add("folder", 100);
    folder->isDirectory = true;
    folder->children.emplace();
    add("file", 45);
    add("other", 35);
    setTree();
    picture();
    // Cells: the folder at the left, the two files above one another at the right.
    QTest::mouseMove(&window, middle(0));
    EXPECT_EQ(item.hoveredName(), "folder");
    EXPECT_EQ(item.hoveredSize(), 100);
    QTest::mouseClick(&window, Qt::LeftButton, {}, middle(1));
    EXPECT_TRUE(rows.isSelected((*root->children)[1]->id));
    QTest::mouseClick(&window, Qt::LeftButton, {}, {3, 3});
    EXPECT_EQ(rows.selectedCount(), 1) << "a click beside the cells";
    QTest::mouseDClick(&window, Qt::LeftButton, {}, middle(0));
    EXPECT_EQ(model().analyzer()->current(), root) << "an empty folder stays closed";
    EXPECT_TRUE(rows.isSelected(folder->id));
    item.forceActiveFocus();
    std::vector<std::string> visited;
    for (const auto key :
         {Qt::Key_Right, Qt::Key_Down, Qt::Key_Down, Qt::Key_Left, Qt::Key_Up, Qt::Key_Right}) {
        press(key);
        visited.push_back(item.hoveredName().toStdString());
    }
    EXPECT_EQ(visited[0], "file");
    EXPECT_EQ(visited[1], "other");
    EXPECT_EQ(visited[2], "other") << "there is nothing below";
    EXPECT_EQ(visited[3], "folder");
    EXPECT_EQ(visited[4], "folder");
    press(Qt::Key_Space);
    EXPECT_EQ(rows.selectedCount(), 1);
    EXPECT_TRUE(
        rows.isSelected((*root->children)[static_cast<std::size_t>(item.hoveredRow())]->id));
    press(Qt::Key_Left);
    auto inner = std::make_shared<FileNode>();
    inner->size = 1;
    inner->name = "inner";
    folder->children->push_back(inner);
    press(Qt::Key_Return);
    EXPECT_EQ(model().analyzer()->current(), folder);
    EXPECT_NE(item.hoveredName(), "folder");
    restart();
    EXPECT_EQ(item.cells().cells().size(), 0U);
    EXPECT_EQ(item.hoveredRow(), -1);
}

}  // namespace
}  // namespace Brimlo
