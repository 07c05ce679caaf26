#pragma once

#include "BrimloCore/Models/RulePackFile.h"
#include "BrimloCore/Support/Json.h"

#include <expected>
#include <string>
#include <string_view>

/// The JSON form of rules and rule packs.
namespace Brimlo::RuleJson {

/// The pack in a document. A bad rule or artifact spoils only its own element.
///
/// Fails when the text is not JSON, or is no object with a "pack".
[[nodiscard]] std::expected<RulePackFile, std::string> decodePack(std::string_view text);

/// All keys in the order of the fields, leaving out only absent values.
[[nodiscard]] Json::Object encode(const CleanupRule& rule);
[[nodiscard]] Json::Object encode(const ArtifactPattern& pattern);

/// A list of texts.
[[nodiscard]] Json::Array encode(const std::vector<std::string>& texts);

}  // namespace Brimlo::RuleJson
