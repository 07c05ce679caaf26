#include "BrimloCore/UserRules/RuleExchange.h"

#include "BrimloCore/UserRules/RuleFile.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <cstddef>
#include <utility>

namespace Brimlo::UserRules {

namespace {

constexpr int kUnreadablePackCode = 11;

/// The rule as one of the user's own, without the authority that its file claims for it.
CleanupRule demoted(CleanupRule rule) {
    rule.id = std::string{kIDPrefix} + slug(rule.id);
    rule.isCatchAll = false;
    rule.domain = "Custom rules";
    rule.confidence = Confidence::community;
    return rule;
}

/// Stores a rule, or notes why it is not fit for it.
std::expected<void, Error> take(
    const CleanupRule& rule, const std::string& directory, Imported& result) {
    if (const RuleValidation verdict = validate(rule); !verdict.isValid()) {
        result.rejected.push_back(rule.id + ": " + verdict.joinedErrors("; "));
        return {};
    }
    auto saved = save(rule, directory);
    if (saved) {
        result.imported.push_back(rule.id);
    }
    return saved;
}

}  // namespace

std::expected<std::string, Error> exportJSON(const std::vector<CleanupRule>& rules) {
    return packText("custom-export", rules);
}

std::expected<Imported, Error> importPack(
    const std::string& from, bool allowOverride, const std::string& directory) {
    auto elements = readRules(from);
    if (!elements) {
        return std::unexpected(Error{
            .domain = kErrorDomain,
            .code = kUnreadablePackCode,
            .description = std::move(elements.error()),
        });
    }
    Imported result;
    for (std::size_t position = 0; position < elements->size(); ++position) {
        Lossy<CleanupRule>& element = (*elements)[position];
        if (!element.value) {
            result.rejected.push_back(
                "rule #" + std::to_string(position) + ": " + element.error.value_or("invalid"));
            continue;
        }
        const bool isKept = allowOverride || isCustom(element.value->id);
        const CleanupRule rule =
            isKept ? *std::move(element.value) : demoted(*std::move(element.value));
        if (auto taken = take(rule, directory, result); !taken) {
            return std::unexpected(std::move(taken.error()));
        }
    }
    return result;
}

}  // namespace Brimlo::UserRules
