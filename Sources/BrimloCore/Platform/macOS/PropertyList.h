#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace Brimlo::Platform {

/// A value of an XML property list (plist(5)): the kinds that a job definition uses.
struct PropertyList {
    struct Entry;
    using Array = std::vector<PropertyList>;
    using Dictionary = std::vector<Entry>;  ///< In their order.

    /// Monostate for unused kinds: dates, data, fractions, booleans.
    std::variant<std::monostate, std::string, std::int64_t, Array, Dictionary> value;

    bool operator==(const PropertyList& other) const;

    /// The value of a key; null when missing, or when this is not a dictionary.
    [[nodiscard]] const PropertyList* find(std::string_view key) const;

    /// The whole document. Texts are UTF-8 without control characters but line breaks and tabs.
    [[nodiscard]] std::string xml() const;

    /// The value of a document; nullopt when it is not an XML property list. Accepts what other
    /// programs and people write: comments, character references, CDATA.
    [[nodiscard]] static std::optional<PropertyList> parse(std::string_view xml);
};

struct PropertyList::Entry {
    std::string key;
    PropertyList value;

    bool operator==(const Entry&) const = default;
};

}  // namespace Brimlo::Platform
