#include "BrimloCore/Support/Json.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include <boost/json/monotonic_resource.hpp>
#include <boost/json/parser.hpp>
#include <boost/json/serialize.hpp>

namespace Brimlo::Json {

namespace {

void appendPretty(std::string& out, const Value& value, std::size_t indent);

/// Appends the elements between two brackets, one a line.
template <typename Elements, typename Append>
void appendLines(
    std::string& out,
    std::string_view brackets,
    const Elements& elements,
    std::size_t indent,
    Append append) {
    out += brackets.front();
    const char* separator = "\n";
    for (const auto& element : elements) {
        out += separator;
        out.append(indent + 2, ' ');
        append(element);
        separator = ",\n";
    }
    if (!elements.empty()) {
        out += '\n';
        out.append(indent, ' ');
    }
    out += brackets.back();
}

void appendObject(std::string& out, const Object& object, std::size_t indent) {
    std::vector<const Object::value_type*> fields;
    fields.reserve(object.size());
    for (const auto& field : object) {
        fields.push_back(&field);
    }
    std::ranges::sort(fields, {}, [](const auto* field) { return std::string_view{field->key()}; });
    appendLines(out, "{}", fields, indent, [&](const auto* field) {
        out += boost::json::serialize(field->key());
        out += ": ";
        appendPretty(out, field->value(), indent + 2);
    });
}

void appendPretty(std::string& out, const Value& value, std::size_t indent) {
    if (const Object* object = value.if_object()) {
        appendObject(out, *object, indent);
    } else if (const Array* array = value.if_array()) {
        appendLines(out, "[]", *array, indent, [&](const Value& element) {
            appendPretty(out, element, indent + 2);
        });
    } else {
        out += boost::json::serialize(value);
    }
}

std::string asString(const boost::json::string& text) {
    return {text.data(), text.size()};
}

}  // namespace

std::expected<Value, std::string> parse(std::string_view text) {
    boost::json::parser parser;
    // A document is read and freed as a whole, so its values need not be freed one by one.
    parser.reset(boost::json::make_shared_resource<boost::json::monotonic_resource>());
    boost::json::error_code error;
    const std::size_t used = parser.write(text.data(), text.size(), error);
    if (error) {
        return std::unexpected(
            "not valid JSON: " + error.message() + " at byte " + std::to_string(used));
    }
    return parser.release();
}

bool forEachElement(std::string_view text, const std::function<void(const Value&)>& visit) {
    constexpr std::string_view kSpace = " \t\r\n";
    // The byte after white space, or NUL at the end.
    const auto next = [&] {
        text.remove_prefix(std::min(text.find_first_not_of(kSpace), text.size()));
        return text.empty() ? '\0' : text.front();
    };
    if (next() != '[') {
        return false;
    }
    text.remove_prefix(1);
    if (next() == ']') {
        text.remove_prefix(1);
        return next() == '\0' && text.empty();
    }
    boost::json::parse_options options;
    --options.max_depth;  // The list around them is a level, too.
    boost::json::parser parser({}, options);
    // Elements are parsed in one buffer that stays in the processor's cache. Parsing a long list as
    // one value takes several times as long.
    std::array<unsigned char, 4096> buffer{};
    boost::json::monotonic_resource memory(buffer.data(), buffer.size());
    while (true) {
        parser.reset(&memory);
        boost::json::error_code error;
        const std::size_t used = parser.write_some(text.data(), text.size(), error);
        if (error) {
            return false;
        }
        text.remove_prefix(used);
        visit(parser.release());
        memory.release();
        const char separator = next();
        text.remove_prefix(std::min<std::size_t>(text.size(), 1));
        if (separator == ']') {
            return next() == '\0' && text.empty();
        }
        if (separator != ',') {
            return false;
        }
    }
}

std::string compact(const Value& value) {
    return boost::json::serialize(value);
}

std::string pretty(const Value& value) {
    std::string out;
    appendPretty(out, value, 0);
    out += '\n';
    return out;
}

std::optional<std::int64_t> integer(const Value& value) {
    if (const std::int64_t* number = value.if_int64()) {
        return *number;
    }
    // The parser returns whole numbers up to 2^63 - 1 as above. A double beyond the exact range
    // can't be an intended whole number.
    constexpr double kExactLimit = 9007199254740992.0;
    const double* number = value.if_double();
    if (number != nullptr && std::abs(*number) <= kExactLimit && std::trunc(*number) == *number) {
        return static_cast<std::int64_t>(*number);
    }
    return std::nullopt;
}

FieldReader::FieldReader(const Value& value)
    : object_(value.if_object()) {
    if (object_ == nullptr) {
        error_ = "is not an object";
    }
}

const Value* FieldReader::optional(std::string_view key) const {
    if (object_ == nullptr) {
        return nullptr;
    }
    const Value* value = object_->if_contains(key);
    return value == nullptr || value->is_null() ? nullptr : value;
}

const Value* FieldReader::required(std::string_view key) {
    const Value* value = optional(key);
    if (value == nullptr) {
        fail(key, "is missing");
    }
    return value;
}

void FieldReader::fail(std::string_view key, std::string_view reason) {
    if (!error_) {
        error_ = "field \"" + std::string{key} + "\": " + std::string{reason};
    }
}

std::optional<std::string> FieldReader::optionalText(std::string_view key) {
    const Value* value = optional(key);
    if (value == nullptr) {
        return std::nullopt;
    }
    if (!value->is_string()) {
        fail(key, "is not a text");
        return std::nullopt;
    }
    return asString(value->get_string());
}

std::string FieldReader::text(std::string_view key) {
    return required(key) == nullptr ? std::string{} : optionalText(key).value_or("");
}

std::vector<std::string> FieldReader::textsOrNone(std::string_view key) {
    const Value* value = optional(key);
    if (value == nullptr) {
        return {};
    }
    const Array* array = value->if_array();
    if (array == nullptr) {
        fail(key, "is not a list");
        return {};
    }
    std::vector<std::string> texts;
    texts.reserve(array->size());
    for (const Value& element : *array) {
        if (!element.is_string()) {
            fail(key, "item " + std::to_string(texts.size()) + " is not a text");
            return {};
        }
        texts.push_back(asString(element.get_string()));
    }
    return texts;
}

std::vector<std::string> FieldReader::texts(std::string_view key) {
    return required(key) == nullptr ? std::vector<std::string>{} : textsOrNone(key);
}

std::optional<std::int64_t> FieldReader::optionalNumber(std::string_view key) {
    const Value* value = optional(key);
    if (value == nullptr) {
        return std::nullopt;
    }
    const std::optional<std::int64_t> number = integer(*value);
    if (!number) {
        fail(key, "is not a whole number");
    }
    return number;
}

std::int64_t FieldReader::number(std::string_view key) {
    return required(key) == nullptr ? 0 : optionalNumber(key).value_or(0);
}

bool FieldReader::flagOr(std::string_view key, bool fallback) {
    const Value* value = optional(key);
    if (value == nullptr) {
        return fallback;
    }
    if (!value->is_bool()) {
        fail(key, "is neither true nor false");
        return fallback;
    }
    return value->get_bool();
}

bool FieldReader::flag(std::string_view key) {
    return required(key) != nullptr && flagOr(key, false);
}

}  // namespace Brimlo::Json
