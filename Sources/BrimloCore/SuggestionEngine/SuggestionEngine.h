#pragma once

#include "BrimloCore/DiskScanner/ScanControl.h"
#include "BrimloCore/Docker/DockerClient.h"
#include "BrimloCore/Models/Suggestion.h"
#include "BrimloCore/SuggestionEngine/RuleTargets.h"

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
    std::function<void(std::string_view)>
        onPhase;  ///< Called with each phase, on the calling thread.
    DockerClient::Places docker = DockerClient::usualPlaces();  ///< Candidate paths of its tool.
};

/// Finds what can be cleaned.
namespace SuggestionEngine {

/// The suggestions now, largest first.
///
/// Collects the matches of rules and project patterns, resolves overlaps so that each byte is
/// offered once, measures the rest in parallel, decides the preselection, and adds what Docker can
/// remove. Never fails: unreadable places count as missing. Cancelling `control` only cuts the walk
/// over projects short. Blocks.
[[nodiscard]] std::vector<Suggestion> generate(
    const SuggestionOptions& options, const ScanControl* control = nullptr);

/// The names of the running applications, lower-cased.
[[nodiscard]] std::set<std::string> runningAppNames();

/// Whether one of the `running` names is the application `quitApp` of a rule.
[[nodiscard]] bool isRunning(std::string_view quitApp, const std::set<std::string>& running);

/// Runs `body`, and prints its duration to standard error when the environment variable
/// `BRIMLO_TIMING` is set.
void timed(std::string_view label, const std::function<void()>& body);

}  // namespace SuggestionEngine

}  // namespace Brimlo
