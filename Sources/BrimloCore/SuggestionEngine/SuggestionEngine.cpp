#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"

#include "BrimloCore/DisabledRules/DisabledRules.h"
#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/LeftAlone/LeftAlone.h"
#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Platform/Processes.h"
#include "BrimloCore/RulePacks/Catalog.h"
#include "BrimloCore/SuggestionEngine/OverlapResolver.h"
#include "BrimloCore/SuggestionEngine/ProjectArtifactFinder.h"
#include "BrimloCore/Support/Dates.h"
#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/Glob.h"
#include "BrimloCore/Support/ParallelFor.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <future>
#include <iterator>
#include <ranges>
#include <unordered_map>
#include <utility>

#include <sys/stat.h>

namespace Brimlo::SuggestionEngine {

namespace {

constexpr int kProjectDepth = 8;

/// Runs `body`, and prints its duration to standard error when the environment variable
/// `BRIMLO_TIMING` is set.
void timed(std::string_view label, const std::function<void()>& body) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    body();
    // NOLINTNEXTLINE(concurrency-mt-unsafe): set at start only
    if (std::getenv("BRIMLO_TIMING") != nullptr) {
        const std::chrono::duration<double> elapsed = Clock::now() - start;
        const std::string text{label};
        std::fprintf(stderr, "  [timing] %s: %.2fs\n", text.c_str(), elapsed.count());
    }
}

/// The names of the running applications, lower-cased.
std::set<std::string> runningAppNames() {
    std::set<std::string> names;
    for (const std::string& name : Platform::runningAppNames()) {
        names.insert(Text::lowercased(name));
    }
    return names;
}

bool isExcluded(const std::string& name, const CleanupRule& rule) {
    return std::ranges::any_of(
        rule.excludes, [&](const std::string& pattern) { return Glob::matches(name, pattern); });
}

/// The names in the folder `path` that a rule with `contentsOnly` means.
std::vector<std::string> childNames(const std::string& path, const CleanupRule& rule) {
    auto names = Folders::names(path).value_or(std::vector<std::string>{});
    std::erase_if(names, [&](const std::string& name) { return isExcluded(name, rule); });
    return names;
}

bool isThere(const std::string& path) {
    const auto status = Platform::entryStatus(path.c_str());
    return status && status->kind != Platform::EntryStatus::Kind::other;
}

/// Whether one of the folders that list installed programs is there and none lists `name`. A folder
/// that can't be read may list it.
bool isListedNowhere(const std::string& name, const std::vector<std::string>& folders) {
    bool isKnown = false;
    for (const std::string& folder : folders) {
        const auto names = Folders::names(StoragePaths::expandTilde(folder));
        if (names ? std::ranges::count(*names, name) > 0 : names.error().code != ENOENT) {
            return false;
        }
        isKnown = isKnown || names;
    }
    return isKnown;
}

/// Whether one of the files for the program `name` is there and each names a missing place.
bool isInstalledNowhere(const std::string& name, const std::vector<std::string>& files) {
    constexpr std::size_t kLongest = 65'536;
    bool isKnown = false;
    for (std::string file : files) {
        if (const std::size_t star = file.find('*'); star != std::string::npos) {
            file.replace(star, 1, name);
        }
        const auto text = readFile(StoragePaths::expandTilde(file), kLongest);
        if (!text && text.error().code == ENOENT) {
            continue;
        }
        const std::string place = text ? text->substr(0, text->find_first_of("\r\n")) : "";
        struct stat status{};
        if (!place.starts_with('/') || !Path::isUsable(place) ||
            lstat(place.c_str(), &status) == 0 || (errno != ENOENT && errno != ENOTDIR)) {
            return false;
        }
        isKnown = true;
    }
    return isKnown;
}

/// Whether the match at `path` is what the rule means.
bool isMeant(const MatchConditions& conditions, const std::string& path) {
    const std::string name{Path::name(path)};
    const auto isBeside = [&](const std::string& other) {
        return isThere(Path::join(Path::parent(path), other));
    };
    return std::ranges::all_of(conditions.beside, isBeside) &&
           (conditions.owners.empty() || isListedNowhere(name, conditions.owners)) &&
           (conditions.ownerFiles.empty() || isInstalledNowhere(name, conditions.ownerFiles));
}

void measure(SuggestionItem& item) {
    SpaceUse use = DiskScanner::spaceUse(item.path);
    item.size = use.size;
    item.shared = std::move(use.shared);
}

/// Measures those of `found` that are folders, in parallel.
void sizeFolders(auto& found) {
    // Each call writes to its own element, so no lock is needed.
    parallelFor(found.size(), [&](std::size_t i) {
        if (found[i].isFolder) {
            measure(found[i].item);
        }
    });
}

/// The first half of a run: collects the paths that could be offered, and their suggestions.
class Gathering {
public:
    Gathering(
        const SuggestionOptions& options, const LeftAlone& leftAlone, const ScanControl* control)
        : spared{.always = {leftAlone.paths.begin(), leftAlone.paths.end()}, .fromCatchAlls = {}}
        , options_(options)
        , control_(control)
        , leftAlone_(leftAlone.rules)
        , running_(runningAppNames()) {}

