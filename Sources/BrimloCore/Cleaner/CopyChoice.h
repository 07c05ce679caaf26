#pragma once

#include "BrimloCore/Cleaner/DuplicateFinder.h"
#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Support/Uuid.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Brimlo {

/// Why a copy stays. The first five are rules, which choose one copy of each group.
enum class KeepReason : std::uint8_t {
    firstByName,
    newest,  ///< By the time when its content changed, as is `oldest`.
    oldest,
    shortestPath,
    /// With the fewest words in its path that tell of a passing place or a copy: "Downloads",
    /// "backup", "(2)"; of several, the shortest path.
    tidiestFolder,
    keptFolder,  ///< It lies below a folder that loses no copy.
    byHand,      ///< A person chose it.
};

/// The name of the enumerator.
[[nodiscard]] std::string_view rawValue(KeepReason reason);
/// In words: "in a kept folder".
[[nodiscard]] std::string_view words(KeepReason reason);

/// Which copies of equal files stay.
///
/// All copies below a kept folder stay, and so does the one that was chosen by hand. The rule
/// chooses one where no copy would stay otherwise, so at least one copy of each group stays.
class CopyChoice {
public:
    /// For each copy of a group, in order: why it stays; absent for an extra.
    using Reasons = std::vector<std::optional<KeepReason>>;

    explicit CopyChoice(KeepReason rule = KeepReason::firstByName);

    [[nodiscard]] KeepReason rule() const { return rule_; }
    /// One of the first five reasons.
    void setRule(KeepReason rule);

    /// The kept folders, in the order they were added, with all symlinks and ".." resolved.
    [[nodiscard]] const std::vector<std::string>& folders() const { return folders_; }
    /// Keeps all copies below a folder. `path` is as a person types it. Fails with a sentence when
    /// it leads to no folder.
    [[nodiscard]] std::expected<void, Error> keepUnder(std::string_view path);
    /// Forgets a kept folder.
    void release(const std::string& folder) { std::erase(folders_, folder); }

    /// Keeps this copy of the group, whatever the rule says, instead of one chosen before. Without
    /// effect when the group has no such copy.
    void keep(const Uuid& group, std::string path) { byHand_[group] = std::move(path); }

    /// The reasons for each group. With kept folders, looks up each folder above a copy once.
    [[nodiscard]] std::vector<Reasons> reasons(const std::vector<DuplicateGroup>& groups) const;

private:
    class KeptPlaces;

    [[nodiscard]] Reasons reasonsIn(const DuplicateGroup& group, KeptPlaces& places) const;
    [[nodiscard]] std::size_t preferred(const std::vector<DuplicateGroup::Copy>& copies) const;

    KeepReason rule_;
    std::vector<std::string> folders_;
    std::map<Uuid, std::string> byHand_;  ///< The path chosen in a group.
};

/// How many copies of a group may go.
[[nodiscard]] std::size_t extraCount(const CopyChoice::Reasons& reasons);

}  // namespace Brimlo
