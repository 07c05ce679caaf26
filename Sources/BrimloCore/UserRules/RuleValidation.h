#pragma once

#include "BrimloCore/Models/CleanupRule.h"

#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

/// The problems of a rule, in sentences for its author, in the order found.
struct RuleValidation {
    std::vector<std::string> errors;    ///< A rule with errors is never stored.
    std::vector<std::string> warnings;  ///< Shown, but not a hindrance.

    bool operator==(const RuleValidation&) const = default;

    [[nodiscard]] bool isValid() const { return errors.empty(); }

    /// The errors in one text.
    [[nodiscard]] std::string joinedErrors(std::string_view separator) const;
};

namespace UserRules {

/// Validates a rule by its text: it must not target what the safety gate refuses, nor everything,
/// nor a personal folder without being rated Review. Expands nothing and reads no folder.
[[nodiscard]] RuleValidation validate(const CleanupRule& rule);

}  // namespace UserRules

}  // namespace Brimlo
