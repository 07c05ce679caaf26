#pragma once

#include "BrimloCore/DiskScanner/ScanControl.h"
#include "BrimloCore/Docker/DockerClient.h"
#include "BrimloCore/Gate/Safety.h"
#include "BrimloCore/Models/CleanupRule.h"
#include "BrimloCore/Models/Suggestion.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

/// The inputs of a suggestion run.
struct SuggestionOptions {
    std::optional<std::set<Persona>> personas;  ///< The audiences; absent means all.
    std::int64_t staleDays = 90;   ///< Projects idle for this many days are preselected.
    bool includeArtifacts = true;  ///< Look for build output in projects.
    bool includeDocker = true;     ///< Ask Docker, if there is one.
    /// Called with each phase, on the calling thread.
    std::function<void(std::string_view)> onPhase;
    DockerClient::Places docker = DockerClient::usualPlaces();  ///< Where its tool may be.
};

/// Finds what can be cleaned.
namespace SuggestionEngine {

/// The suggestions now, largest first.
///
/// Collects the matches of rules and project patterns, resolves overlaps so that each byte is
/// offered once, measures the rest in parallel, decides the preselection, and adds what Docker can
/// remove. Leaves out what `LeftAlone` lists, and gives nothing while its list can't be read. A
/// broad rule does not offer what a switched-off rule knows. Unreadable places count as missing.
/// Cancelling `control` only cuts the walk over projects short. Blocks.
[[nodiscard]] std::vector<Suggestion> generate(
    const SuggestionOptions& options, const ScanControl* control = nullptr);

/// What a rule matches.
struct Target {
    SuggestionItem item;    ///< With its age; with its size unless it is a folder.
    bool isFolder = false;  ///< Not a symlink to one.
};

/// What a rule matches now: in the order of the rule's paths, then of their expansion. Unreadable
/// and refused items are left out. Many rules share one gate.
[[nodiscard]] std::vector<Target> targets(
    const CleanupRule& rule, const Safety::Gate& gate = Safety::Gate{});

/// The sizes of these paths, measured in parallel. Blocks until all are done.
[[nodiscard]] std::vector<SuggestionItem> size(const std::vector<std::string>& paths);

/// The items that a rule matches now, measured, largest first. Blocks.
[[nodiscard]] std::vector<SuggestionItem> preview(const CleanupRule& rule);

/// Whether one of the `running` names is the application `quitApp` of a rule.
[[nodiscard]] bool isRunning(std::string_view quitApp, const std::set<std::string>& running);

}  // namespace SuggestionEngine

}  // namespace Brimlo
