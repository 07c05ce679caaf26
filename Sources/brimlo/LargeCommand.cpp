#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/DiskScanner/FileKind.h"
#include "BrimloCore/LargeFiles/LargeFiles.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/Fmt.h"
#include "brimlo/Commands.h"
#include "brimlo/Console.h"
#include "brimlo/JsonForms.h"

#include <memory>

namespace Brimlo {

namespace {

struct Arguments {
    std::string path = "~";
    std::int64_t limit = 200;
    std::int64_t minSize = 52'428'800;
    std::vector<std::string> kinds;
    std::optional<std::int64_t> olderThan;

    [[nodiscard]] FileFilter filter() const {
        FileFilter filter{.minSize = minSize};
        for (const std::string& word : kinds) {
            filter.kinds.insert(*fileKindFromRawValue(word));  // Checked by the parser.
        }
        if (olderThan) {
            filter.before = FileFilter::daysAgo(*olderThan);
        }
        return filter;
    }
};

/// ", frees 3 MB" where not all is freed.
std::string comma(const FreedSpace& freed) {
    const std::string words = freed.words();
    return words.empty() ? words : ", " + words;
}

void show(const std::vector<std::shared_ptr<FileNode>>& files, const Arguments& arguments) {
    std::int64_t total = 0;
    FreedSpace freed;
    for (const auto& file : files) {
        const SpaceUse use = DiskScanner::spaceUse(file->path());
        Console::line(
            Console::size(file->size) + "  " + Console::shortPath(file->path()) +
            Console::dim(comma(FreedSpace::alone(use))));
        total = Bytes::sum(total, file->size);
        freed.add(use);
    }
    if (files.empty()) {
        const bool isAny = arguments.kinds.empty() && !arguments.olderThan;
        Console::line(
            (isAny ? "No file takes " : "No such file takes ") + Fmt::bytes(arguments.minSize) +
            " or more.");
    } else {
        Console::line(
            Console::bold(Console::count(files.size(), "file") + ", " + Fmt::bytes(total)) +
            comma(freed));
    }
}

ExitCode run(const Arguments& arguments, const Tool& tool) {
    if (arguments.limit == 0) {
        complain("The limit is 1 or more.");
        return ExitCode::wrongUsage;
    }
    const std::string root = meantPath(arguments.path);
    ScanControl control;
    std::optional<std::vector<std::shared_ptr<FileNode>>> files;
    {
        const Console::WalkProgress progress{control};
        files = LargeFiles::find(
            root, static_cast<std::size_t>(arguments.limit), arguments.filter(), control);
    }
    const std::vector<std::string> unread = control.inaccessible();
    if (!files) {
        complain(arguments.path + " is not a readable folder.");
    }
    if (tool.isJson()) {
        Json::Array document;
        if (files) {
            std::ranges::transform(*files, std::back_inserter(document), [](const auto& file) {
                Json::Object object = JsonForms::node(*file);
                JsonForms::addFreed(object, FreedSpace::alone(DiskScanner::spaceUse(file->path())));
                return object;
            });
        }
        print(document);
    } else if (files) {
        show(*files, arguments);
        if (!unread.empty()) {
            Console::line(Console::dim(
                Console::count(unread.size(), "folder") + " in it could not be read."));
        }
    }
    return files ? ExitCode::done : ExitCode::problems;
}

/// The kinds that a file can be of.
std::vector<std::string> kindWords() {
    std::vector<std::string> words;
    for (const FileKind kind : kAllFileKinds) {
        if (kind != FileKind::folder) {
            words.emplace_back(rawValue(kind));
        }
    }
    return words;
}

}  // namespace

void addLargeCommand(CLI::App& app, Tool& tool) {
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* command =
        tool.add(app, "large", "List the largest files below a folder", [arguments, &tool] {
            return run(*arguments, tool);
        });
    command->group(kLookGroup);
    addPath(*command, arguments->path, "The folder (default: your home folder)");
    command->add_option("--limit", arguments->limit, "At most so many files (default: 200)")
        ->check(wholeNumber());
    command
        ->add_option(
            "--min-size",
            arguments->minSize,
            "Only files that take at least so many bytes of the disk (default: 52428800)")
        ->type_name("BYTES")
        ->check(wholeNumber());
    command
        ->add_option(
            "--kind",
            arguments->kinds,
            "Only files of this kind: video, audio, image, archive (disk images, too), code "
            "(programs, too), document or other")
        ->allow_extra_args(false)
        ->type_name("KIND")
        ->check(CLI::IsMember(kindWords()));
    command
        ->add_option(
            "--older-than", arguments->olderThan, "Only files not modified for so many days")
        ->type_name("DAYS")
        ->check(wholeNumber());
    command->footer(
        "Sizes are what the disk really holds, and a file with several names is listed once.\n"
        "Other volumes are not entered. A file's kind depends on its extension; --kind can be\n"
        "given several times.\n"
        "Example:\n"
        "  brimlo large ~/Downloads --kind video --kind archive --older-than 180");
}

}  // namespace Brimlo
