#include "BrimloApp/Snapshot/CannedData.h"
#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Docker/DockerClient.h"
#include "BrimloCore/Docker/DockerSnapshot.h"
#include "BrimloCore/RulePacks/Catalog.h"

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>

namespace Brimlo::CannedData {
namespace {

constexpr std::int64_t kMB = 1'000'000;
constexpr std::int64_t kStaleDays = 90;

struct Find {
    std::string_view ruleID;  ///< Also of a pattern of artifacts.
    std::string_view path;    ///< From Ada's home folder on.
    std::int64_t megabytes = 0;
    std::optional<std::int64_t> idleDays = std::nullopt;
    std::string_view project;
};

/// Those of one rule stand together.
constexpr std::array kFinds{
    Find{"artifact.node_modules",              "Projects/shopfront/node_modules",                           1830,                                                                                214,                                                                                                                  "shopfront"},
    Find{"artifact.node_modules",                                    "Projects/map-viewer/node_modules",                                                                         1210,                                                                                       132,                                                                                                                               "map-viewer"},
    Find{"artifact.node_modules",                        "Projects/thesis-site/node_modules",                                                                                   684,                                                                                                                                                398,                                                                            "thesis-site"},
    Find{"artifact.node_modules",                                 "Projects/notes-app/node_modules",                                                                               512,                   3,                                      "notes-app"},
    Find{"artifact.rust",                                 "Projects/raytracer/target",             3420,                                                                   167,                                                                                                                                                  "raytracer"},
    Find{"artifact.rust","Projects/tiles/target",                    910,                                  12,"tiles"},
    Find{"homebrew.cache",                      "Library/Caches/Homebrew",                                                                                  2760                                                                                                                                              },
    Find{"browser.chrome",                                    "Library/Caches/Google/Chrome/Default/Cache",                                                                                1370                                                                                                                    },
    Find{"app.spotify",                     "Library/Caches/com.spotify.client", 2150},
    Find{"browser.firefox","Library/Caches/Firefox/Profiles/k2x9/cache2",                                    640                                                                                                                      },
    Find{"app.slack",                                 "Library/Application Support/Slack/Cache",                                                         356           },
    Find{"npm.logs",                                    ".npm/_logs",                                                                                      48                                                                                                              },
    Find{"general.old-installers",             "Downloads/sketchbook-4.2.dmg",                              742,                                                                                 91                                                                                                                                                                                                                               },
    Find{"general.old-installers",             "Downloads/driver-setup.pkg",                                318,                                                                                 240                                                                                                                                                   },
    Find{"ml.huggingface",                     ".cache/huggingface/hub/models--sprout--7b",                 14'000,                                                                              58},
    Find{"ml.huggingface",                     ".cache/huggingface/hub/models--sprout--base-en",            290,                                                                                 201                                                                                                                                                                                                                          },
};

/// A suggestion with the words of a rule or a pattern, and nothing in it yet.
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

/// The same for an id; nothing for one that is no longer in the catalog.
std::optional<Suggestion> suggestion(const std::string_view id) {
    const auto& patterns = Catalog::artifactPatterns();
    const auto pattern = std::ranges::find(patterns, id, &ArtifactPattern::id);
    if (pattern != patterns.end()) {
        return suggestion(*pattern);
    }
    const auto& rules = Catalog::builtInRules();
    const auto rule = std::ranges::find(rules, id, &CleanupRule::id);
    return rule != rules.end() ? std::optional{suggestion(*rule)} : std::nullopt;
}

/// Adds an item, ticked if it is one that starts so.
void add(Suggestion& suggestion, const Find& find) {
    SuggestionItem item;
    item.path = home() + "/" + std::string{find.path};
    item.size = find.megabytes * kMB;
    item.idleDays = find.idleDays;
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

CleanReport report() {
    CleanReport report;
    for (const Suggestion& suggestion : suggestions()) {
        for (const SuggestionItem& item : suggestion.items) {
            if (suggestion.preselectedPaths.contains(item.path)) {
                const bool isGone = isPseudoPath(item.path);
                (isGone ? report.freedNowBytes : report.movedToTrashBytes) += item.size;
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

}  // namespace Brimlo::CannedData
