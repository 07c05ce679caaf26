#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Analyzer/NodeRows.h"
#include "BrimloApp/Analyzer/TreemapItem.h"
#include "BrimloApp/Duplicates/DuplicateRows.h"
#include "BrimloApp/Duplicates/DuplicateSearch.h"
#include "BrimloApp/SmartClean/SmartClean.h"
#include "BrimloApp/SmartClean/SuggestionRows.h"
#include "BrimloAppTests/Support/WindowTest.h"
#include "BrimloCore/DiskScanner/FileTree.h"
#include "BrimloCore/Models/Suggestion.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <QtCore/QElapsedTimer>
#include <QtGui/QImage>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string_view>
#include <utility>

// window-bench: what the screens cost, tried in the window of the tests. Prints a line for each
// measure: "MEASURED", its name, and the figures of its runs in milliseconds, or in bytes for
// memory.

namespace Brimlo {
namespace {

constexpr int kRows = 10'000;
constexpr int kRules = 170;  // Each with as many items as the list shows of one suggestion.
constexpr int kItemsOfRule = 60;
constexpr int kLargeRules = 20;
constexpr int kItemsOfLargeRule = 1'000;
constexpr int kCells = 5'000;
constexpr int kGroups = 20'000;  // Of three equal files.

/// What one frame, or another piece of work of the main thread, took in milliseconds.
struct Frame {
    double milliseconds = 0;
    double work = 0;  ///< Of the processor, so that a busy machine makes little difference.
    bool isDrawn = true;
};

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

void print(const std::string& name, const std::vector<double>& figures) {
    static_cast<void>(std::printf("MEASURED %s", name.c_str()));
    for (const double figure : figures) {
        static_cast<void>(std::printf(" %.2f", figure));
    }
    static_cast<void>(std::puts(""));
}

void print(const std::string& name, const double figure) {
    print(name, std::vector{figure});
}

/// On the clock, and under the name with "-work" the time of the processor.
void print(const std::string& name, const std::vector<Frame>& frames) {
    std::vector<double> taken;
    std::vector<double> work;
    for (const Frame& frame : frames) {
        if (frame.isDrawn) {
            taken.push_back(frame.milliseconds);
            work.push_back(frame.work);
        }
    }
    print(name, taken);
    print(name + "-work", work);
}

/// A folder as a scan would give it, of files of many sizes and kinds.
std::shared_ptr<FileNode> folderOf(const int count) {
    const char* const kinds[] = {".mp4", ".wav", ".png", ".zip", ".cpp", ".pdf", ".js", ".dat", ""};
    const auto tree = std::make_shared<FileTree>();
    FileNode& folder = tree->add({.name = "/home/somebody/everything", .modified = {}});
    std::vector<FileNode*> files;
    for (int i = 0; i < count; ++i) {
        const std::string name =
            "a file of some length " + std::to_string(i) + kinds[i % std::size(kinds)];
        files.push_back(&tree->add(
            {.name = name,
             .parent = &folder,
             .size = 4096 * (1 + static_cast<std::int64_t>(1e7 / (i + 1.0))),
             .fileCount = 1,
             .modified = std::chrono::sys_seconds{std::chrono::hours{450'000 - i}}}));
        folder.size += files.back()->size;
    }
    folder.fileCount = count;
    tree->setChildren(folder, files);
    return folder.shared();
}

/// A run of rules that each found many files, all ticked.
std::vector<Suggestion> largeRun() {
    std::vector<Suggestion> found;
    for (int rule = 0; rule < kLargeRules; ++rule) {
        Suggestion suggestion;
        suggestion.id = "custom.rule" + std::to_string(rule);
        suggestion.name = suggestion.id;
        suggestion.risk = Risk::safe;
        for (int item = 0; item < kItemsOfLargeRule; ++item) {
            std::string path = "/home/somebody/.cache/" + suggestion.id + "/" +
                               std::to_string(item % 9) + "/a file of some length " +
                               std::to_string(item);
            suggestion.preselectedPaths.insert(path);
            suggestion.items.push_back(
                {.path = std::move(path),
                 .size = std::int64_t{4096} * (kItemsOfLargeRule - item),
                 .idleDays = {},
                 .detail = {},
                 .subtitle = {}});
        }
        found.push_back(std::move(suggestion));
    }
    return found;
}

/// The first visible item below of a type, named as in QML or with its namespace.
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

class WindowBench : public Testing::WindowTest {
protected:
    void openScreen() {
        open(Section::Overview, {1180, 780});
        setTheme("reduceMotion", false);
        QObject::connect(&window(), &QQuickWindow::frameSwapped, &window(), [this] { ++frames_; });
        rest();
    }

    [[nodiscard]] QQuickItem& item(const char* const type) const {
        QQuickItem* const found = itemBelow(*window().contentItem(), type);
        return found == nullptr ? throw std::runtime_error(type) : *found;
    }

    /// Runs the event loop until no frame has been drawn for a while.
    void rest() const {
        constexpr int kStill = 300;
        QElapsedTimer still;
        still.start();
        for (int seen = frames_; !still.hasExpired(kStill);) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, kStill);
            if (std::exchange(seen, frames_) != frames_) {
                still.restart();
            }
        }
    }

    /// From an input to the end of the drawing that shows it.
    [[nodiscard]] Frame frameAfter(const std::function<void()>& input) const {
        constexpr int kNothing = 500;
        const int before = frames_;
        Frame frame = measured([&] {
            QElapsedTimer waited;
            waited.start();
            input();
            while (frames_ == before && !waited.hasExpired(kNothing)) {
                QCoreApplication::processEvents(QEventLoop::AllEvents, kNothing);
            }
        });
        frame.isDrawn = frames_ != before;
        return frame;
    }

    /// Rules of the user's own, and files for each of them to find.
    void fillHome() const {
        for (int rule = 0; rule < kRules; ++rule) {
            const std::string name = "tool " + std::to_string(rule);
            for (int item = 0; item < kItemsOfRule; ++item) {
                write(
                    "cache/" + name + "/a downloaded package of some length " +
                        std::to_string(item),
                    name);
            }
            UserRules::Draft draft{.name = name, .paths = {"~/cache/" + name + "/*"}};
            draft.regenerates = "The tool downloads its packages again when they are asked for.";
            draft.personas = {Persona::developer};
            ASSERT_TRUE(UserRules::save(UserRules::make(draft), UserRules::defaultDirectory()));
        }
    }

    std::vector<Frame> move(QQuickItem& list, double pixels, int most);
    void scroll(const char* type, const std::string& name);
    void suggestions();
    void ticks();
    void analyzer();
    void duplicates();
    void treemap();

private:
    int frames_ = 0;
};

// ---- Scrolling ----------------------------------------------------------------------------------

/// Frames while the list moves so far down each time, as long as there is something below.
std::vector<Frame> WindowBench::move(QQuickItem& list, const double pixels, const int most) {
    std::vector<Frame> frames;
    const double end = list.property("contentHeight").toDouble() - list.height();
    list.setProperty("contentY", 0);
    rest();
    for (int i = 1; i <= most && pixels * i < end; ++i) {
        frames.push_back(frameAfter([&] { list.setProperty("contentY", std::round(pixels * i)); }));
    }
    return frames;
}

void WindowBench::scroll(const char* const type, const std::string& name) {
    QQuickItem& list = item(type);
    rest();
    constexpr double kThreeLines = 100;
    constexpr int kMost = 300;
    const double whole = list.property("contentHeight").toDouble() - list.height();
    print(name + "-lines", move(list, kThreeLines, kMost));
    print(name + "-pages", move(list, list.height(), kMost));
    print(name + "-thumb", move(list, whole / 100, kMost));
}

void WindowBench::suggestions() {
    model().setSection(Section::Clean);
    finish();
    rest();
    SuggestionRows* const rows = model().smartClean()->rows();
    // First each suggestion, then each folder of many items in it.
    const int kindRole = rows->roleNames().key("kind");
    for (const char* const kind : {"suggestion", "folder"}) {
        for (int place = rows->count() - 1; place >= 0; --place) {
            if (rows->data(rows->index(place), kindRole).toString() == kind) {
                rows->toggleExpanded(place);
            }
        }
    }
    print("suggestions-rows", static_cast<double>(rows->count()));
    scroll("SuggestionList", "suggestions");
}

/// Work of the main thread alone, before the frame.
void WindowBench::ticks() {
    constexpr int kRuns = 60;
    SmartClean& clean = *model().smartClean();
    std::vector<Frame> stored;
    for (int i = 0; i < kRuns; ++i) {
        std::vector<Suggestion> found = largeRun();
        stored.push_back(measured([&] { clean.show(std::move(found)); }));
        rest();
    }
    print("run-stored", stored);

    // The first suggestion lies open, its details and folders below it.
    clean.rows()->toggleExpanded(0);
    rest();
    std::vector<Frame> ticked;
    for (int i = 0; i < kRuns; ++i) {
        ticked.push_back(measured([&] { clean.rows()->toggle(i % 2 == 0 ? 0 : 2); }));
        rest();
    }
    print("tick", ticked);
}

void WindowBench::analyzer() {
    model().setSection(Section::Analyzer);
    const auto folder = folderOf(kRows);
    model().analyzer()->setCurrent(folder);
    rest();
    scroll("NodeList", "analyzer");
}

// ---- Duplicates ---------------------------------------------------------------------------------

void WindowBench::duplicates() {
    constexpr int kRuns = 30;
    std::vector<DuplicateGroup> groups;
    for (int i = 0; i < kGroups; ++i) {
        DuplicateGroup group{.size = 1'000'000 + 1'000 * (kGroups - i)};
        for (const char* const folder : {"Archive", "Desktop", "Phone backup"}) {
            group.copies.push_back(
                {.path = "/home/somebody/" + std::string{folder} +
                         "/2024/a picture of some length " + std::to_string(i) +
                         (i % 2 == 0 ? ".jpg" : ".mov")});
        }
        groups.push_back(std::move(group));
    }
    DuplicateSearch& search = *model().duplicates();
    model().setSection(Section::Duplicates);
    search.show({.hasSearched = true});
    search.setGroups(groups);
    rest();
    print("duplicates-rows", static_cast<double>(search.rows()->count()));
    scroll("EntryList", "duplicates");

    std::vector<Frame> kept;
    std::vector<Frame> filtered;
    std::vector<Frame> removed;
    for (int i = 0; i < kRuns; ++i) {
        kept.push_back(measured([&] { search.rows()->keep(2 + i % 2); }));
        rest();
        filtered.push_back(measured([&] { search.setQuery(i % 2 == 0 ? "7.jpg" : ""); }));
        rest();
        CleanItem item;
        item.path = groups[static_cast<std::size_t>(i)].copies.back().path;
        const CleanPlan gone{{item}};
        removed.push_back(measured([&] { search.forget(gone); }));
        rest();
    }
    print("duplicates-keep", kept);
    print("duplicates-filter", filtered);
    print("duplicates-gone", removed);
}

// ---- The treemap --------------------------------------------------------------------------------

void WindowBench::treemap() {
    const auto folder = folderOf(kCells);
    model().setSection(Section::Analyzer);
    model().analyzer()->setAnalyzerMode(1);
    model().analyzer()->setCurrent(folder);
    rest();
    auto& map = static_cast<TreemapItem&>(item("Brimlo::TreemapItem"));
    const std::size_t count = map.cells().cells().size();
    print("treemap-cells", static_cast<double>(count));

    // All anew, the places of the cells as well: a selection changes the picture as a whole.
    std::vector<Frame> painted;
    QImage image{map.size().toSize(), QImage::Format_ARGB32_Premultiplied};
    for (int i = 0; i < 30; ++i) {
        map.rows()->select(i);
        painted.push_back(measured([&] {
            QPainter painter{&image};
            map.paint(&painter);
        }));
        rest();
    }
    print("treemap-paint", painted);

    std::vector<Frame> hovered;
    for (std::size_t i = 0; i < count; i += count / 300) {
        const QPointF at = map.mapToScene(map.cells().cells()[i].place.center());
        hovered.push_back(frameAfter([&] {
            QMouseEvent move{QEvent::MouseMove, at, at, Qt::NoButton, {}, {}};
            QCoreApplication::sendEvent(&window(), &move);
        }));
    }
    print("treemap-hover", hovered);
}

// ---- Memory -------------------------------------------------------------------------------------

/// A figure of the process in bytes.
double status(const std::string_view name) {
    std::ifstream file{"/proc/self/status"};
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(name)) {
            constexpr double kKibibyte = 1024;
            return std::stod(line.substr(name.size())) * kKibibyte;
        }
    }
    return 0;
}

TEST_F(WindowBench, Frames) {
    fillHome();
    openScreen();
    suggestions();
    ticks();
    analyzer();
    duplicates();
    treemap();
}

TEST_F(WindowBench, Scan) {
    const QString folder = qEnvironmentVariable("BRIMLO_SCANNED");
    ASSERT_FALSE(folder.isEmpty()) << "BRIMLO_SCANNED names the folder to be scanned";
    openScreen();
    model().setSection(Section::Analyzer);
    rest();
    model().analyzer()->startScan(folder.toStdString());
    finish();
    rest();
    model().analyzer()->setAnalyzerMode(1);
    rest();
    print("scanned-files", static_cast<double>(model().analyzer()->root()->fileCount));
    print("scanned-memory", status("VmRSS:"));
    print("scanned-peak", status("VmHWM:"));
}

}  // namespace
}  // namespace Brimlo