    void addRules() {
        for (const CleanupRule& rule : Catalog::rules()) {
            if (std::vector<std::string>* places = sparedBy(rule.id, rule.isCatchAll)) {
                CleanupRule ageless = rule;
                ageless.minAgeDays.reset();  // What is too young is the rule's, too.
                for (Target& target : targets(ageless, gate_)) {
                    places->push_back(std::move(target.item.path));
                }
                continue;
            }
            if (!isWanted(rule.personas)) {
                continue;
            }
            std::vector<Target> found = targets(rule, gate_);
            if (!found.empty()) {
                pending.push_back(pendingFor(rule));
                for (auto& [item, isFolder] : found) {
                    candidates.push_back({pending.size() - 1, std::move(item), isFolder});
                }
            }
        }
    }

    void addArtifacts() {
        std::vector<FoundArtifact> found;
        timed("artifact walk", [&] {
            found = ProjectArtifactFinder::find({StoragePaths::home()}, kProjectDepth, control_);
        });
        // A folder that several patterns match goes to the safest by `resolveOverlaps`.
        std::unordered_map<const ArtifactPattern*, std::size_t> indices;
        for (FoundArtifact& artifact : found) {
            if (std::vector<std::string>* places = sparedBy(artifact.pattern->id, false)) {
                places->push_back(std::move(artifact.path));
                continue;
            }
            if (!isWanted(artifact.pattern->personas)) {
                continue;
            }
            const auto [place, isNew] = indices.try_emplace(artifact.pattern, pending.size());
            if (isNew) {
                pending.push_back(pendingFor(*artifact.pattern));
            }
            SuggestionItem item{
                .path = std::move(artifact.path),
                .idleDays = artifact.idleDays,
                .detail = std::string{Path::name(artifact.projectPath)},
            };
            candidates.push_back({place->second, std::move(item)});
        }
    }

    std::vector<PendingSuggestion> pending;
    std::vector<Candidate> candidates;
    Spared spared;

private:
    /// Where the places of a rule that is left alone or switched off are kept; nullptr for others.
    /// A broad rule means only what no other rule knows, so it hides nothing from those.
    [[nodiscard]] std::vector<std::string>* sparedBy(const std::string& rule, bool isCatchAll) {
        const bool isLeftAlone = leftAlone_.contains(rule);
        if (isLeftAlone && !isCatchAll) {
            return &spared.always;
        }
        return isLeftAlone || disabled_.contains(rule) ? &spared.fromCatchAlls : nullptr;
    }

    [[nodiscard]] bool isWanted(const std::vector<Persona>& personas) const {
        return !options_.personas || std::ranges::any_of(personas, [&](Persona persona) {
            return options_.personas->contains(persona);
        });
    }

    [[nodiscard]] PendingSuggestion pendingFor(const CleanupRule& rule) const {
        Suggestion suggestion{
            .id = rule.id,
            .name = rule.name,
            .group = rule.group,
            .personas = rule.personas,
            .risk = rule.risk,
            .isUsersOwn = rule.isUsersOwn,
            .regenerates = rule.regenerates,
            .officialCommand = rule.officialCommand,
            .places = rule.paths,
            .sources = rule.sources,
            .evidence = Catalog::evidence(rule),
        };
        std::ranges::copy_if(
            rule.quitApps, std::back_inserter(suggestion.runningApps), [&](const std::string& app) {
                return isRunning(app, running_);
            });
        return {.suggestion = std::move(suggestion), .isCatchAll = rule.isCatchAll};
    }

