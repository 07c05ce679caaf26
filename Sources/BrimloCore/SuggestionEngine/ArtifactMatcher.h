#pragma once

#include "BrimloCore/Models/ArtifactPattern.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Brimlo {

/// Artifact patterns indexed by name: an unknown name costs one lookup.
class ArtifactMatcher {
public:
    /// Keeps a reference to `patterns`.
    explicit ArtifactMatcher(const std::vector<ArtifactPattern>& patterns);

    /// The patterns that match a folder `name` whose siblings are `siblings`, in order.
    [[nodiscard]] std::vector<const ArtifactPattern*> matches(
        std::string_view name, const std::vector<std::string_view>& siblings) const;

private:
    [[nodiscard]] std::vector<std::size_t> byName(std::string_view name) const;

    const std::vector<ArtifactPattern>& patterns_;
    std::unordered_map<std::string_view, std::vector<std::size_t>> literals_;
    std::vector<std::pair<std::string, std::size_t>> wildcards_;
    std::vector<std::pair<std::string_view, std::size_t>> suffixes_;
};

}  // namespace Brimlo
