#pragma once

#include "BrimloCore/Models/CleanupRule.h"
#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/RuleJson.h"
#include "BrimloCore/UserRules/RuleValidation.h"

#include <expected>
#include <string>
#include <string_view>
#include <vector>

/// Rule files: the user's own, one for each rule, and those that carry rules between machines. A
/// file may come from anywhere.
namespace Brimlo::UserRules {

/// The elements of a rule file, bad ones with their errors; none when it has no rules.
///
/// Fails, with the reason, when the file can't be read, belongs to somebody else though `owner`
/// forbids that, or is not a rule pack.
[[nodiscard]] std::expected<std::vector<Lossy<CleanupRule>>, std::string> readRules(
    const std::string& path, Owner owner = Owner::any);

/// A rule of a file, by its id or its position, and its errors.
struct FileVerdict {
    std::string id;
    RuleValidation validation;
};

/// Validates each rule of a file as it is. Writes nothing. Fails as `readRules` does.
[[nodiscard]] std::expected<std::vector<FileVerdict>, std::string> validateFile(
    const std::string& path);

/// The error code for a rule that can't be written.
inline constexpr int kInvalidRuleCode = 10;

/// The text of a file with these rules in this order, with keys sorted at every level.
///
/// Fails with `kInvalidRuleCode` of the domain "Brimlo" when a rule holds what JSON can't
/// represent.
[[nodiscard]] std::expected<std::string, Error> packText(
    std::string_view pack, const std::vector<CleanupRule>& rules);

/// The text of a file for other users.
[[nodiscard]] std::expected<std::string, Error> exportJSON(const std::vector<CleanupRule>& rules);

/// Writes such a file in one step, readable by its owner only.
///
/// An existing file is kept, with the error EEXIST, or replaced if it is a plain file.
enum class Existing { keep, replace };
[[nodiscard]] std::expected<void, Error> exportTo(
    const std::string& path, const std::vector<CleanupRule>& rules, Existing existing);

/// The outcome for each rule of a file, in its order.
struct Imported {
    std::vector<std::string> imported;  ///< The ids under which rules were stored.
    std::vector<std::string> rejected;  ///< "id: reasons" or "rule #position: reason".

    bool operator==(const Imported&) const = default;
};

/// Stores each valid rule of the file `from` in `directory`, replacing an earlier one of the same
/// id.
///
/// A rule whose id is not one of the user's own gets such an id and loses its rank: it runs beside
/// the rule it was copied from, replaces none, and is never the catch-all. `allowOverride` keeps
/// the id. Of two rules with the same id the later wins.
///
/// Fails when the file can't be read or is not a rule pack. Also fails when a rule can't be saved:
/// then none is, unless another file is in its way, which does not affect those before it.
[[nodiscard]] std::expected<Imported, Error> importPack(
    const std::string& from, bool allowOverride, const std::string& directory);

}  // namespace Brimlo::UserRules
