#pragma once

#include "BrimloCore/Models/CleanupRule.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

/// What kind of leftover a Docker object is. Decides how it is offered.
enum class DockerCategory : std::uint8_t {
    danglingImages,
    unusedImages,
    stoppedContainers,
    orphanVolumes,
    buildCache,
};

inline constexpr std::array kAllDockerCategories{
    DockerCategory::danglingImages,
    DockerCategory::unusedImages,
    DockerCategory::stoppedContainers,
    DockerCategory::orphanVolumes,
    DockerCategory::buildCache,
};

/// The word that stands for the category in JSON; also its id.
[[nodiscard]] std::string_view rawValue(DockerCategory category);

/// The id under which its suggestion and the journal name it. No rule of the catalog has it.
[[nodiscard]] std::string_view ruleID(DockerCategory category);

/// The category's name for the screen.
[[nodiscard]] std::string_view title(DockerCategory category);

/// The rating of its objects.
[[nodiscard]] Risk risk(DockerCategory category);

/// What its objects are and how they can be restored, in whole sentences.
[[nodiscard]] std::string_view regenerates(DockerCategory category);

/// An object that Docker could remove. Identified by `pseudoPath`.
struct DockerObject {
    enum class Kind : std::uint8_t { image, container, volume, buildCache };

    Kind kind = Kind::image;
    std::string dockerID;  ///< Docker's identifier for removal.
    std::string title;
    std::string detail;
    std::int64_t size = 0;  ///< Bytes, rounded as Docker prints them.
    DockerCategory category = DockerCategory::unusedImages;

    bool operator==(const DockerObject&) const = default;

    /// Its pseudo path: "docker:image:sha256:ab12".
    [[nodiscard]] std::string pseudoPath() const;

    /// A pseudo path in words: "Docker image ab12", with as much of a hash as Docker shows. With
    /// the object's title, "Docker image shop:3 (ab12)": no other object has these words.
    [[nodiscard]] static std::string words(
        std::string_view pseudoPath, std::string_view title = {});
};

/// The kind's word in JSON.
[[nodiscard]] std::string_view rawValue(DockerObject::Kind kind);

/// Docker's own summary of one type of objects.
struct DockerSummaryRow {
    std::string type;  ///< Docker's word: "Images", "Local Volumes".
    std::int64_t total = 0;
    std::int64_t active = 0;  ///< How many of them are in use.
    std::int64_t sizeBytes = 0;
    std::int64_t reclaimableBytes = 0;

    bool operator==(const DockerSummaryRow&) const = default;
};

/// The file that a Docker engine's virtual machine uses as its disk.
struct DockerVMDisk {
    std::string path;
    std::int64_t allocated = 0;  ///< Allocated bytes.
    std::int64_t logical = 0;    ///< Its apparent length; a sparse file.
    std::string runtime;         ///< "Docker Desktop" or "OrbStack".

    bool operator==(const DockerVMDisk&) const = default;
};

/// Docker's objects on this machine, as far as known.
struct DockerSnapshot {
    bool available = false;              ///< The daemon answered.
    std::optional<std::string> context;  ///< The name of the engine that the tool talks to.
    std::optional<std::string> error;    ///< One sentence for the screen.
    std::vector<DockerSummaryRow> summary;
    std::vector<DockerObject> objects;  ///< Removable objects; none in use.
    std::vector<DockerVMDisk> vmDisks;

    bool operator==(const DockerSnapshot&) const = default;

    /// The objects of one category, the largest first; equal ones as Docker listed them.
    [[nodiscard]] std::vector<DockerObject> objectsIn(DockerCategory category) const;

    /// The bytes of one category.
    [[nodiscard]] std::int64_t totalIn(DockerCategory category) const;

    /// The bytes of all objects.
    [[nodiscard]] std::int64_t reclaimableTotal() const;
};

}  // namespace Brimlo
