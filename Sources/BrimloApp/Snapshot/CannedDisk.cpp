#include "BrimloApp/Snapshot/CannedData.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <functional>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace Brimlo::CannedData {
namespace {

using namespace std::chrono_literals;

constexpr std::int64_t kMB = 1'000'000;
constexpr std::chrono::sys_seconds kToday = std::chrono::sys_days{2026y / 11 / 16} + 10h;

struct File {
    std::string_view path;  ///< From Ada's home folder on.
    std::int64_t megabytes = 0;
    int daysAgo = 0;
};

constexpr std::array kFiles{
    File{"Movies/Iceland 2025.mov",                       18'400, 301},
    File{"Movies/Workshop recording.mp4",                 6'120,  87 },
    File{"Movies/Birthday.mp4",                           2'340,  12 },
    File{"Projects/raytracer/target/release/raytracer.o", 2'610,  167},
    File{"Projects/raytracer/target/debug/raytracer.o",   810,    168},
    File{"Projects/raytracer/scenes.tar.gz",              460,    170},
    File{"Projects/shopfront/node_modules/bundle.js",     1'830,  214},
    File{"Projects/shopfront/catalog.json",               92,     214},
    File{"Projects/map-viewer/tiles.mbtiles",             1'340,  132},
    File{"Projects/map-viewer/node_modules/bundle.js",    1'210,  132},
    File{".cache/huggingface/sprout-7b.safetensors",      14'000, 58 },
    File{".cache/pip/wheels.zip",                         1'180,  9  },
    File{"Pictures/Raw 2026/DSC_0412.raw",                4'100,  44 },
    File{"Pictures/Raw 2026/DSC_0413.raw",                3'900,  44 },
    File{"Pictures/Scans.tiff",                           1'270,  500},
    File{"Pictures/Wallpapers/coast.png",                 18,     30 },
    File{"Pictures/Wallpapers/dunes.png",                 22,     30 },
    File{"Music/Takes.logicx",                            3'260,  21 },
    File{"Music/Album.flac",                              1'120,  610},
    File{"Downloads/system-12.iso",                       4'700,  75 },
    File{"Downloads/sketchbook-4.2.dmg",                  742,    91 },
    File{"Downloads/driver-setup.pkg",                    318,    240},
    File{"Downloads/lecture-07.mp4",                      1'512,  6  },
    File{"Downloads/field-recording.wav",                 1'264,  19 },
    File{"Downloads/panorama.tiff",                       990,    64 },
    File{"Downloads/toolkit.jar",                         350,    120},
    File{"Downloads/Atlas.pdf",                           438,    210},
    File{"Downloads/tiles/north.tiles",                   820,    33 },
    File{"Downloads/tiles/south.tiles",                   640,    33 },
    File{"Documents/Archive 2019.zip",                    2'050,  830},
    File{"Documents/Thesis.pdf",                          84,     398},
    File{"Documents/Accounts.xlsx",                       11,     2  },
    File{"virtual-machine.qcow2",                         12'800, 33 },
};

using Node = std::shared_ptr<FileNode>;

std::string atHome(const std::string_view path) {
    return home() + "/" + std::string{path};
}

Node node(const std::string_view name, const std::string& folder, const std::int64_t size) {
    auto made = std::make_shared<FileNode>();
    made->name = name;
    made->path = folder + "/" + made->name;
    made->size = size;
    made->fileCount = 1;
    made->modified = kToday;
    return made;
}

void attach(const Node& child, const Node& folder) {
    child->parent = folder;
    folder->children->push_back(child);
}

Node makeFolder(const std::string_view name, const std::string& around) {
    const Node made = node(name, around, 0);
    made->isDirectory = true;
    made->fileCount = 0;
    made->modified = {};
    made->children.emplace();
    return made;
}

/// Hangs a file below the folder, `path` being what is left of the way, and adds it up.
void plant(const Node& folder, const File& file, const std::string_view path) {
    const std::size_t slash = path.find('/');
    const std::string_view name = path.substr(0, slash);
    const auto modified = kToday - std::chrono::days{file.daysAgo};
    folder->size += file.megabytes * kMB;
    folder->fileCount += 1;
    folder->modified = std::max<std::chrono::sys_seconds>(folder->modified, modified);
    if (slash == std::string_view::npos) {
        attach(node(name, folder->path, file.megabytes * kMB), folder);
        folder->children->back()->modified = modified;
        return;
    }
    const auto same = std::ranges::find(*folder->children, name, &FileNode::name);
    if (same == folder->children->end()) {
        attach(makeFolder(name, folder->path), folder);
        plant(folder->children->back(), file, path.substr(slash + 1));
    } else {
        plant(Node{*same}, file, path.substr(slash + 1));
    }
}

}  // namespace

std::shared_ptr<FileNode> tree() {
    const Node top = makeFolder("ada", "/home");
    for (const File& file : kFiles) {
        plant(top, file, file.path);
    }
    const Node rest = node("1,284 smaller items", "/home/ada", 390 * kMB);
    rest->path = top->path;
    rest->isAggregate = true;
    rest->fileCount = 1'284;
    top->size += rest->size;
    top->fileCount += rest->fileCount;
    attach(rest, top);
    return top;
}

std::vector<UnreadableArea> unreadableAreas() {
    return UnreadableFolders::group(
        {atHome("Library/Safari/LocalStorage"),
         atHome("Library/Safari/Databases"),
         atHome("Library/Mail/V10"),
         "/private/var/db/sudo",
         "/private/var/root"},
        home());
}

std::vector<std::shared_ptr<FileNode>> largeFiles() {
    constexpr std::int64_t kLarge = 50;
    std::vector<Node> found;
    for (const File& file : kFiles) {
        if (file.megabytes >= kLarge) {
            found.push_back(node(file.path, home(), file.megabytes * kMB));
            found.back()->name = file.path.substr(file.path.rfind('/') + 1);
        }
    }
    std::ranges::sort(found, std::ranges::greater{}, &FileNode::size);
    return found;
}

std::vector<DuplicateGroup> duplicates() {
    const auto group = [](const std::int64_t size, std::initializer_list<std::string_view> paths) {
        DuplicateGroup made{.size = size, .paths = {}};
        for (const std::string_view path : paths) {
            made.paths.push_back(atHome(path));
        }
        return made;
    };
    return {
        group(
            6'120 * kMB,
            {"Documents/Workshop recording.mp4", "Downloads/Workshop recording (1).mp4"}),
        group(
            742 * kMB,
            {"Documents/Installers/sketchbook-4.2.dmg",
             "Downloads/sketchbook-4.2 (1).dmg",
             "Downloads/sketchbook-4.2.dmg"}),
        group(84 * kMB, {"Documents/Thesis.pdf", "Projects/thesis-site/public/Thesis.pdf"}),
        group(22 * kMB, {"Pictures/Wallpapers/dunes.png", "Projects/shopfront/public/dunes.png"}),
    };
}

}  // namespace Brimlo::CannedData
