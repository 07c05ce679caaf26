#include "BrimloApp/Snapshot/CannedData.h"

#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/DiskScanner/FileTree.h"
#include "BrimloCore/Docker/DockerClient.h"
#include "BrimloCore/Docker/DockerSnapshot.h"
#include "BrimloCore/RulePacks/Catalog.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <utility>

namespace Brimlo::CannedData {

namespace {

using namespace std::chrono_literals;

constexpr std::int64_t kMB = 1'000'000;
constexpr std::int64_t kStaleDays = 90;

constexpr std::int64_t kUnknown = -1;

struct Find {
    std::string_view ruleID;  ///< Or the id of an artifact pattern.
    std::string_view path;    ///< Relative to Ada's home folder.
    std::int64_t megabytes = 0;
    std::int64_t idleDays = kUnknown;
    std::string_view project;  ///< Empty if the item belongs to none.
};

/// The finds of one rule are adjacent.
constexpr std::array kFinds{
    Find{"artifact.node_modules",  "Projects/shopfront/node_modules",                1830,   214,      "shopfront"  },
    Find{"artifact.node_modules",  "Projects/map-viewer/node_modules",               1210,   132,      "map-viewer" },
    Find{"artifact.node_modules",  "Projects/thesis-site/node_modules",              684,    398,      "thesis-site"},
    Find{"artifact.node_modules",  "Projects/notes-app/node_modules",                512,    3,        "notes-app"  },
    Find{"artifact.rust",          "Projects/raytracer/target",                      3420,   167,      "raytracer"  },
    Find{"artifact.rust",          "Projects/tiles/target",                          910,    12,       "tiles"      },
    Find{"homebrew.cache",         "Library/Caches/Homebrew",                        2760,   kUnknown, ""           },
    Find{"browser.chrome",         "Library/Caches/Google/Chrome/Default/Cache",     1370,   kUnknown, ""           },
    Find{"app.spotify",            "Library/Caches/com.spotify.client",              2150,   kUnknown, ""           },
    Find{"browser.firefox",        "Library/Caches/Firefox/Profiles/k2x9/cache2",    640,    kUnknown, ""           },
    Find{"app.slack",              "Library/Application Support/Slack/Cache",        356,    kUnknown, ""           },
    Find{"npm.logs",               ".npm/_logs",                                     48,     kUnknown, ""           },
    Find{"general.old-installers", "Downloads/sketchbook-4.2.dmg",                   742,    91,       ""           },
    Find{"general.old-installers", "Downloads/driver-setup.pkg",                     318,    240,      ""           },
    Find{"ml.huggingface",         ".cache/huggingface/hub/models--sprout--7b",      14'000, 58,       ""           },
    Find{"ml.huggingface",         ".cache/huggingface/hub/models--sprout--base-en", 290,    201,      ""           },
};

/// A suggestion with the texts of a rule or a pattern, without items.
template <typename Words>
Suggestion suggestion(const Words& words) {
    Suggestion made;
    made.id = words.id;
    made.name = words.name;
    made.group = words.group;
    made.personas = words.personas;
    made.risk = words.risk;
    made.regenerates = words.regenerates;
    made.officialCommand = words.officialCommand;
    if (made.id == "browser.chrome") {
        made.runningApps = {"Google Chrome"};
    }
    return made;
}

/// A suggestion for an id; nullopt if the catalog no longer has the id.
std::optional<Suggestion> suggestion(std::string_view id) {
    const auto& patterns = Catalog::artifactPatterns();
    const auto pattern = std::ranges::find(patterns, id, &ArtifactPattern::id);
    if (pattern != patterns.end()) {
        return suggestion(*pattern);
    }
    const auto& rules = Catalog::builtInRules();
    const auto rule = std::ranges::find(rules, id, &CleanupRule::id);
    return rule != rules.end() ? std::optional{suggestion(*rule)} : std::nullopt;
}

/// Adds an item, ticked if the engine would preselect it.
void add(Suggestion& suggestion, const Find& find) {
    SuggestionItem item;
    item.path = home() + "/" + std::string{find.path};
    item.size = find.megabytes * kMB;
    if (find.idleDays != kUnknown) {
        item.idleDays = find.idleDays;
    }
    if (!find.project.empty()) {
        item.detail = find.project;
    }
    const bool isSafe = suggestion.risk == Risk::safe && suggestion.runningApps.empty();
    const bool isForgotten = item.detail && item.idleDays.value_or(0) >= kStaleDays;
    if (isSafe || isForgotten) {
        suggestion.preselectedPaths.insert(item.path);
    }
    suggestion.items.push_back(std::move(item));
}

std::vector<Suggestion> dockerSuggestions() {
    using enum DockerObject::Kind;
    DockerSnapshot snapshot;
    snapshot.available = true;
    snapshot.objects = {
        {.kind = image,
         .dockerID = "sha256:5f2a",
         .title = "<none>",
         .detail = "7 weeks ago",
         .size = 1240 * kMB,
         .category = DockerCategory::danglingImages},
        {.kind = image,
         .dockerID = "sha256:91cc",
         .title = "postgres:14",
         .detail = "5 months ago",
         .size = 412 * kMB,
         .category = DockerCategory::unusedImages  },
        {.kind = buildCache,
         .dockerID = "k3v9",
         .title = "RUN npm ci",
         .detail = "3 weeks ago",
         .size = 868 * kMB,
         .category = DockerCategory::buildCache    },
    };
    return DockerClient::suggestions(snapshot);
}

constexpr std::chrono::sys_seconds kToday = std::chrono::sys_days{2026y / 11 / 16} + 10h;

struct File {
    std::string_view path;  ///< Relative to Ada's home folder.
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

std::string atHome(std::string_view path) {
    return home() + "/" + std::string{path};
}

void attach(FileTree& tree, FileNode& folder, FileNode& child) {
    std::vector<FileNode*> children{folder.children().begin(), folder.children().end()};
    children.push_back(&child);
    tree.setChildren(folder, children);
}

/// Adds a file to the tree below `folder` at the relative path `path`, and its size to all folders.
void plant(FileTree& tree, FileNode& folder, const File& file, std::string_view path) {
    const std::size_t slash = path.find('/');
    const std::string_view name = path.substr(0, slash);
    const std::chrono::sys_seconds modified = kToday - std::chrono::days{file.daysAgo};
    folder.size += file.megabytes * kMB;
    folder.fileCount += 1;
    folder.modified = std::max(folder.modified, modified);
    if (slash == std::string_view::npos) {
        attach(
            tree,
            folder,
            tree.add(
                {.name = name,
                 .parent = &folder,
                 .size = file.megabytes * kMB,
                 .fileCount = 1,
                 .modified = modified}));
        return;
    }
    const auto same = std::ranges::find(folder.children(), name, &FileNode::name);
    if (same == folder.children().end()) {
        attach(tree, folder, tree.add({.name = name, .parent = &folder, .modified = {}}));
    }
    const auto below = std::ranges::find(folder.children(), name, &FileNode::name);
    plant(tree, **below, file, path.substr(slash + 1));
}

}  // namespace

std::string home() {
    return "/home/ada";
}

std::vector<Suggestion> suggestions() {
    std::vector<Suggestion> found = dockerSuggestions();
    for (const Find& find : kFinds) {
        if (found.empty() || found.back().id != find.ruleID) {
            auto next = suggestion(find.ruleID);
            if (!next) {
                continue;
            }
            found.push_back(std::move(*next));
        }
        add(found.back(), find);
    }
    std::ranges::sort(found, std::ranges::greater{}, &Suggestion::totalSize);
    return found;
}

std::vector<SystemPart> systemParts() {
    constexpr std::size_t kParts = 4;
    std::vector<SystemPart> parts;
    std::int64_t size = 5220 * kMB;
    for (Platform::SystemStore& store : Platform::systemStores()) {
        if (parts.size() < kParts && !store.commands.empty()) {
            parts.push_back(
                {.store = std::move(store), .size = size, .isComplete = parts.size() != 2});
            size = size * 3 / 7;
        }
    }
    return parts;
}

VolumeAccount account() {
    using enum AccountLine::Kind;
    constexpr std::int64_t kGB = 1000 * kMB;
    VolumeAccount account{
        .tops = {"/"},
        .isWhole = true,
        .use =
            {.total = 512 * kGB,
                 .free = 87 * kGB,
                 .available = 61 * kGB,
                 .files = 31'000'000,
                 .freeFiles = 28'400'000},
        .lines =
            {{area, home() + "/Movies", 148'200 * kMB, 412},
                 {area, home() + "/Projects", 81'300 * kMB, 1'204'118},
                 {area, "/var", 52'700 * kMB, 88'210},
                 {area, home() + "/.local", 41'900 * kMB, 201'377},
                 {area, home() + "/Downloads", 33'100 * kMB, 1'871},
                 {reserve, "Kept back, not available to you", 26 * kGB, 0},
                 {area, home() + "/.cache", 24'600 * kMB, 310'402},
                 {area, "/usr", 21'400 * kMB, 402'556},
                 {deletedOpen, "Deleted but open in backup (2114)", 12'800 * kMB, 3},
                 {trash, "Trash", 3 * kGB, 214},
                 {severalAreas, "Files with names in several folders", 2'900 * kMB, 0}},
        .mountPoints = {"/boot/efi", "/media/ada/Photos"},
        .unaskedProcesses = 4,
    };
    std::int64_t left = account.taken();
    for (const AccountLine& line : account.lines) {
        left -= line.bytes;
    }
    account.lines.push_back({rest, "Not explained", left, 0});
    return account;
}

CleanReport report() {
    CleanReport report;
    for (const Suggestion& suggestion : suggestions()) {
        for (const SuggestionItem& item : suggestion.items) {
            if (suggestion.preselectedPaths.contains(item.path)) {
                const bool isGone = isPseudoPath(item.path);
                (isGone ? report.freedNowBytes : report.movedToTrashBytes) += item.size;
                if (isGone) {
                    report.goneForGood.push_back(
                        {.path = item.path,
                         .size = item.size,
                         .ruleID = {},
                         .risk = {},
                         .title = item.detail});
                }
                report.processed += 1;
                report.journalIDs.push_back(Uuid::random());
            }
        }
    }
    return report;
}

CleanReport reportWithProblems() {
    CleanReport report = CannedData::report();
    report.refused = {
        {home() + "/Documents", "is inside a protected folder"}
    };
    report.failures = {
        {home() + "/Library/Caches/Homebrew",    "Permission denied"        },
        {home() + "/Downloads/driver-setup.pkg", "No such file or directory"}
    };
    return report;
}

std::shared_ptr<FileNode> tree() {
    const auto tree = std::make_shared<FileTree>();
    FileNode& top = tree->add({.name = home(), .modified = {}});
    for (const File& file : kFiles) {
        plant(*tree, top, file, file.path);
    }
    FileNode& rest = tree->add(
        {.name = "1,284 smaller items",
         .parent = &top,
         .size = 390 * kMB,
         .fileCount = 1'284,
         .modified = kToday});
    rest.isAggregate = true;
    top.size += rest.size;
    top.fileCount += rest.fileCount;
    attach(*tree, top, rest);
    return top.shared();
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
    const auto tree = std::make_shared<FileTree>();
    std::vector<std::shared_ptr<FileNode>> found;
    for (const File& file : kFiles) {
        if (file.megabytes >= kLarge) {
            const std::string path = atHome(file.path);
            FileNode& node = tree->add(
                {.name = path,
                 .size = file.megabytes * kMB,
                 .fileCount = 1,
                 .modified = kToday - std::chrono::days{file.daysAgo}});
            found.push_back(node.shared());
        }
    }
    std::ranges::sort(found, std::ranges::greater{}, &FileNode::size);
    return found;
}

std::vector<DuplicateGroup> duplicates() {
    const auto group = [](std::int64_t size, std::initializer_list<std::string_view> paths) {
        DuplicateGroup made{.size = size, .copies = {}};
        for (const std::string_view path : paths) {
            made.copies.push_back({.path = atHome(path)});
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

std::vector<EqualFolders> equalFolders() {
    return {
        {.bytes = 3'410 * kMB,
         .files = 812,
         .folders = {atHome("Downloads/Phone/Rome 2025"), atHome("Pictures/Rome 2025")},
         .larger = {}                              },
        {.bytes = 128 * kMB,
         .files = 37,
         .folders = {atHome("Documents/Old site")},
         .larger = {atHome("Projects/thesis-site")}},
    };
}

}  // namespace Brimlo::CannedData
