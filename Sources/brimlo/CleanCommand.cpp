#include "BrimloCore/Docker/DockerClient.h"
#include "BrimloCore/LeftAlone/LeftAlone.h"
#include "BrimloCore/RulePacks/Catalog.h"
#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"
#include "BrimloCore/Support/AppConfig.h"
#include "BrimloCore/Support/Path.h"
#include "brimlo/CleanRun.h"
#include "brimlo/Commands.h"
#include "brimlo/Console.h"
#include "brimlo/ItemPicker.h"
#include "brimlo/PickerScreen.h"

#include <memory>
#include <set>
#include <string_view>
#include <utility>

namespace Brimlo {

namespace {

constexpr std::string_view kGiveWhat = "Give --preselected, --safe, --rule ID or paths.";

struct Arguments {
    bool preselected = false;
    bool safe = false;
    std::vector<std::string> rules;
    std::vector<std::string> paths;
    bool dryRun = false;
    bool yes = false;
    bool items = false;
};

/// Whether the arguments select an item of a suggestion.
bool isMeant(const SuggestionItem& item, const Suggestion& suggestion, const Arguments& arguments) {
    if (arguments.preselected) {
        return suggestion.preselectedPaths.contains(item.path);
    }
    if (arguments.safe) {
        return suggestion.risk == Risk::safe && suggestion.runningApps.empty();
    }
    return std::ranges::find(arguments.rules, suggestion.id) != arguments.rules.end();
}

/// Whether the arguments may select Docker's objects: asking Docker takes a while.
bool mayMeanDocker(const Arguments& arguments) {
    return arguments.rules.empty() ||
           std::ranges::any_of(
               arguments.rules, [](const std::string& id) { return id.starts_with("docker."); });
}

std::vector<Suggestion> suggestions(const Arguments& arguments) {
    Console::Progress progress;
    const SuggestionOptions options{
        .staleDays = AppConfig::load().staleDays,
        .includeDocker = mayMeanDocker(arguments),
        .onPhase = [&](std::string_view words) { progress.show(words); },
    };
    return SuggestionEngine::generate(options);
}

CleanPlan suggestedPlan(const Arguments& arguments) {
    return CleanPlan::of(
        suggestions(arguments), [&](const Suggestion& suggestion, const SuggestionItem& item) {
            return isMeant(item, suggestion, arguments);
        });
}

/// Docker's objects of these pseudo paths, with all details for a review. Only unused objects are
/// found.
std::expected<std::vector<CleanItem>, std::string> dockerItems(
    const std::vector<std::string>& pseudoPaths) {
    DockerSnapshot snapshot;
    if (!pseudoPaths.empty()) {
        Console::Progress progress;
        progress.show("Reading Docker…");
        snapshot = DockerClient::snapshot();
    }
    if (snapshot.error) {
        return std::unexpected(*snapshot.error);
    }
    std::vector<CleanItem> items;
    for (const std::string& path : pseudoPaths) {
        const auto object = std::ranges::find(snapshot.objects, path, &DockerObject::pseudoPath);
        if (object == snapshot.objects.end()) {
            return std::unexpected("Docker lists nothing unused as \"" + path + "\".");
        }
        items.push_back(
            {.path = path,
             .size = object->size,
             .ruleID = std::string{ruleID(object->category)},
             .risk = risk(object->category),
             .title = object->title});
    }
    return items;
}

/// The user's arguments: paths, and pseudo paths of Docker's objects.
struct Typed {
    std::vector<std::string> paths;
    std::vector<std::string> ofDocker;
};

std::expected<Typed, Error> typed(const std::vector<std::string>& words) {
    Typed typed;
    for (const std::string& word : words) {
        if (isPseudoPath(word)) {
            typed.ofDocker.push_back(word);
            continue;
        }
        auto meant = Path::typed(word);
        if (!meant) {
            return std::unexpected(meant.error());
        }
        typed.paths.push_back(*std::move(meant));
    }
    return typed;
}

/// The first id that belongs to no rule, project pattern or Docker category.
std::optional<std::string> unknownRule(const std::vector<std::string>& ids) {
    if (ids.empty()) {
        return std::nullopt;
    }
    std::set<std::string> known;
    for (const CleanupRule& rule : Catalog::rules()) {
        known.insert(rule.id);
    }
    for (const ArtifactPattern& pattern : Catalog::artifactPatterns()) {
        known.insert(pattern.id);
    }
    for (const DockerCategory category : kAllDockerCategories) {
        known.emplace(ruleID(category));
    }
    const auto isUnknown = [&](const std::string& id) { return !known.contains(id); };
    const auto found = std::ranges::find_if(ids, isUnknown);
    return found == ids.end() ? std::nullopt : std::optional{*found};
}

/// Lets a person tick what is meant, and cleans it.
ExitCode pick(const Arguments& arguments, const CleanRun::Choice& choice, const Tool& tool) {
    std::vector<Suggestion> found = suggestions(arguments);
    if (found.empty()) {
        Console::line("Nothing to clean was found.");
        return ExitCode::done;
    }
    ItemPicker picker{std::move(found)};
    switch (PickerScreen::run(picker)) {
        case PickerScreen::End::accepted:
            return CleanRun::run(picker.plan(), choice, tool);
        case PickerScreen::End::left:
            Console::line("Nothing was moved.");
            return ExitCode::done;
        case PickerScreen::End::interrupted:
            return ExitCode::interrupted;
        case PickerScreen::End::impossible:
            break;
    }
    complain("This terminal can't show the list. " + std::string{kGiveWhat});
    return ExitCode::wrongUsage;
}

ExitCode run(const Arguments& arguments, const Tool& tool) {
    if (const auto id = unknownRule(arguments.rules)) {
        complain("No rule and no project pattern is called \"" + *id + "\".");
        return ExitCode::wrongUsage;
    }
    const std::size_t ways = (arguments.preselected ? 1U : 0U) + (arguments.safe ? 1U : 0U) +
                             (arguments.rules.empty() ? 0U : 1U) +
                             (arguments.paths.empty() ? 0U : 1U);
    const bool picks = ways == 0 && !arguments.yes && !tool.isJson() && Console::canAsk() &&
                       PickerScreen::isPossible();
    if (ways != 1 && !picks) {
        complain(kGiveWhat);
        return ExitCode::wrongUsage;
    }
    if (!arguments.dryRun && !arguments.yes && (tool.isJson() || !Console::canAsk())) {
        complain("Not a terminal: pass --yes to clean, or --dry-run to preview.");
        return ExitCode::wrongUsage;
    }
    const CleanRun::Choice choice{
        .dryRun = arguments.dryRun, .yes = arguments.yes, .isFull = arguments.items};
    if (arguments.paths.empty()) {
        if (const auto leftAlone = LeftAlone::load(); !leftAlone) {
            complain(leftAlone.error().description + ".");
            return ExitCode::problems;
        }
        return picks ? pick(arguments, choice, tool)
                     : CleanRun::run(suggestedPlan(arguments), choice, tool);
    }
    const auto what = typed(arguments.paths);
    if (!what) {
        complain(what.error().description);
        return ExitCode::wrongUsage;
    }
    auto ofDocker = dockerItems(what->ofDocker);
    if (!ofDocker) {
        complain(ofDocker.error());
        return ExitCode::problems;
    }
    return CleanRun::run(CleanPlan::at(what->paths, *std::move(ofDocker)), choice, tool);
}

}  // namespace

void addCleanCommand(CLI::App& app, Tool& tool) {
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* command =
        tool.add(app, "clean", "Move items to the Trash, after a preview", [arguments, &tool] {
            return run(*arguments, tool);
        });
    command->group(kCleanGroup);
    CLI::Option_group* what = command->add_option_group("What to clean, one of these or paths");
    what->add_flag(
        "--preselected", arguments->preselected, "All that \"brimlo suggest\" marks [x]");
    what->add_flag(
        "--safe", arguments->safe, "All that is rated Safe and belongs to no running app");
    what->add_option("--rule", arguments->rules, "All that these rules or project patterns find")
        ->type_name("ID");
    // Added to the command: positionals of a group are not recognized after "--".
    addPaths(
        *command, arguments->paths, "These files and folders, or Docker's objects by \"docker:\"");
    command->add_flag("--dry-run", arguments->dryRun, "Show what would go, and move nothing");
    command->add_flag("--yes", arguments->yes, "Don't ask");
    command->add_flag("--items", arguments->items, "List each item, also the many of one folder");
    command->footer(
        "On a terminal, without any of these, the suggestions are a list to tick.\n"
        "Each item passes the safety gate once more and is recorded in the journal. Docker's\n"
        "objects, called as \"brimlo docker --json\" calls them, go for good, and only while\n"
        "nothing uses them; a file of such a name is ./docker:…\n"
        "Examples:\n"
        "  brimlo clean --preselected --dry-run\n"
        "  brimlo clean --rule npm.cache --rule artifact.node_modules\n"
        "  brimlo clean ~/Downloads/old.iso --yes\n"
        "  brimlo clean docker:volume:old-data");
}

}  // namespace Brimlo
