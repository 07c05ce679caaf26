#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/LeftAlone/LeftAlone.h"
#include "BrimloCore/Platform/Fmt.h"
#include "BrimloCore/RulePacks/Catalog.h"
#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"
#include "BrimloCore/Support/AppConfig.h"
#include "BrimloCore/Support/Text.h"
#include "brimlo/Commands.h"
#include "brimlo/Console.h"
#include "brimlo/JsonForms.h"

#include <memory>
#include <optional>
#include <set>

namespace Brimlo {

namespace {

/// Printed per suggestion; `--items` prints all items, and `--json` has them.
constexpr std::size_t kMostLines = 8;

struct Arguments {
    std::vector<std::string> personas;
    std::optional<std::int64_t> staleDays;
    bool noArtifacts = false;
    bool noDocker = false;
    bool items = false;
    bool why = false;
};

/// Accepts the words of the audiences; its error lists them.
CLI::Validator isAudience() {
    std::string words;
    for (const Persona persona : kAllPersonas) {
        words.append(words.empty() ? "" : ", ").append(rawValue(persona));
    }
    const auto check = [words](const std::string& text) {
        return personaFromRawValue(text) ? std::string{}
                                         : "\"" + text + "\" is none of " + words + ".";
    };
    return {check, "AUDIENCE"};
}

/// The name of an item: for a Docker object more than its id.
std::string name(const SuggestionItem& item) {
    if (!isPseudoPath(item.path)) {
        return Console::shortPath(item.path);
    }
    return Text::printable(item.detail.value_or(item.path)) +
           Console::dim("  " + Text::printable(item.subtitle.value_or("")));
}

/// "[x]" when all the items are preselected, "[-]" when some are.
std::string mark(const Suggestion& suggestion, const std::vector<std::size_t>& items) {
    const auto count = std::ranges::count_if(items, [&](std::size_t place) {
        return suggestion.preselectedPaths.contains(suggestion.items[place].path);
    });
    return count == 0 ? "    [ ] " : std::cmp_equal(count, items.size()) ? "    [x] " : "    [-] ";
}

void show(const SuggestionItem& item, const std::string& mark) {
    std::string line = mark + Console::size(item.size) + "  " + name(item);
    if (item.idleDays) {
        const bool isToday = *item.idleDays < 1;
        line += Console::dim((isToday ? "  changed " : "  idle ") + Fmt::days(*item.idleDays));
    }
    Console::line(line);
}

void showReasons(const Suggestion& suggestion) {
    constexpr std::size_t kLabelWidth = 17;
    for (const auto& [label, text] : reasons(suggestion)) {
        Console::line("    " + Console::left(label, kLabelWidth) + Text::printable(text));
    }
}

void show(const Suggestion& suggestion, const Arguments& arguments) {
    const bool isFull = arguments.items;
    Console::line(
        Console::size(suggestion.totalSize()) + "  " + Console::badge(suggestion.risk) + "  " +
        Console::bold(suggestion.name) + " · " + Text::printable(suggestion.group) +
        Console::dim("  " + suggestion.id));
    const FreedSpace freed = FreedSpace::of(suggestion.items);
    if (const std::string frees = freed.words(); !frees.empty()) {
        Console::line("    Alone it " + frees + ": " + freed.reason() + ".");
    }
    Console::paragraph(suggestion.regenerates);
    if (arguments.why) {
        showReasons(suggestion);
    } else if (suggestion.officialCommand) {
        Console::line(Console::dim("    Its own command: " + *suggestion.officialCommand));
    }
    for (const std::string& app : suggestion.runningApps) {
        Console::line("    " + Text::printable(app) + " is running: close it first.");
    }
    std::size_t lines = 0;
    std::size_t shown = 0;
    for (const ItemGroup& group : grouped(suggestion.items)) {
        if (lines++ == kMostLines && !isFull) {
            break;
        }
        shown += group.items.size();
        if (group.isFolder() && !isFull) {
            Console::line(
                mark(suggestion, group.items) + Console::size(group.size) + "  " +
                Console::folder(group));
            continue;
        }
        for (const std::size_t place : group.items) {
            show(suggestion.items[place], mark(suggestion, {place}));
        }
    }
    if (suggestion.items.size() > shown) {
        Console::line(
            "        and " + Console::count(suggestion.items.size() - shown, "more item"));
    }
    Console::line();
}

void showAll(const std::vector<Suggestion>& suggestions, const Arguments& arguments) {
    FreedSpace total;
    FreedSpace preselected;
    for (const Suggestion& suggestion : suggestions) {
        show(suggestion, arguments);
        for (const SuggestionItem& item : suggestion.items) {
            total.add(item);
            if (suggestion.preselectedPaths.contains(item.path)) {
                preselected.add(item);
            }
        }
    }
    if (suggestions.empty()) {
        Console::line("Nothing to clean was found.");
        return;
    }
    Console::line(
        Console::bold(Fmt::bytes(total.atLeast())) + " can be cleaned; " +
        Console::bold(Fmt::bytes(preselected.atLeast())) + " of it is preselected [x].");
    Console::line("\"brimlo clean --preselected --dry-run\" shows what that would take.");
}

ExitCode run(const Arguments& arguments, const Tool& tool) {
    Console::Progress progress;
    if (const auto leftAlone = LeftAlone::load(); !leftAlone) {
        complain(leftAlone.error().description + ".");
        return ExitCode::problems;
    }
    SuggestionOptions options{
        .staleDays = arguments.staleDays.value_or(AppConfig::load().staleDays),
        .includeArtifacts = !arguments.noArtifacts,
        .includeDocker = !arguments.noDocker,
        .onPhase = [&](std::string_view words) { progress.show(words); },
    };
    if (!arguments.personas.empty()) {
        options.personas.emplace();
    }
    for (const std::string& word : arguments.personas) {
        options.personas->insert(*personaFromRawValue(word));  // Checked by the parser.
    }
    const std::vector<Suggestion> suggestions = SuggestionEngine::generate(options);
    progress.clear();
    for (const std::string& issue : Catalog::userRuleIssues()) {
        complain("a rule of yours is left out: " + issue);
    }
    if (!tool.isJson()) {
        showAll(suggestions, arguments);
        return ExitCode::done;
    }
    Json::Array document;
    for (const Suggestion& suggestion : suggestions) {
        document.push_back(JsonForms::suggestion(suggestion));
        if (arguments.why) {
            document.back().as_object().emplace("why", JsonForms::reasons(suggestion));
        }
    }
    print(document);
    return ExitCode::done;
}

}  // namespace

void addSuggestCommand(CLI::App& app, Tool& tool) {
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* command = tool.add(
        app, "suggest", "List what can be cleaned, with sizes and ratings", [arguments, &tool] {
            return run(*arguments, tool);
        });
    command->group(kLookGroup);
    command->add_option("--persona", arguments->personas, "Only what is meant for this audience")
        ->check(isAudience())
        ->allow_extra_args(false);
    command
        ->add_option(
            "--stale-days",
            arguments->staleDays,
            "Preselect projects idle for so many days (default: the setting stale-days)")
        ->check(wholeNumber());
    command->add_flag(
        "--no-artifacts", arguments->noArtifacts, "Leave out build output in projects");
    command->add_flag("--no-docker", arguments->noDocker, "Leave out what Docker holds");
    command->add_flag("--items", arguments->items, "List each item, also the many of one folder");
    command->add_flag("--why", arguments->why, "Say for each why it is suggested");
    command->footer(
        "Nothing is changed. [x] marks what \"brimlo clean --preselected\" would take.");
}

}  // namespace Brimlo
