#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"

#include "BrimloCore/DisabledRules/DisabledRules.h"
#include "BrimloCore/Platform/RunningApps.h"
#include "BrimloCore/RulePacks/Catalog.h"
#include "BrimloCore/SuggestionEngine/Candidate.h"
#include "BrimloCore/SuggestionEngine/OverlapResolver.h"
#include "BrimloCore/SuggestionEngine/PlaceNames.h"
#include "BrimloCore/SuggestionEngine/ProjectArtifactFinder.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <unordered_map>
#include <utility>

namespace Brimlo::SuggestionEngine {

namespace {

constexpr int kProjectDepth = 8;

/// The gathering half of a run: all that could be offered, not yet measured.
class Gathering {
public:
    Gathering(const SuggestionOptions& options, const ScanControl* control)
        : options_(options)
        , control_(control)
        , running_(runningAppNames()) {}

    void addRules() {
        const std::set<std::string> disabled = DisabledRules::load();
        for (const CleanupRule& rule : Catalog::rules()) {
            if (disabled.contains(rule.id) || !isWanted(rule.personas)) {
                continue;
            }
            std::vector<SuggestionItem> items = targets(rule, gate_);
            if (!items.empty()) {
                metas.push_back(meta(rule));
                for (SuggestionItem& item : items) {
                    candidates.push_back({metas.size() - 1, std::move(item)});
                }
            }
        }
    }

    void addArtifacts() {
        const std::vector<ArtifactPattern>& patterns = Catalog::artifactPatterns();
        std::unordered_map<std::string_view, std::size_t> ranks;
        for (const ArtifactPattern& pattern : patterns) {
            ranks.emplace(pattern.id, ranks.size());
        }
        std::vector<FoundArtifact> found;
        timed("artifact walk", [&] {
            found = ProjectArtifactFinder::find({StoragePaths::home()}, kProjectDepth, control_);
        });

        // Of several patterns that know a folder the safest claims it, then the earliest.
        struct Claim {
            std::size_t rank;
            const FoundArtifact* artifact;
        };
        std::vector<Claim> claims;
        std::unordered_map<std::string_view, std::size_t> placeOfPath;
        const auto score = [&](std::size_t rank) { return std::pair{patterns[rank].risk, rank}; };
        for (const FoundArtifact& artifact : found) {
            const auto rank = ranks.find(artifact.patternID);
            if (rank == ranks.end() || !isWanted(patterns[rank->second].personas)) {
                continue;
            }
            const auto [place, isNew] = placeOfPath.try_emplace(artifact.path, claims.size());
            if (isNew) {
                claims.push_back({rank->second, &artifact});
            } else if (score(rank->second) < score(claims[place->second].rank)) {
                claims[place->second] = {rank->second, &artifact};
            }
        }

        std::unordered_map<std::size_t, std::size_t> metaOfRank;
        for (const Claim& claim : claims) {
            const auto [place, isNew] = metaOfRank.try_emplace(claim.rank, metas.size());
            if (isNew) {
                metas.push_back(meta(patterns[claim.rank]));
            }
            candidates.push_back({
                place->second,
                {
                          .path = claim.artifact->path,
                          .idleDays = claim.artifact->idleDays,
                          .detail = std::string{Path::name(claim.artifact->projectPath)},
                          },
            });
        }
    }

    std::vector<Meta> metas;
    std::vector<Candidate> candidates;

private:
    [[nodiscard]] bool isWanted(const std::vector<Persona>& personas) const {
        return !options_.personas || std::ranges::any_of(personas, [&](Persona persona) {
            return options_.personas->contains(persona);
        });
    }

    [[nodiscard]] Meta meta(const CleanupRule& rule) const {
        Meta meta{
            .id = rule.id,
            .name = rule.name,
            .group = rule.group,
            .personas = rule.personas,
            .risk = rule.risk,
            .regenerates = rule.regenerates,
            .command = rule.officialCommand,
            .isUsersOwn = rule.isUsersOwn,
            .catchAll = rule.isCatchAll,
        };
        std::ranges::copy_if(
            rule.quitApps, std::back_inserter(meta.openApps), [&](const std::string& app) {
                return isRunning(app, running_);
            });
        return meta;
    }

    [[nodiscard]] Meta meta(const ArtifactPattern& pattern) const {
        return {
            .id = pattern.id,
            .name = pattern.name,
            .group = pattern.group,
            .personas = pattern.personas,
            .risk = pattern.risk,
            .regenerates = pattern.regenerates + preselection(pattern.risk),
            .isArtifact = true,
        };
    }

    /// What is said of the ticks of a pattern with this rating.
    [[nodiscard]] std::string preselection(Risk risk) const {
        return risk == Risk::review ? ""
                                    : " Preselected: projects idle for " +
                                          std::to_string(options_.staleDays) + "+ days.";
    }

