#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/DiskScanner/UnreadableFolders.h"
#include "BrimloCore/Platform/Fmt.h"
#include "BrimloCore/ScanRecords/Growth.h"
#include "BrimloCore/ScanRecords/ScanHistory.h"
#include "BrimloCore/Support/Dates.h"
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
    std::string since;  ///< "last", a day, or empty.
    bool forgets = false;
};

constexpr std::string_view kLast = "last";

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

/// What the number of bytes alone does not say.
std::string remark(const Growth::Folder& folder) {
    switch (folder.kind) {
        case Growth::Kind::appeared:
            return "new, or too small to be listed before";
        case Growth::Kind::vanished:
            return "gone, or too small to be listed now";
        case Growth::Kind::moved:
            return "moved from " + Console::shortPath(*folder.formerPath);
        case Growth::Kind::changed:
            break;
    }
    return folder.least == folder.most ? "" : "at least, beside its small folders";
}

std::string change(std::int64_t bytes) {
    return (bytes > 0 ? "+" : bytes < 0 ? "-" : "") + Fmt::bytes(std::abs(bytes));
}

void show(const Growth& growth, const std::string& root) {
    constexpr std::size_t kChangeWidth = 11;
    Console::line(
        Console::bold(Console::shortPath(root)) + " has " + Fmt::bytes(growth.now.size) + ", " +
        change(growth.now.size - growth.before.size) + " since " +
        Console::localTime(growth.since) + ".");
    if (growth.folders.empty()) {
        Console::line("No folder changed.");
    }
    for (const Growth::Folder& folder : growth.folders) {
        const std::string words = remark(folder);
        Console::line(
            Console::right(change(folder.sure()), kChangeWidth) + "  " +
            Console::shortPath(folder.path) + (words.empty() ? "" : Console::dim("  " + words)));
    }
}

/// What to compare with, after complaints about what could not be used.
std::optional<ScanRecord> earlier(const std::string& root, const std::string& since) {
    const auto latest = since == kLast ? std::nullopt : Dates::endOfDay(since);
    ScanHistory::Found found = ScanHistory::newest(root, latest);
    for (const std::string& sentence : found.refused) {
        complain(sentence);
    }
    if (!found.record) {
        complain(
            "No scan of " + root + (since == kLast ? "" : " from " + since + " or earlier") +
            " is on record, so there is nothing to compare with.");
    }
    return std::move(found.record);
}

ExitCode forget(const Tool& tool) {
    const auto done = ScanHistory::forget();
    if (!done) {
        complain("The records could not be removed: " + done.error().description + ".");
        return ExitCode::problems;
    }
    if (tool.isJson()) {
        print(Json::Object{});
    } else {
        Console::line("The records of earlier scans are removed.");
    }
    return ExitCode::done;
}

/// Leaves the record of a scan, after a comparison with an earlier one if that is asked for.
std::optional<Growth> compare(const FileNode& tree, const std::string& since) {
    const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    const ScanRecord record = ScanRecord::of(tree, now);
    std::optional<Growth> growth;
    if (!since.empty()) {
        growth = earlier(record.root, since).transform([&](const ScanRecord& before) {
            return Growth::between(before, record);
        });
    }
    if (const auto kept = ScanHistory::remember(record); !kept) {
        complain("The record of this scan could not be kept: " + kept.error().description + ".");
    }
    return growth;
}

ExitCode run(const Arguments& arguments, const Tool& tool) {
    if (arguments.forgets) {
        return forget(tool);
    }
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
    const std::optional<Growth> growth = compare(*tree, arguments.since);
    const bool isAnswered = growth || arguments.since.empty();
    if (tool.isJson()) {
        Json::Object document{
            {"root", form(*tree, view)},
            {"unreadable", JsonForms::areas(areas)},
        };
        if (growth) {
            document.emplace("growth", JsonForms::growth(*growth));
        }
        print(document);
    } else if (growth) {
        show(*growth, root);
    } else if (isAnswered) {
        show(*tree, view, 0);
    }
    if (!tool.isJson() && isAnswered) {
        show(areas);
    }
    return isAnswered ? ExitCode::done : ExitCode::problems;
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
    const auto isMoment = [](const std::string& text) {
        return text == kLast || Dates::endOfDay(text)
                   ? std::string{}
                   : "\"" + text + "\" is neither \"last\" nor a day such as 2026-03-01.";
    };
    CLI::Option* since = command->add_option(
        "--since",
        arguments->since,
        "Show what grew, went and moved since the last scan, or the last one of a day or before");
    since->type_name("WHEN")->check(CLI::Validator{isMoment, ""});
    command->add_flag("--forget", arguments->forgets, "Remove the records of all earlier scans")
        ->excludes(since);
    command->footer(
        "Sizes are what the disk really holds: sparse files count as their blocks, a file with\n"
        "several names counts once. What is small in a crowded folder is shown as one line.\n"
        "A finished scan leaves a record of its folders of 1 MiB or more, unless the setting\n"
        "remember-scans is false.");
}

}  // namespace Brimlo
