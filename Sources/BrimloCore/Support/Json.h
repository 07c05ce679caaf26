#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

/// JSON text (RFC 8259) in and out, and the typed reading of its objects.
namespace Brimlo::Json {

using Array = boost::json::array;
using Object = boost::json::object;
using String = boost::json::string;
using Value = boost::json::value;

/// The value of a UTF-8 document.
///
/// Refuses ill-formed text, nesting deeper than 32 and bytes after the end. The error says what
/// is wrong and at which byte. The memory of the result is bounded by the length of the text.
[[nodiscard]] std::expected<Value, std::string> parse(std::string_view text);

/// Calls `visit` with each element of the list that a document is, in order, and returns whether
/// the document is a list to its end. Refuses what `parse` refuses, though only when it gets there.
///
/// A value lives as long as the call it is handed to: a long list costs no more memory than its
/// longest element.
[[nodiscard]] bool forEachElement(
    std::string_view text, const std::function<void(const Value&)>& visit);

/// On one line without spaces, keys in the order in which they were added.
[[nodiscard]] std::string compact(const Value& value);

/// On many lines, keys sorted at every level, with a line end at the end.
[[nodiscard]] std::string pretty(const Value& value);

/// The value as a whole number, also when it is written as 3.0.
[[nodiscard]] std::optional<std::int64_t> integer(const Value& value);

/// Reads an object field by field and keeps the first thing that was wrong.
///
/// Read all fields, then ask `error`: after a failure the fields read as empty. A key that is
/// null counts as absent.
class FieldReader {
public:
    explicit FieldReader(const Value& value);

    [[nodiscard]] std::string text(std::string_view key);
    [[nodiscard]] std::vector<std::string> texts(std::string_view key);
    [[nodiscard]] std::int64_t number(std::string_view key);
    [[nodiscard]] bool flag(std::string_view key);

    [[nodiscard]] std::optional<std::string> optionalText(std::string_view key);
    [[nodiscard]] std::vector<std::string> textsOrNone(std::string_view key);
    [[nodiscard]] std::optional<std::int64_t> optionalNumber(std::string_view key);
    [[nodiscard]] bool flagOr(std::string_view key, bool fallback);

    /// The value of a key that must be there; nullptr, with the failure noted, when it is not.
    [[nodiscard]] const Value* required(std::string_view key);

    /// The value of a key, or nullptr when it is absent.
    [[nodiscard]] const Value* optional(std::string_view key) const;

    /// Notes that the field is wrong: `field "key": reason`. Only the first note is kept.
    void fail(std::string_view key, std::string_view reason);

    [[nodiscard]] const std::optional<std::string>& error() const { return error_; }

private:
    const Object* object_ = nullptr;
    std::optional<std::string> error_;
};

}  // namespace Brimlo::Json
