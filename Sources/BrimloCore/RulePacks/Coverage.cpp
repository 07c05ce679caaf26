#include "BrimloCore/RulePacks/Coverage.h"

#include "BrimloCore/RulePacks/Catalog.h"
#include "BrimloCore/Support/Text.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <tuple>

namespace Brimlo {

namespace {

constexpr std::string_view kDefaultDomain = "General";

/// A tool's entry under construction.
struct Tool {
    CoverageEntry entry;
    std::set<Persona> personas;

    void add(const std::vector<Persona>& audience, Risk risk) {
        personas.insert(audience.begin(), audience.end());
        entry.risks.insert(risk);
    }
};

template <typename T>
std::vector<std::string_view> labels(const T& values) {
    std::vector<std::string_view> labels;
    for (const auto value : values) {
        labels.push_back(label(value));
    }
    return labels;
}

std::string joined(const std::vector<std::string_view>& texts) {
    std::string line;
    for (const std::string_view text : texts) {
        line.append(line.empty() ? "" : ", ").append(text);
    }
    return line;
}

std::string audience(const CoverageEntry& entry) {
    std::vector<std::string_view> names = labels(entry.personas);
    std::ranges::sort(names);
    return joined(names);
}

std::size_t sum(const std::vector<CoverageEntry>& entries, std::size_t CoverageEntry::* count) {
    return std::accumulate(
        entries.begin(),
        entries.end(),
        std::size_t{0},
        [&](std::size_t total, const CoverageEntry& entry) { return total + entry.*count; });
}

}  // namespace

std::vector<CoverageEntry> Coverage::entries() {
    std::map<std::string, Tool> tools;
    for (const CleanupRule& rule : Catalog::ofThisSystem(Catalog::rules())) {
        if (UserRules::isCustom(rule.id)) {
            continue;
        }
        Tool& tool = tools[rule.group];
        if (tool.entry.ruleCount++ == 0) {
            tool.entry.domain = rule.domain.value_or(std::string{kDefaultDomain});
        }
        tool.entry.bestConfidence = std::min(tool.entry.bestConfidence, rule.confidence);
        tool.add(rule.personas, rule.risk);
    }
    for (const ArtifactPattern& pattern : Catalog::artifactPatterns()) {
        Tool& tool = tools[pattern.group];
        ++tool.entry.artifactCount;
        tool.add(pattern.personas, pattern.risk);
    }

    std::vector<CoverageEntry> entries;
    entries.reserve(tools.size());
    for (auto& [group, tool] : tools) {
        CoverageEntry& entry = entries.emplace_back(std::move(tool.entry));
        entry.tool = group;
        if (entry.ruleCount == 0) {
            entry.domain = kDefaultDomain;
        }
        entry.personas.assign(tool.personas.begin(), tool.personas.end());
    }
    std::ranges::sort(entries, {}, [](const CoverageEntry& entry) {
        return std::tuple{entry.domain, Text::lowercased(entry.tool), entry.tool};
    });
    return entries;
}

std::string_view Coverage::supportWord(const CoverageEntry& entry) {
    if (entry.isSupported()) {
        return "Supported";
    }
    return entry.bestConfidence == Confidence::community ? "Community" : "Unverified";
}

std::string Coverage::markdown() {
    const std::vector<CoverageEntry> all = entries();
    const auto supported = std::ranges::count_if(all, &CoverageEntry::isSupported);
    std::string text =
        "# Brimlo coverage\n\n_Generated from the rule catalog by `brimlo coverage --markdown`. "
        "Do not edit by hand._\n\n";
    text += "**" + std::to_string(all.size()) + " tools and ecosystems** covered by " +
            std::to_string(sum(all, &CoverageEntry::ruleCount)) + " path rules and " +
            std::to_string(sum(all, &CoverageEntry::artifactCount)) +
            " project-artifact patterns. **" + std::to_string(supported) +
            "** are officially supported.\n\n";
    text +=
        "## What the support levels mean\n\n"
        "| Level | Meaning |\n|---|---|\n"
        "| **Supported** | At least one rule is verified on a real Mac, or backed by vendor "
        "documentation. |\n"
        "| **Community** | Based on community reports (forums, issues). Works for many users; "
        "confirm before relying on it. |\n"
        "| **Unverified** | Written from general knowledge and not yet checked against a source. "
        "Treated as best-effort. |\n\n"
        "Risk: **Safe** regenerates silently. **Rebuilds** regenerates but costs time or "
        "bandwidth. **Review** may hold your own data and is never selected automatically.\n\n";
    const std::string* domain = nullptr;
    for (const CoverageEntry& entry : all) {
        if (domain == nullptr || *domain != entry.domain) {
            text += "\n## " + entry.domain +
                    "\n\n| Tool | Support | Rules | Project patterns | Risks | Audience |\n"
                    "|---|---|---|---|---|---|\n";
        }
        domain = &entry.domain;
        text += "| " + entry.tool + " | " + std::string{supportWord(entry)} + " | " +
                std::to_string(entry.ruleCount) + " | " + std::to_string(entry.artifactCount) +
                " | " + joined(labels(entry.risks)) + " | " + audience(entry) + " |\n";
    }
    return text;
}

}  // namespace Brimlo
