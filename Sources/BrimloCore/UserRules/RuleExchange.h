#pragma once

#include "BrimloCore/Models/CleanupRule.h"
#include "BrimloCore/Models/Error.h"

#include <expected>
#include <string>
#include <vector>

/// Rules on their way from one machine to another, as one file.
namespace Brimlo::UserRules {

/// The text of a file of these rules, in this order, with its keys sorted at every level.
///
/// Fails when a rule holds what JSON cannot.
[[nodiscard]] std::expected<std::string, Error> exportJSON(const std::vector<CleanupRule>& rules);

/// Writes such a file, in one step, readable by its owner alone.
///
/// A file that is there is kept, with the error EEXIST, or replaced if it is a plain one.
enum class Existing { keep, replace };
[[nodiscard]] std::expected<void, Error> exportTo(
    const std::string& path, const std::vector<CleanupRule>& rules, Existing existing);

/// What became of the rules of a file, each kind in their order there.
struct Imported {
    std::vector<std::string> imported;  ///< The ids under which rules were stored.
    std::vector<std::string> rejected;  ///< "id: reasons" or "rule #position: reason".

    bool operator==(const Imported&) const = default;
};

/// Stores each valid rule of the file `from` in `directory`, over an earlier one of the same id.
///
/// A rule whose id is not one of the user's own gets such an id and loses its rank: it runs beside
/// the rule it was copied from, replaces none, and never is the catch-all. `allowOverride` leaves
/// it as it stands in the file. Of two rules that come to one id the later stays.
///
/// Fails when the file can't be read or is no rule pack. Fails, too, when a rule can't be saved:
/// then none is, unless another file stands in its way, which those before it don't mind.
[[nodiscard]] std::expected<Imported, Error> importPack(
    const std::string& from, bool allowOverride, const std::string& directory);

}  // namespace Brimlo::UserRules