    [[nodiscard]] PendingSuggestion pendingFor(const ArtifactPattern& pattern) const {
        Suggestion suggestion{
            .id = pattern.id,
            .name = pattern.name,
            .group = pattern.group,
            .personas = pattern.personas,
            .risk = pattern.risk,
            .regenerates = pattern.regenerates,
            .places = pattern.names,
            .evidence = Catalog::evidence(pattern),
        };
        for (const std::string& suffix : pattern.suffixes) {
            suggestion.places.push_back("*" + suffix);
        }
        if (!pattern.proofs.empty()) {
            suggestion.places
                .clear();  // The names are of any folder; the proofs say what is meant.
        }
        for (const std::string& proof : pattern.proofs) {
            suggestion.places.push_back("*/" + proof);
        }
        if (pattern.risk != Risk::review) {
            suggestion.regenerates +=
                " Preselected: projects idle for " + std::to_string(options_.staleDays) + "+ days.";
        }
        return {.suggestion = std::move(suggestion), .isArtifact = true};
    }

    const SuggestionOptions& options_;
    const ScanControl* control_;
    const std::set<std::string>& leftAlone_;
    const std::set<std::string> disabled_ = DisabledRules::load();
    Safety::Gate gate_;
    std::set<std::string> running_;
};

/// Measures the candidates and gives those that are not empty to their suggestions.
void measure(std::vector<Candidate> candidates, std::vector<PendingSuggestion>& pending) {
    timed("size " + std::to_string(candidates.size()) + " paths", [&] { sizeFolders(candidates); });
    for (auto& [suggestion, item, isFolder] : candidates) {
        if (item.size > 0) {
            pending[suggestion].suggestion.items.push_back(std::move(item));
        }
    }
}

/// Whether an item starts ticked: if it comes back silently and no app that owns it runs, or if it
/// is build output of a project that has been idle for long. Never if it is rated Review.
bool isPreselected(
    const SuggestionItem& item, const PendingSuggestion& pending, std::int64_t staleDays) {
    const Suggestion& suggestion = pending.suggestion;
    if (suggestion.risk == Risk::review) {
        return false;
    }
    if (pending.isArtifact) {
        return item.idleDays.value_or(0) >= staleDays;
    }
    return suggestion.risk == Risk::safe && suggestion.runningApps.empty();
}

/// The suggestion with its items in order, and those ticked that are preselected.
Suggestion finished(PendingSuggestion pending, std::int64_t staleDays) {
    Suggestion& suggestion = pending.suggestion;
    std::ranges::stable_sort(suggestion.items, std::ranges::greater{}, &SuggestionItem::size);
    for (const SuggestionItem& item : suggestion.items) {
        if (isPreselected(item, pending, staleDays)) {
            suggestion.preselectedPaths.insert(item.path);
        }
    }
    return std::move(suggestion);
}

/// What Docker can remove, without what is left alone.
std::vector<Suggestion> ofDocker(const DockerSnapshot& snapshot, const LeftAlone& leftAlone) {
    if (!snapshot.available) {
        return {};
    }
    std::vector<Suggestion> found = DockerClient::suggestions(snapshot);
    for (Suggestion& suggestion : found) {
        std::erase_if(suggestion.items, [&](const SuggestionItem& item) {
            return leftAlone.paths.contains(item.path);
        });
    }
    std::erase_if(found, [&](const Suggestion& suggestion) {
        return suggestion.items.empty() || leftAlone.rules.contains(suggestion.id);
    });
    return found;
}

/// Whether to ask Docker, which is a developer's tool.
bool wantsDocker(const SuggestionOptions& options) {
    return options.includeDocker &&
           (!options.personas || options.personas->contains(Persona::developer));
}

}  // namespace

