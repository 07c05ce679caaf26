#pragma once

#include "BrimloCore/Models/CleanupRule.h"
#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Models/Lossy.h"
#include "BrimloCore/Support/AtomicFile.h"
#include "BrimloCore/UserRules/RuleValidation.h"

#include <expected>
#include <string>
#include <string_view>
#include <vector>

/// Rule files, which may come from anywhere.
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

/// The text of a file with these rules in this order, with keys sorted at every level.
///
/// Fails with code 10 of the domain "Brimlo" when a rule holds what JSON can't represent.
[[nodiscard]] std::expected<std::string, Error> packText(
    std::string_view pack, const std::vector<CleanupRule>& rules);

/// The error code for a rule that can't be written.
inline constexpr int kInvalidRuleCode = 10;

}  // namespace Brimlo::UserRules
