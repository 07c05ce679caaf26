#include "BrimloCore/Docker/DockerClient.h"
#include "BrimloCore/Platform/Fmt.h"
#include "BrimloCore/Support/Text.h"
#include "brimlo/Commands.h"
#include "brimlo/Console.h"
#include "brimlo/JsonForms.h"

namespace Brimlo {

namespace {

void show(const std::vector<DockerSummaryRow>& rows) {
    constexpr std::size_t kTypeWidth = 20;
    for (const DockerSummaryRow& row : rows) {
        Console::line(
            Console::size(row.sizeBytes) + "  " +
            Console::left(Text::printable(row.type), kTypeWidth) +
            Console::size(row.reclaimableBytes) + " reclaimable  " +
            Console::dim(
                std::to_string(row.active) + " of " + std::to_string(row.total) + " in use"));
    }
}

void show(const DockerVMDisk& disk) {
    Console::line(
        Console::size(disk.allocated) + "  " + disk.runtime + "'s disk  " +
        Console::shortPath(disk.path) + Console::dim("  up to " + Fmt::bytes(disk.logical)));
}

void show(DockerCategory category, const DockerSnapshot& snapshot) {
    const std::vector<DockerObject> objects = snapshot.objectsIn(category);
    if (objects.empty()) {
        return;
    }
    Console::line(
        "\n" + Console::size(snapshot.totalIn(category)) + "  " + Console::badge(risk(category)) +
        "  " + Console::bold(title(category)) + Console::dim("  " + std::string{ruleID(category)}));
    for (const DockerObject& object : objects) {
        Console::line(
            "    " + Console::size(object.size) + "  " + Text::printable(object.title) +
            Console::dim("  " + Text::printable(object.detail)));
    }
}

void show(const DockerSnapshot& snapshot) {
    if (snapshot.context) {
        Console::line("Context " + Console::bold(Text::printable(*snapshot.context)));
    }
    show(snapshot.summary);
    for (const DockerVMDisk& disk : snapshot.vmDisks) {
        show(disk);
    }
    for (const DockerCategory category : kAllDockerCategories) {
        show(category, snapshot);
    }
    if (snapshot.available && !snapshot.error) {
        Console::line(
            "\n" + Console::bold(Fmt::bytes(snapshot.reclaimableTotal())) +
            " can be removed. What Docker removes is gone for good.");
    }
}

ExitCode run(const Tool& tool) {
    DockerSnapshot snapshot;
    {
        Console::Progress progress;
        progress.show("Reading Docker…");
        snapshot = DockerClient::snapshot();
    }
    if (tool.isJson()) {
        print(JsonForms::docker(snapshot));
    } else {
        show(snapshot);
    }
    if (snapshot.error) {
        complain(*snapshot.error);
        return ExitCode::problems;
    }
    return ExitCode::done;
}

}  // namespace

void addDockerCommand(CLI::App& app, Tool& tool) {
    CLI::App* command =
        tool.add(app, "docker", "List Docker's objects and show which are unused", [&tool] {
            return run(tool);
        });
    command->group(kLookGroup);
    command->footer(
        "Nothing is changed. \"brimlo clean --rule docker.build-cache\" removes what it lists\n"
        "under that id, for good.");
}

}  // namespace Brimlo
