#include "Benchmarks/WindowStage.h"
#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Analyzer/NodeRows.h"
#include "BrimloApp/Analyzer/TreemapItem.h"
#include "BrimloApp/SmartClean/SmartClean.h"
#include "BrimloApp/SmartClean/SuggestionRows.h"
#include "BrimloCore/DiskScanner/FileNode.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <QtGui/QImage>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>

// window-bench: what the screens cost. Prints a line for each measure: its name, and the figures of
// its runs in milliseconds, or in bytes for memory.

namespace Brimlo::Benchmarks {
namespace {

constexpr int kRows = 10'000;
constexpr int kRules = 170;  // Each with as many items as the list shows of one suggestion.
constexpr int kItemsOfRule = 60;
constexpr int kCells = 5'000;

void print(const std::string& name, const std::vector<double>& figures) {
    static_cast<void>(std::printf("%s", name.c_str()));
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

// ---- What the lists hold ------------------------------------------------------------------------

/// Rules of the user's own, and files for each of them to find.
void fillHome(const std::string& home) {
    for (int rule = 0; rule < kRules; ++rule) {
        const std::string name = "tool " + std::to_string(rule);
        const std::string folder = home + "/cache/" + name;
        std::filesystem::create_directories(folder);
        for (int item = 0; item < kItemsOfRule; ++item) {
            std::ofstream{folder + "/a downloaded package of some length " + std::to_string(item)}
                << name;
        }
        UserRules::Draft draft{.name = name, .paths = {"~/cache/" + name + "/*"}};
        draft.regenerates = "The tool downloads its packages again when they are asked for.";
        draft.personas = {Persona::developer};
        if (!UserRules::save(UserRules::make(draft), UserRules::defaultDirectory())) {
            std::abort();  // The folder was made a moment ago.
        }
    }
}

/// A folder as a scan would give it, of files of many sizes and kinds.
std::shared_ptr<FileNode> folderOf(const int count) {
    const char* const kinds[] = {".mp4", ".wav", ".png", ".zip", ".cpp", ".pdf", ".js", ".dat", ""};
    auto folder = std::make_shared<FileNode>();
    folder->path = "/home/somebody/everything";
    folder->name = "everything";
    folder->isDirectory = true;
    folder->children.emplace();
    for (int i = 0; i < count; ++i) {
        auto file = std::make_shared<FileNode>();
        file->name = "a file of some length " + std::to_string(i) + kinds[i % std::size(kinds)];
        file->path = folder->path + '/' + file->name;
        file->size = 4096 * (1 + static_cast<std::int64_t>(1e7 / (i + 1.0)));
        file->modified = std::chrono::sys_seconds{std::chrono::hours{450'000 - i}};
        file->fileCount = 1;
        file->parent = folder;
        folder->size += file->size;
        folder->children->push_back(std::move(file));
    }
    folder->fileCount = count;
    return folder;
}

// ---- Scrolling ----------------------------------------------------------------------------------

/// Frames while the list moves so far down each time, as long as there is something below.
std::vector<Frame> move(WindowStage& stage, QQuickItem& list, const double pixels, const int most) {
    std::vector<Frame> frames;
    const double end = list.property("contentHeight").toDouble() - list.height();
    list.setProperty("contentY", 0);
    stage.settle();
    for (int i = 1; i <= most && pixels * i < end; ++i) {
        frames.push_back(
            stage.frameAfter([&] { list.setProperty("contentY", std::round(pixels * i)); }));
    }
    return frames;
}

void scroll(WindowStage& stage, const char* const type, const std::string& name) {
    QQuickItem& list = *stage.item(type);
    stage.settle();
    constexpr double kThreeLines = 100;
    constexpr int kMost = 300;
    const double whole = list.property("contentHeight").toDouble() - list.height();
    print(name + "-lines", move(stage, list, kThreeLines, kMost));
    print(name + "-pages", move(stage, list, list.height(), kMost));
    print(name + "-thumb", move(stage, list, whole / 100, kMost));
}

void suggestions(WindowStage& stage) {
    AppModel& model = stage.model();
    model.setSection(Section::Clean);
    stage.waitFor([&] {
        return !model.smartClean()->isSuggesting() &&
               std::ssize(model.smartClean()->suggestions()) >= kRules;
    });
    stage.settle();
    SuggestionRows* const rows = model.smartClean()->rows();
    for (int place = rows->count() - 1; place >= 0; --place) {
        rows->toggleExpanded(place);
    }
    print("suggestions-rows", static_cast<double>(rows->count()));
    scroll(stage, "SuggestionList", "suggestions");
}

void analyzer(WindowStage& stage) {
    stage.model().setSection(Section::Analyzer);
    const auto folder = folderOf(kRows);
    stage.model().analyzer()->setCurrent(folder);
    stage.settle();
    scroll(stage, "NodeList", "analyzer");
}

// ---- The treemap --------------------------------------------------------------------------------

void treemap(WindowStage& stage) {
    const auto folder = folderOf(kCells);
    stage.model().setSection(Section::Analyzer);
    stage.model().analyzer()->setAnalyzerMode(1);
    stage.model().analyzer()->setCurrent(folder);
    stage.settle();
    auto& map = static_cast<TreemapItem&>(*stage.item("Brimlo::TreemapItem"));
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
        stage.settle();
    }
    print("treemap-paint", painted);

    std::vector<Frame> hovered;
    for (std::size_t i = 0; i < count; i += count / 300) {
        const QPointF at = map.mapToScene(map.cells().cells()[i].place.center());
        hovered.push_back(stage.frameAfter([&] {
            QMouseEvent move{QEvent::MouseMove, at, at, Qt::NoButton, {}, {}};
            QCoreApplication::sendEvent(&stage.window(), &move);
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

void scan(WindowStage& stage, const char* const folder) {
    AppModel& model = stage.model();
    model.setSection(Section::Analyzer);
    stage.settle();
    model.analyzer()->startScan(folder);
    stage.waitFor([&] { return !model.analyzer()->isScanning(); });
    stage.settle();
    model.analyzer()->setAnalyzerMode(1);
    stage.settle();
    print("scanned-files", static_cast<double>(model.analyzer()->root()->fileCount));
    print("scanned-memory", status("VmRSS:"));
    print("scanned-peak", status("VmHWM:"));
}

}  // namespace
}  // namespace Brimlo::Benchmarks

int main(int argc, char** argv) {
    using namespace Brimlo::Benchmarks;
    using namespace std::string_view_literals;

    if (argc == 3 && argv[1] == "scan"sv) {
        WindowStage stage{argc, argv};
        stage.open();
        scan(stage, argv[2]);
        return EXIT_SUCCESS;
    }
    if (argc == 2 && argv[1] == "frames"sv) {
        WindowStage stage{argc, argv};
        fillHome(stage.home());
        stage.open();
        suggestions(stage);
        analyzer(stage);
        treemap(stage);
        return EXIT_SUCCESS;
    }
    static_cast<void>(std::fputs("Usage: window-bench (frames | scan FOLDER)\n", stderr));
    return 2;
}
