#include "BrimloCore/Docker/DockerCategory.h"
#include "BrimloCore/RulePacks/Catalog.h"
#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"
#include "BrimloCore/Support/AppConfig.h"
#include "BrimloCore/Support/Safety.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "brimlo/CleanRun.h"
#include "brimlo/Console.h"
#include "brimlo/Tool.h"

#include <memory>
#include <set>

namespace Brimlo {

namespace {

struct Arguments {
    bool preselected = false;
    bool safe = false;
    std::vector<std::string> rules;
    std::vector<std::string> paths;
    bool dryRun = false;
    bool yes = false;
};

/// Whether an item of a suggestion is meant by the arguments.
bool isMeant(const SuggestionItem& item, const Suggestion& suggestion, const Arguments& arguments) {
    if (arguments.preselected) {
        return suggestion.preselectedPaths.contains(item.path);
    }
    if (arguments.safe) {
        return suggestion.risk == Risk::safe && suggestion.runningApps.empty();
    }
    return std::ranges::find(arguments.rules, suggestion.id) != arguments.rules.end();
}

/// Whether something of Docker's may be meant: it takes a while to ask.
bool mayMeanDocker(const Arguments& arguments) {
    return arguments.rules.empty() ||
           std::ranges::any_of(
               arguments.rules, [](const std::string& id) { return id.starts_with("docker."); });
}

std::vector<CleanItem> suggestedItems(const Arguments& arguments) {
    Console::Progress progress;
    const SuggestionOptions options{
        .staleDays = AppConfig::load().staleDays,
        .includeDocker = mayMeanDocker(arguments),
        .onPhase = [&](std::string_view words) { progress.show(words); },
    };
    std::vector<CleanItem> items;
    for (const Suggestion& suggestion : SuggestionEngine::generate(options)) {
        for (const SuggestionItem& item : suggestion.items) {
            if (isMeant(item, suggestion, arguments)) {
                items.push_back({item.path, item.size, suggestion.id, suggestion.risk});
            }
        }
    }
    return items;
}

/// The paths that a person typed, measured. What is shown for review is what will be judged.
std::vector<CleanItem> typedItems(const std::vector<std::string>& paths) {
    std::vector<SuggestionItem> items;
    items.reserve(paths.size());
    for (const std::string& path : paths) {
        items.push_back({.path = Safety::canonical(StoragePaths::expandTilde(path))});
    }
    // What is refused anyway, the whole disk perhaps, is not measured.
    const auto isRefused = [](const SuggestionItem& item) {
        return Safety::judge(item.path).refusal.has_value();
    };
    std::vector<CleanItem> result;
    for (const SuggestionItem& item : items) {
        if (isRefused(item)) {
            result.push_back({item.path, 0, std::nullopt, std::nullopt});
        }
    }
    std::erase_if(items, isRefused);
    for (const SuggestionItem& item : SuggestionEngine::size(std::move(items))) {
        result.push_back({item.path, item.size, std::nullopt, std::nullopt});
    }
    return result;
}

/// The first of the rule ids that no rule, no project pattern and nothing of Docker's has.
std::optional<std::string> unknownRule(const std::vector<std::string>& ids) {
    if (ids.empty()) {
        return std::nullopt;
    }
    std::set<std::string> known;
    for (const CleanupRule& rule : Catalog::rules()) {
        known.insert(rule.id);
    }
    for (const ArtifactPattern& pattern : ArtifactCatalog::all()) {
        known.insert(pattern.id);
    }
    for (const DockerCategory category : kAllDockerCategories) {
        known.emplace(ruleID(category));
    }
    const auto isUnknown = [&](const std::string& id) { return !known.contains(id); };
    const auto found = std::ranges::find_if(ids, isUnknown);
    return found == ids.end() ? std::nullopt : std::optional{*found};
}

ExitCode run(const Arguments& arguments, const Tool& tool) {
    if (const auto id = unknownRule(arguments.rules)) {
        complain("No rule and no project pattern is called \"" + *id + "\".");
        return ExitCode::wrongUsage;
    }
    if (std::ranges::find(arguments.paths, "") != arguments.paths.end()) {
        complain("An empty path names nothing.");  // Not the current folder.
        return ExitCode::wrongUsage;
    }
    if (!arguments.dryRun && !arguments.yes && (tool.isJson() || !Console::canAsk())) {
        complain("Nobody can be asked here: say --yes to clean, or --dry-run to look.");
        return ExitCode::wrongUsage;
    }
    const CleanPlan plan{
        arguments.paths.empty() ? suggestedItems(arguments) : typedItems(arguments.paths)};
    return CleanRun::run(plan, {.dryRun = arguments.dryRun, .yes = arguments.yes}, tool);
}

}  // namespace

void addCleanCommand(CLI::App& app, Tool& tool) {
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* command =
        tool.add(app, "clean", "Move things to the Trash, after showing them", [arguments, &tool] {
            return run(*arguments, tool);
        });
    command->group(kCleanGroup);
    CLI::Option_group* what = command->add_option_group("What to clean, one of");
    what->require_option(1);
    what->add_flag(
        "--preselected", arguments->preselected, "All that \"brimlo suggest\" marks [x]");
    what->add_flag(
        "--safe", arguments->safe, "All that is rated Safe and belongs to no running app");
    what->add_option("--rule", arguments->rules, "All that these rules or project patterns find")
        ->type_name("ID");
    what->add_option("paths", arguments->paths, "These files and folders")->type_name("PATH");
    command->add_flag("--dry-run", arguments->dryRun, "Show what would go, and move nothing");
    command->add_flag("--yes", arguments->yes, "Don't ask");
    command->footer(
        "Each item passes the safety gate once more and is recorded in the journal.\n"
        "Examples:\n"
        "  brimlo clean --preselected --dry-run\n"
        "  brimlo clean --rule npm.cache --rule artifact.node_modules\n"
        "  brimlo clean ~/Downloads/old.iso --yes");
}

}  // namespace Brimlo
