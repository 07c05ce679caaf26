#include "BrimloApp/Analyzer/TreemapItem.h"

#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloAppTests/Support/LayoutAudit.h"
#include "BrimloAppTests/Support/ModelTest.h"
#include "BrimloCore/DiskScanner/FileTree.h"
#include "BrimloCoreTests/Support/Words.h"

#include <QtQuick/QQuickWindow>
#include <QtTest/QTest>

#include <algorithm>
#include <chrono>

namespace Brimlo {
namespace {

/// A window of one treemap, of a tree that was put together by hand.
class TreemapItemTest : public Testing::ModelTest {
protected:
    TreemapItemTest() {
        tree->setChildren(*root, {});
        item.setParentItem(window.contentItem());
        item.setRows(&rows);
        window.resize(824, 424);
        item.setSize(window.size());
        window.show();
        window.requestActivate();
        waitFor([this] { return window.isActive() && window.isExposed(); });
    }

    FileNode& add(FileNode& folder, const std::string& name, const std::int64_t size) {
        std::vector<FileNode*> children{folder.children().begin(), folder.children().end()};
        children.push_back(
            &tree->add({.name = name, .parent = &folder, .size = size, .modified = {}}));
        tree->setChildren(folder, children);
        return *children.back();
    }

    void setTree() {
        model().analyzer()->setCurrent(nullptr);
        model().analyzer()->setCurrent(root);
    }

    /// What is seen.
    QImage picture() { return window.grabWindow().convertToFormat(QImage::Format_RGB32); }

    [[nodiscard]] QPoint middle(const std::size_t cell) const {
        return item.cells().cells().at(cell).place.center().toPoint();
    }

    void press(const Qt::Key key) { QTest::keyClick(&window, key); }

    std::shared_ptr<FileTree> tree = std::make_shared<FileTree>();
    std::shared_ptr<FileNode> root = tree->add({.name = "/root", .modified = {}}).shared();
    NodeRows& rows = *model().analyzer()->rows();
    QQuickWindow window;
    TreemapItem item;
};

TEST_F(TreemapItemTest, WritesReadablyOnEveryColour) {
    const char* const names[] = {"a.mp4", "b.wav", "c.png", "d.zip", "e.cpp", "f.pdf", "g.js"};
    for (const char* const name : names) {
        add(*root, name, 100);
    }
    for (int i = 0; i < 10; ++i) {
        add(*root, "folder" + std::to_string(i), 100).isDirectory = true;  // Each of another shade.
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
                    best = std::max(
                        best, Testing::LayoutAudit::contrast(image.pixelColor(at.toPoint()), fill));
                }
            }
            EXPECT_GE(best, 4.5);
        }
    }
}

TEST_F(TreemapItemTest, AnswersToPointerAndKeys) {
    FileNode& folder = add(*root, "folder", 100);
    folder.isDirectory = true;
    add(*root, "file", 45);
    add(*root, "other", 35);
    setTree();
    picture();
    // Cells: the folder at the left, the two files above one another at the right.
    QTest::mouseMove(&window, middle(1));
    const QImage before = picture();
    QTest::mouseClick(&window, Qt::LeftButton, {}, middle(1));
    EXPECT_TRUE(rows.isSelected(root->children()[1]->id()));
    EXPECT_NE(picture(), before);
    QTest::mouseClick(&window, Qt::LeftButton, {}, {3, 3});
    EXPECT_EQ(rows.selectedCount(), 1) << "a click beside the cells";
    QTest::mouseDClick(&window, Qt::LeftButton, {}, middle(0));
    EXPECT_EQ(model().analyzer()->current(), root) << "an empty folder stays closed";
    EXPECT_TRUE(rows.isSelected(folder.id()));
    item.forceActiveFocus();
    std::vector<std::string> visited;
    for (const auto key :
         {Qt::Key_Right, Qt::Key_Down, Qt::Key_Down, Qt::Key_Left, Qt::Key_Up, Qt::Key_Right}) {
        press(key);
        // As each frame does while the pointer rests.
        QHoverEvent rests{QEvent::HoverMove, middle(0), middle(0), middle(0), Qt::NoModifier};
        QCoreApplication::sendEvent(&item, &rests);
        visited.push_back(item.hoveredName().toStdString());
    }
    visited.pop_back();  // Either file is at the right.
    EXPECT_EQ(visited, Testing::words("file other other folder folder"));
    press(Qt::Key_Space);
    EXPECT_EQ(rows.selectedCount(), 1);
    EXPECT_TRUE(
        rows.isSelected(root->children()[static_cast<std::size_t>(item.hoveredRow())]->id()));
    press(Qt::Key_Left);
    add(folder, "inner", 1);
    press(Qt::Key_Return);
    EXPECT_EQ(model().analyzer()->current().get(), &folder);
    EXPECT_NE(item.hoveredName(), "folder");
    restart();
    EXPECT_EQ(item.cells().cells().size(), 0U);
    EXPECT_EQ(item.hoveredRow(), -1);
}

TEST_F(TreemapItemTest, FadesWhatTheChoiceLeavesOut) {
    using namespace std::chrono_literals;
    const std::chrono::sys_seconds now =
        std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    FileNode& deep = add(*root, "deep", 900);
    deep.isDirectory = true;
    FileNode& inner = add(deep, "inner", 800);
    inner.isDirectory = true;
    add(inner, "film.mkv", 800).modified = now - 240h;
    add(*root, "old.mkv", 500).modified = now - 24h * 100;
    add(*root, "notes.txt", 400).modified = now;
    FileNode& merged = add(*root, "9 smaller items", 300);
    merged.isAggregate = true;
    merged.modified = now - 24h * 60;
    setTree();
    constexpr auto kVideo = 1 << static_cast<int>(FileKind::video);
    const struct {
        const char* name;
        int kinds;
        int olderThan;
        double minSize;
        std::vector<std::string> faded;
    } cases[] = {
        {"no condition", 0,      0,   0,   {}                                                 },
        {"a kind",       kVideo, 0,   0,   {"notes.txt", "9 smaller items"}                   },
        {"an age",       0,      30,  0,   {"deep", "notes.txt"}                              },
        {"both",         kVideo, 30,  0,   {"deep", "notes.txt", "9 smaller items"}           },
        {"a size",       0,      0,   600, {"old.mkv", "notes.txt", "9 smaller items"}        },
        {"all",          kVideo, 200, 0,   {"deep", "old.mkv", "notes.txt", "9 smaller items"}},
    };
    const QImage plain = picture();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        rows.choice()->setKinds(c.kinds);
        rows.choice()->setOlderThan(c.olderThan);
        rows.choice()->setMinSize(c.minSize);
        std::vector<std::string> faded;
        for (int row = 0; row < rows.count(); ++row) {
            if (rows.isFaded(row)) {
                faded.emplace_back(rows.nodes()[static_cast<std::size_t>(row)]->name());
            }
        }
        EXPECT_EQ(faded, c.faded);
        EXPECT_EQ(picture() == plain, c.faded.empty());
    }
}

}  // namespace
}  // namespace Brimlo
