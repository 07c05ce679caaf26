#pragma once

#include "BrimloCore/Models/CleanupRule.h"
#include "BrimloCore/Support/RuleJson.h"

#include <string>
#include <utility>

namespace Brimlo::Testing {

/// A valid rule with nothing but what every rule has.
[[nodiscard]] inline CleanupRule sampleRule(std::string id) {
    return {
        .id = std::move(id),
        .name = "Mine",
        .group = "A Tool Of Mine",
        .personas = {Persona::general},
        .risk = Risk::safe,
        .paths = {"~/.cache/mine"},
        .regenerates = "It is made again.",
    };
}

/// The text of a rule pack with one rule.
[[nodiscard]] inline std::string packOf(const CleanupRule& rule) {
    return R"({"pack": "any", "rules": [)" + Json::compact(RuleJson::encode(rule)) + "]}";
}

}  // namespace Brimlo::Testing
