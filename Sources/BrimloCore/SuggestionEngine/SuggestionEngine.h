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
    std::optional<std::set<Persona>> personas;      ///< Whose rules; absent means everybody's.
    std::int64_t staleDays = 90;                    ///< Projects idle so long are preselected.
    bool includeArtifacts = true;                   ///< Look for build output in projects.
    bool includeDocker = true;                      ///< Ask Docker, if there is one.
    std::function<void(std::string_view)> onPhase;  ///< Told each phase, on the calling thread.
    DockerClient::Places docker = DockerClient::usualPlaces();  ///< Where its tool may be.
};

/// Turns the catalog and the disk into suggestions.
namespace SuggestionEngine {

/// What can be cleaned now, the largest suggestion first.
///
/// Gathers what the rules name and the projects hold, resolves overlaps so that each byte is
/// offered once, measures what is left in parallel, decides the preselection, and adds what Docker
/// can remove. Never fails: what can't be read is not there. Cancelling `control` cuts the walk
/// over the projects short and nothing else. Blocks.
[[nodiscard]] std::vector<Suggestion> generate(
    const SuggestionOptions& options, const ScanControl* control = nullptr);

/// The names of the running applications, lower-cased.
[[nodiscard]] std::set<std::string> runningAppNames();

/// Whether one of the `running` names is the application that a rule calls `quitApp`.
[[nodiscard]] bool isRunning(std::string_view quitApp, const std::set<std::string>& running);

/// Runs `body`, and tells on standard error how long it took when the environment variable
/// `BRIMLO_TIMING` is set.
void timed(std::string_view label, const std::function<void()>& body);

}  // namespace SuggestionEngine

}  // namespace Brimlo
