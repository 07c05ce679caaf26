#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What rules say of the things they find: how risky to remove, for whom, on what evidence.
namespace Brimlo {

/// How risky it is to remove a finding; lower is safer.
enum class Risk { safe = 0, rebuild = 1, review = 2 };

inline constexpr std::array kAllRisks{Risk::safe, Risk::rebuild, Risk::review};

/// The rating's word in JSON: "safe", "rebuild" or "review".
[[nodiscard]] std::string_view rawValue(Risk risk);

/// A short label for badges and tables.
[[nodiscard]] std::string_view label(Risk risk);

/// The audience of a rule.
enum class Persona {
    general,
    developer,
    aiml,
    video,
    music,
    photo,
    design3D,
    gamedev,
    engineering,
    science,
    office,
    gaming,
};

inline constexpr std::array kAllPersonas{
    Persona::general,
    Persona::developer,
    Persona::aiml,
    Persona::video,
    Persona::music,
    Persona::photo,
    Persona::design3D,
    Persona::gamedev,
    Persona::engineering,
    Persona::science,
    Persona::office,
    Persona::gaming,
};

/// The audience's word in JSON and on the command line; also its id.
[[nodiscard]] std::string_view rawValue(Persona persona);

/// The audience's name for the screen.
[[nodiscard]] std::string_view label(Persona persona);

/// The audience with exactly this raw value, or nullopt.
[[nodiscard]] std::optional<Persona> personaFromRawValue(std::string_view text);

/// The evidence for a rule, strongest first.
enum class Confidence { verifiedLocal, documented, community, unverified };

inline constexpr std::array kAllConfidences{
    Confidence::verifiedLocal,
    Confidence::documented,
    Confidence::community,
    Confidence::unverified,
};

/// The level's word in JSON, for example "verified-local".
[[nodiscard]] std::string_view rawValue(Confidence confidence);

/// Whether the evidence is strong enough for preselecting a built-in rule.
[[nodiscard]] bool isSupported(Confidence confidence);

/// The level with exactly this raw value, or nullopt.
[[nodiscard]] std::optional<Confidence> confidenceFromRawValue(std::string_view text);

/// A run of `tools/prove-rules`: the program was used, cleaned up after and used again, and nothing
/// but what comes back had gone.
struct Experiment {
    std::string system;   ///< "linux" or "macos".
    std::string program;  ///< The package and its version.
    std::string date;     ///< For example "2026-03-01".

    bool operator==(const Experiment&) const = default;
};

/// The experiments of this system; those of another say nothing for it.
[[nodiscard]] std::vector<Experiment> ofSystem(
    std::vector<Experiment> experiments, std::string_view system);

/// What must also hold of a match, so that it is what a rule means. Without any, nothing more.
struct MatchConditions {
    /// Names that must all be beside the match, as files or folders.
    std::vector<std::string> beside;
    /// Folders with an entry for each installed program. The match is offered only if at least one
    /// of them is there, and none has an entry of the match's name.
    std::vector<std::string> owners;
    /// Files in which a program wrote where it is installed, "*" standing for the match's name. The
    /// match is offered only if at least one is there, and nothing is where they say.
    std::vector<std::string> ownerFiles;

    bool operator==(const MatchConditions&) const = default;
};

/// A rule of the catalog: places that can be cleaned, how risky that is, and what comes back.
///
/// Identified by `id`.
struct CleanupRule {
    std::string id;     ///< Stable dotted words, for example "general.app-caches".
    std::string name;   ///< The title shown.
    std::string group;  ///< Its heading: the tool.
    std::vector<Persona> personas;
    Risk risk = Risk::review;
    std::vector<std::string> paths;              ///< Path patterns; "~" stands for the home folder.
    std::string regenerates;                     ///< What happens after removal, in a sentence.
    std::optional<std::string> officialCommand;  ///< The vendor's own command for this cleanup.
    std::vector<std::string> quitApps;           ///< Apps to close first, by display name.
    bool contentsOnly = false;          ///< The children of each path are removed, not the path.
    std::vector<std::string> excludes;  ///< Wildcards for child names, with `contentsOnly`.
    std::optional<std::int64_t> minAgeDays;  ///< More recently modified entries are skipped.
    bool isCatchAll = false;                 ///< A broad rule that yields to specific ones.
    std::optional<std::string> domain;       ///< The tool family in the coverage report.
    Confidence confidence = Confidence::documented;
    bool isUsersOwn = false;           ///< Its origin: set by the catalog, never by a file.
    std::vector<std::string> sources;  ///< Web addresses of its evidence.
    MatchConditions conditions;
    std::vector<Experiment> provenOn;  ///< The experiments that prove it.

    bool operator==(const CleanupRule&) const = default;
};

}  // namespace Brimlo