    const SuggestionOptions& options_;
    const ScanControl* control_;
    Safety::Gate gate_;
    std::set<std::string> running_;
};

/// Which items start ticked: what comes back silently, unless the app that owns it runs, and what
/// is built again of the output of projects that nobody has touched for long. Never what is rated
/// Review.
bool isPreselected(const SuggestionItem& item, const Meta& meta, std::int64_t staleDays) {
    if (meta.risk == Risk::review) {
        return false;
    }
    if (meta.isArtifact) {
        return item.idleDays.value_or(0) >= staleDays;
    }
    return meta.risk == Risk::safe && meta.openApps.empty();
}

Suggestion suggestion(const Meta& meta, std::vector<SuggestionItem> items, std::int64_t staleDays) {
    std::ranges::stable_sort(items, std::ranges::greater{}, &SuggestionItem::size);
    std::set<std::string> preselected;
    for (const SuggestionItem& item : items) {
        if (isPreselected(item, meta, staleDays)) {
            preselected.insert(item.path);
        }
    }
    return {
        .id = meta.id,
        .name = meta.name,
        .group = meta.group,
        .personas = meta.personas,
        .risk = meta.risk,
        .isUsersOwn = meta.isUsersOwn,
        .regenerates = meta.regenerates,
        .officialCommand = meta.command,
        .runningApps = meta.openApps,
        .items = std::move(items),
        .preselectedPaths = std::move(preselected),
    };
}

/// Measures the candidates; the items of each meta that are not empty, by the meta's place.
std::vector<std::vector<SuggestionItem>> measured(
    std::vector<Candidate> candidates, std::size_t metaCount) {
    std::vector<SuggestionItem> items;
    items.reserve(candidates.size());
    for (Candidate& candidate : candidates) {
        items.push_back(std::move(candidate.item));
    }
    timed(
        "size " + std::to_string(items.size()) + " paths", [&] { items = size(std::move(items)); });

    std::vector<std::vector<SuggestionItem>> byMeta(metaCount);
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (items[i].size > 0) {
            byMeta[candidates[i].meta].push_back(std::move(items[i]));
        }
    }
    return byMeta;
}

/// Whether the options ask for Docker, which is a developer's tool.
bool wantsDocker(const SuggestionOptions& options) {
    return options.includeDocker &&
           (!options.personas || options.personas->contains(Persona::developer));
}

void addDocker(std::vector<Suggestion>& suggestions, const DockerClient::Places& places) {
    DockerSnapshot snapshot;
    timed("docker", [&] { snapshot = DockerClient::snapshot(places); });
    if (snapshot.available) {
        std::ranges::move(DockerClient::suggestions(snapshot), std::back_inserter(suggestions));
    }
}

}  // namespace

std::vector<Suggestion> generate(const SuggestionOptions& options, const ScanControl* control) {
    const auto enterPhase = [&](const std::string& words) {
        if (options.onPhase) {
            options.onPhase(words);
        }
    };
    Gathering gathering{options, control};
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
        PlaceNames names;
        for (Candidate& candidate : gathering.candidates) {
            candidate.place = names.of(candidate.item.path);
        }
        kept = resolveOverlaps(std::move(gathering.candidates), gathering.metas);
    });

    auto itemsOfMeta = measured(std::move(kept), gathering.metas.size());
    std::vector<Suggestion> suggestions;
    for (std::size_t i = 0; i < itemsOfMeta.size(); ++i) {
        if (!itemsOfMeta[i].empty()) {
            suggestions.push_back(
                suggestion(gathering.metas[i], std::move(itemsOfMeta[i]), options.staleDays));
        }
    }
    if (wantsDocker(options)) {
        enterPhase("Reading Docker…");
        addDocker(suggestions, options.docker);
    }
    std::ranges::stable_sort(suggestions, std::ranges::greater{}, &Suggestion::totalSize);
    return suggestions;
}

std::set<std::string> runningAppNames() {
    std::set<std::string> names;
    for (const std::string& name : Platform::runningAppNames()) {
        names.insert(Text::lowercased(name));
    }
    return names;
}

bool isRunning(std::string_view quitApp, const std::set<std::string>& running) {
    // Short names begin too many others: "Code" is not "codex".
    constexpr std::size_t kLongestShortName = 4;
    const std::string app = Text::lowercased(quitApp);
    const bool isShort = Text::characterCount(app) <= kLongestShortName;
    return std::ranges::any_of(running, [&](const std::string& name) {
        return name == app || name.starts_with(app + " ") || (!isShort && name.starts_with(app));
    });
}

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

}  // namespace Brimlo::SuggestionEngine
