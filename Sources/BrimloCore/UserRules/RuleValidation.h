#pragma once

#include "BrimloCore/Models/CleanupRule.h"

#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

/// What is wrong with a rule, in sentences for its author, in the order they were found.
struct RuleValidation {
    std::vector<std::string> errors;    ///< A rule with errors is never stored.
    std::vector<std::string> warnings;  ///< Shown, and no hindrance.

    bool operator==(const RuleValidation&) const = default;

    [[nodiscard]] bool isValid() const { return errors.empty(); }

    /// The errors in one text.
    [[nodiscard]] std::string joinedErrors(std::string_view separator) const;
};

namespace UserRules {

/// Judges a rule by its text: it may not aim at what the safety gate refuses, nor mean everything,
/// nor sweep a personal folder without being rated Review. Expands nothing and reads no folder.
[[nodiscard]] RuleValidation validate(const CleanupRule& rule);

}  // namespace UserRules

}  // namespace Brimlo
