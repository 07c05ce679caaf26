#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace Brimlo::Platform {

/// A value of a property list in XML, as plist(5) describes it: those kinds of it that the
/// definition of a job is made of.
struct PropertyList {
    struct Entry;
    using Array = std::vector<PropertyList>;
    using Dictionary = std::vector<Entry>;  ///< In their order.

    /// Monostate for the kinds that nobody asks for: dates, data, fractions, truth values.
    std::variant<std::monostate, std::string, std::int64_t, Array, Dictionary> value;

    bool operator==(const PropertyList& other) const;

    /// The value under a key; null where there is none, or this is no dictionary.
    [[nodiscard]] const PropertyList* find(std::string_view key) const;

    /// The whole document. Texts are UTF-8 without control characters but line breaks and tabs.
    [[nodiscard]] std::string xml() const;

    /// What a document says; nullopt when it is no property list in XML. Takes what other programs
    /// and people write: comments, references to characters, CDATA.
    [[nodiscard]] static std::optional<PropertyList> parse(std::string_view xml);
};

struct PropertyList::Entry {
    std::string key;
    PropertyList value;

    bool operator==(const Entry&) const = default;
};

}  // namespace Brimlo::Platform
