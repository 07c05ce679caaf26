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

/// Files of rules, which may come from anywhere.
namespace Brimlo::UserRules {

/// The elements of a rule file, bad ones with their errors; none when it holds no rules.
///
/// Fails, with the reason, when the file can't be read, is somebody else's though `owner` forbids
/// that, or is no rule pack at all.
[[nodiscard]] std::expected<std::vector<Lossy<CleanupRule>>, std::string> readRules(
    const std::string& path, Owner owner = Owner::any);

/// A rule of a file, by its id or else its position, and what is wrong with it.
struct FileVerdict {
    std::string id;
    RuleValidation validation;
};

/// Judges each rule of a file as it stands there. Writes nothing. Fails as `readRules` does.
[[nodiscard]] std::expected<std::vector<FileVerdict>, std::string> validateFile(
    const std::string& path);

/// The text of a file that holds these rules in this order, with its keys sorted at every level.
///
/// Fails with code 10 of the domain "Brimlo" when a rule holds what JSON cannot.
[[nodiscard]] std::expected<std::string, Error> packText(
    std::string_view pack, const std::vector<CleanupRule>& rules);

/// The code of the error that a rule is not fit to be written.
inline constexpr int kInvalidRuleCode = 10;

}  // namespace Brimlo::UserRules
