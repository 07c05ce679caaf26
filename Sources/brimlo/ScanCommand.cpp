#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/DiskScanner/UnreadableFolders.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"
#include "brimlo/Commands.h"
#include "brimlo/Console.h"
#include "brimlo/JsonForms.h"

#include <array>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace Brimlo {

namespace {

/// Printed per folder; `--json` has all children.
constexpr std::size_t kMostChildren = 20;
constexpr std::int64_t kUsualDepth = 1;
/// JSON parsers give up on deeper nesting.
constexpr std::int64_t kDeepestJson = 250;

constexpr std::array<std::pair<std::string_view, FileNode::SortKey>, 4> kSortWords{
    {
     {"size", FileNode::SortKey::size},
     {"name", FileNode::SortKey::name},
     {"modified", FileNode::SortKey::modified},
     {"items", FileNode::SortKey::items},
     }
};

struct Arguments {
    std::string path = "~";
    std::optional<std::int64_t> depth;
    std::string sort = "size";
    bool ascending = false;
};

/// What is printed of a tree, and in which order.
struct View {
    FileNode::SortKey key = FileNode::SortKey::size;
    FileNode::SortOrder order = FileNode::SortOrder::descending;
    std::int64_t depth = 0;
};

View viewOf(const Arguments& arguments, bool isJson) {
    const auto* word = std::ranges::find(
        kSortWords, arguments.sort, &std::pair<std::string_view, FileNode::SortKey>::first);
    return {
        .key = word->second,  // Checked by the parser.
        .order =
            arguments.ascending ? FileNode::SortOrder::ascending : FileNode::SortOrder::descending,
        .depth = isJson ? std::min(arguments.depth.value_or(kDeepestJson), kDeepestJson)
                        : arguments.depth.value_or(kUsualDepth),
    };
}

void show(const FileNode& node, const View& view, std::size_t indent) {
    const std::string name = Text::printable(node.name()) + (node.isDirectory ? "/" : "");
    Console::line(
        Console::size(node.size) + "  " + std::string(indent, ' ') +
        (node.isAggregate ? Console::dim(name) : name) +
        (node.isDirectory
             ? Console::dim("  " + Console::count(static_cast<std::size_t>(node.fileCount), "file"))
             : ""));
    if (view.depth == 0) {
        return;
    }
    const View below{.key = view.key, .order = view.order, .depth = view.depth - 1};
    std::size_t shown = 0;
    for (const auto& child : node.sortedChildren(view.key, view.order)) {
        if (shown++ == kMostChildren) {
            const std::size_t rest = node.children().size() - kMostChildren;
            Console::line(
                Console::right("", Console::size(0).size()) + "  " + std::string(indent + 2, ' ') +
                Console::dim("and " + std::to_string(rest) + " more"));
            break;
        }
        show(*child, below, indent + 2);
    }
}

Json::Object form(const FileNode& node, const View& view) {
    Json::Object object = JsonForms::node(node);
    if (node.isDirectory && view.depth > 0) {
        const View below{.key = view.key, .order = view.order, .depth = view.depth - 1};
        Json::Array children;
        for (const auto& child : node.sortedChildren(view.key, view.order)) {
            children.push_back(form(*child, below));
        }
        object.emplace("children", std::move(children));
    }
    return object;
}

void show(const std::vector<UnreadableArea>& areas) {
    if (!areas.empty()) {
        Console::line("\nNot everything was looked at:");
    }
    for (const UnreadableArea& area : areas) {
        Console::line(
            "  " + Text::printable(area.area) + "  " +
            Console::count(static_cast<std::size_t>(area.count), "folder"));
        Console::paragraph(area.reason);
    }
}

ExitCode run(const Arguments& arguments, const Tool& tool) {
    const std::string root = meantPath(arguments.path);
    const auto control = std::make_shared<ScanControl>();
    std::shared_ptr<FileNode> tree;
    {
        const Console::WalkProgress progress{*control};
        tree = DiskScanner{control, ScanOptions{}}.scan(root);
    }
    if (!tree) {
        complain(arguments.path + " is not a readable folder.");
        return ExitCode::problems;
    }
    const std::vector<UnreadableArea> areas =
        UnreadableFolders::group(*control, StoragePaths::home());
    const View view = viewOf(arguments, tool.isJson());
    if (!tool.isJson()) {
        show(*tree, view, 0);
        show(areas);
        return ExitCode::done;
    }
    print(Json::Object{
        {"root", form(*tree, view)},
        {"unreadable", JsonForms::areas(areas)},
    });
    return ExitCode::done;
}

}  // namespace

void addScanCommand(CLI::App& app, Tool& tool) {
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* command =
        tool.add(app, "scan", "Show the contents of a folder by size", [arguments, &tool] {
            return run(*arguments, tool);
        });
    command->group(kLookGroup);
    addPath(*command, arguments->path, "The folder (default: your home folder)");
    command
        ->add_option(
            "--depth",
            arguments->depth,
            "Show so many levels below it (default: 1; with --json: 250, which is the most)")
        ->check(wholeNumber());
    std::vector<std::string> words;
    words.reserve(kSortWords.size());
    for (const auto& [word, key] : kSortWords) {
        words.emplace_back(word);
    }
    command->add_option("--sort", arguments->sort, "By size (default), name, modified or items")
        ->check(CLI::IsMember(words))
        ->type_name("KEY");
    command->add_flag("--ascending", arguments->ascending, "Smallest, first or oldest on top");
    command->footer(
        "Sizes are what the disk really holds: sparse files count as their blocks, a file with\n"
        "several names counts once. What is small in a crowded folder is shown as one line.");
}

}  // namespace Brimlo
