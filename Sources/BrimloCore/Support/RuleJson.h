#pragma once

#include "BrimloCore/Models/ArtifactPattern.h"
#include "BrimloCore/Models/CleanupRule.h"
#include "BrimloCore/Support/Json.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

/// One element of a decoded list: its value or its error. Exactly one is present.
///
/// Keeps the length and positions of a list with bad elements.
template <typename T>
struct Lossy {
    std::optional<T> value;
    std::optional<std::string> error;

    bool operator==(const Lossy&) const = default;
};

/// A JSON document of rules: an embedded pack, a user rule file or an exported file.
struct RulePackFile {
    std::string pack;                     ///< The pack's name.
    std::optional<std::int64_t> version;  ///< Read and not used.
    std::optional<std::string> system;    ///< The only one that has these places.
    std::optional<std::vector<Lossy<CleanupRule>>> rules;
    std::optional<std::vector<Lossy<ArtifactPattern>>> artifacts;
};

}  // namespace Brimlo

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
