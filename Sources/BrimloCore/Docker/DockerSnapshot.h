#pragma once

#include "BrimloCore/Docker/DockerCategory.h"
#include "BrimloCore/Docker/DockerObject.h"
#include "BrimloCore/Docker/DockerSummaryRow.h"
#include "BrimloCore/Docker/DockerVMDisk.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Brimlo {

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