std::vector<Suggestion> generate(const SuggestionOptions& options, const ScanControl* control) {
    const auto enterPhase = [&](const std::string& words) {
        if (options.onPhase) {
            options.onPhase(words);
        }
    };
    const auto leftAlone = LeftAlone::load();
    if (!leftAlone) {
        return {};
    }
    // Docker takes a while to answer, and works meanwhile.
    std::future<DockerSnapshot> docker;
    if (wantsDocker(options)) {
        docker = std::async([&] {
            DockerSnapshot snapshot;
            timed("docker", [&] { snapshot = DockerClient::snapshot(options.docker); });
            return snapshot;
        });
    }
    Gathering gathering{options, *leftAlone, control};
    enterPhase("Checking known apps and tools…");
    gathering.addRules();
    if (options.includeArtifacts) {
        enterPhase("Looking for project folders (node_modules, build outputs)…");
        gathering.addArtifacts();
    }
    const std::string count = std::to_string(gathering.candidates.size());
    enterPhase("Measuring " + count + " folders…");
    std::vector<Candidate> kept;
    timed("resolve overlaps (" + count + " candidates)", [&] {
        kept =
            resolveOverlaps(std::move(gathering.candidates), gathering.pending, gathering.spared);
    });
    measure(std::move(kept), gathering.pending);

    std::vector<Suggestion> suggestions;
    for (PendingSuggestion& pending : gathering.pending) {
        if (!pending.suggestion.items.empty()) {
            suggestions.push_back(finished(std::move(pending), options.staleDays));
        }
    }
    if (docker.valid()) {
        enterPhase("Reading Docker…");
        std::ranges::move(ofDocker(docker.get(), *leftAlone), std::back_inserter(suggestions));
    }
    std::ranges::stable_sort(suggestions, std::ranges::greater{}, &Suggestion::totalSize);
    return suggestions;
}

std::vector<Target> targets(const CleanupRule& rule, const Safety::Gate& gate) {
    const std::time_t now = std::time(nullptr);
    std::vector<Target> targets;
    const auto add = [&](std::string path, const std::optional<Platform::EntryStatus>& status) {
        if (!status) {
            return;
        }
        const std::time_t modified = std::chrono::system_clock::to_time_t(status->modified);
        if (rule.minAgeDays && modified > Dates::daysBefore(now, *rule.minAgeDays)) {
            return;
        }
        const bool isFolder = status->kind == Platform::EntryStatus::Kind::directory;
        SpaceUse use = isFolder ? SpaceUse{} : SpaceUse::of(path, *status);
        targets.push_back({
            .item =
                {.path = std::move(path),
                       .size = use.size,
                       .idleDays = Dates::daysSince(modified, now),
                       .shared = std::move(use.shared)},
            .isFolder = isFolder,
        });
    };
    for (const std::string& pattern : rule.paths) {
        for (std::string& path : Glob::expand(pattern)) {
            const Safety::Verdict verdict = gate.judge(path, Safety::Chosen::byRule);
            // The folder of a catch-all also holds what must stay, so each child is judged.
            const bool areJudged = rule.isCatchAll && rule.contentsOnly;
            if ((verdict.refusal && !areJudged) || !isMeant(rule.conditions, path)) {
                continue;
            }
            if (!rule.contentsOnly) {
                add(std::move(path), verdict.entry);
                continue;
            }
            // The gate allows a symlink itself to go, but not the contents of a protected target.
            if (gate.judge(path + "/x", Safety::Chosen::byRule).refusal) {
                continue;
            }
            for (const std::string& name : childNames(path, rule)) {
                std::string child = path + "/" + name;
                if (areJudged && gate.judge(child, Safety::Chosen::byRule).refusal) {
                    continue;
                }
                const auto status = Platform::entryStatus(child.c_str());
                add(std::move(child), status);
            }
        }
    }
    return targets;
}

std::vector<SuggestionItem> size(const std::vector<std::string>& paths) {
    std::vector<SuggestionItem> items(paths.size());
    // Each call writes to its own element, so no lock is needed.
    parallelFor(paths.size(), [&](std::size_t i) {
        items[i].path = paths[i];
        measure(items[i]);
    });
    return items;
}

std::vector<SuggestionItem> preview(const CleanupRule& rule) {
    std::vector<Target> found = targets(rule);
    sizeFolders(found);
    std::vector<SuggestionItem> items;
    items.reserve(found.size());
    std::ranges::move(found | std::views::transform(&Target::item), std::back_inserter(items));
    std::ranges::stable_sort(items, std::ranges::greater{}, &SuggestionItem::size);
    return items;
}

bool isRunning(std::string_view quitApp, const std::set<std::string>& running) {
    // Too many names begin with a short one: "Code" must not match "codex".
    constexpr std::size_t kLongestShortName = 4;
    const std::string app = Text::lowercased(quitApp);
    const bool isShort = Text::characterCount(app) <= kLongestShortName;
    return std::ranges::any_of(running, [&](const std::string& name) {
        return name == app || name.starts_with(app + " ") || (!isShort && name.starts_with(app));
    });
}

}  // namespace Brimlo::SuggestionEngine
