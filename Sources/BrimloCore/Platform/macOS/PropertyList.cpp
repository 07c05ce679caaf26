#include "BrimloCore/Platform/macOS/PropertyList.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <system_error>
#include <utility>

namespace Brimlo::Platform {

namespace {

constexpr std::string_view kSpaces = " \t\r\n";

struct Entity {
    std::string_view name;
    char character;
};
constexpr std::array<Entity, 5> kEntities{
    {{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}}
};

std::string escaped(std::string_view text) {
    std::string result;
    for (const char character : text) {
        const auto* const entity = std::ranges::find(kEntities, character, &Entity::character);
        if (character == '\r') {
            result += "&#13;";  // As it stands, a reader would take it for a line break.
        } else if (entity != kEntities.end()) {
            result += entity->name;
        } else {
            result += character;
        }
    }
    return result;
}

void write(const PropertyList& list, const std::string& indent, std::string& xml) {
    const auto line = [&](std::string_view tag, std::string_view content) {
        xml.append(indent).append("<").append(tag).append(">").append(content);
        xml.append("</").append(tag).append(">\n");
    };
    if (const auto* text = std::get_if<std::string>(&list.value)) {
        line("string", escaped(*text));
    } else if (const auto* number = std::get_if<std::int64_t>(&list.value)) {
        line("integer", std::to_string(*number));
    } else if (const auto* array = std::get_if<PropertyList::Array>(&list.value)) {
        xml += indent + "<array>\n";
        for (const PropertyList& item : *array) {
            write(item, indent + "\t", xml);
        }
        xml += indent + "</array>\n";
    } else if (const auto* dictionary = std::get_if<PropertyList::Dictionary>(&list.value)) {
        xml += indent + "<dict>\n";
        for (const auto& [key, item] : *dictionary) {
            xml += indent + "\t<key>" + escaped(key) + "</key>\n";
            write(item, indent + "\t", xml);
        }
        xml += indent + "</dict>\n";
    }
}

/// In UTF-8; empty for what is no character.
std::string encoded(std::uint32_t code) {
    constexpr std::uint32_t kLast = 0x10FFFF;
    if (code == 0 || code > kLast || (code >= 0xD800 && code <= 0xDFFF)) {
        return "";
    }
    const auto tail = [&](unsigned shift) {
        return static_cast<char>(0x80U | ((code >> shift) & 0x3FU));
    };
    if (code < 0x80) {
        return {static_cast<char>(code)};
    }
    if (code < 0x800) {
        return {static_cast<char>(0xC0U | (code >> 6U)), tail(0)};
    }
    if (code < 0x10000) {
        return {static_cast<char>(0xE0U | (code >> 12U)), tail(6), tail(0)};
    }
    return {static_cast<char>(0xF0U | (code >> 18U)), tail(12), tail(6), tail(0)};
}

/// Reads a document from its beginning to its end. Every step answers with nothing when the text
/// is not what the step is for.
class Reader {
public:
    explicit Reader(std::string_view text)
        : rest_{text} {}

    std::optional<PropertyList> document() {
        skipBetween();
        const std::optional<Tag> root = tag();
        if (!root || root->name != "plist" || root->isEnd || root->isEmpty) {
            return std::nullopt;
        }
        auto list = value(0);
        if (!list || !end("plist")) {
            return std::nullopt;
        }
        skipBetween();
        return rest_.empty() ? list : std::nullopt;
    }

private:
    struct Tag {
        std::string_view name;
        bool isEnd = false;
        bool isEmpty = false;
    };

    bool take(std::string_view text) {
        if (!rest_.starts_with(text)) {
            return false;
        }
        rest_.remove_prefix(text.size());
        return true;
    }

    /// What comes before `text`, which is taken off too.
    std::optional<std::string_view> until(std::string_view text) {
        const std::size_t at = rest_.find(text);
        if (at == std::string_view::npos) {
            return std::nullopt;
        }
        const std::string_view before = rest_.substr(0, at);
        rest_.remove_prefix(at + text.size());
        return before;
    }

    /// Goes past spaces, comments, and what stands before the root.
    void skipBetween() {
        while (true) {
            rest_.remove_prefix(std::min(rest_.find_first_not_of(kSpaces), rest_.size()));
            const std::string_view before = rest_;
            const bool isSkipped = take("<!--")
                                       ? until("-->").has_value()
                                       : (take("<?") ? until("?>").has_value()
                                                     : take("<!DOCTYPE") && until(">").has_value());
            if (!isSkipped) {
                rest_ = before;
                return;
            }
        }
    }

    std::optional<Tag> tag() {
        skipBetween();
        if (!take("<")) {
            return std::nullopt;
        }
        Tag tag{.name = "", .isEnd = take("/"), .isEmpty = false};
        auto content = until(">");
        if (!content) {
            return std::nullopt;
        }
        if (content->ends_with('/')) {
            tag.isEmpty = true;
            content->remove_suffix(1);
        }
        // Nothing that is asked for stands in an attribute.
        tag.name = content->substr(0, content->find_first_of(kSpaces));
        return tag;
    }

    bool end(std::string_view name) {
        const std::optional<Tag> found = tag();
        return found && found->isEnd && found->name == name;
    }

    std::optional<std::string> character() {
        const auto name = until(";");
        if (!name) {
            return std::nullopt;
        }
        for (const Entity& entity : kEntities) {
            if (entity.name.substr(1, entity.name.size() - 2) == *name) {
                return std::string{entity.character};
            }
        }
        if (!name->starts_with('#')) {
            return std::nullopt;
        }
        const bool isHex = name->starts_with("#x");
        const std::string_view digits = name->substr(isHex ? 2 : 1);
        std::uint32_t code = 0;
        const char* const last = digits.data() + digits.size();
        const auto parsed = std::from_chars(digits.data(), last, code, isHex ? 16 : 10);
        const std::string text = encoded(code);
        const bool isNumber = parsed.ec == std::errc{} && parsed.ptr == last;
        return isNumber && !text.empty() ? std::optional{text} : std::nullopt;
    }

    /// The text up to the end tag of this name.
    std::optional<std::string> text(std::string_view name) {
        std::string result;
        while (!rest_.empty()) {
            if (take("&")) {
                const auto found = character();
                if (!found) {
                    return std::nullopt;
                }
                result += *found;
            } else if (take("<![CDATA[")) {
                const auto found = until("]]>");
                if (!found) {
                    return std::nullopt;
                }
                result += *found;
            } else if (take("<!--")) {
                if (!until("-->")) {
                    return std::nullopt;
                }
            } else if (rest_.starts_with('<')) {
                return end(name) ? std::optional{result} : std::nullopt;
            } else {
                result += rest_.front();
                rest_.remove_prefix(1);
            }
        }
        return std::nullopt;
    }

    std::optional<PropertyList> value(int depth) {
        const std::optional<Tag> found = tag();
        return found && !found->isEnd ? value(*found, depth) : std::nullopt;
    }

    std::optional<PropertyList> value(const Tag& tag, int depth) {
        constexpr int kMostLevels = 32;
        if (depth > kMostLevels) {
            return std::nullopt;
        }
        if (tag.name == "array") {
            return tag.isEmpty ? PropertyList{PropertyList::Array{}} : array(depth);
        }
        if (tag.name == "dict") {
            return tag.isEmpty ? PropertyList{PropertyList::Dictionary{}} : dictionary(depth);
        }
        const auto content = tag.isEmpty ? std::optional{std::string{}} : text(tag.name);
        if (!content) {
            return std::nullopt;
        }
        if (tag.name == "string") {
            return PropertyList{*content};
        }
        return tag.name == "integer" ? integer(*content) : PropertyList{};
    }

    static std::optional<PropertyList> integer(std::string_view text) {
        text.remove_prefix(std::min(text.find_first_not_of(kSpaces), text.size()));
        text = text.substr(0, text.find_last_not_of(kSpaces) + 1);
        std::int64_t number = 0;
        const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
        const bool isNumber = parsed.ec == std::errc{} && parsed.ptr == text.data() + text.size();
        return isNumber ? std::optional{PropertyList{number}} : std::nullopt;
    }

    std::optional<PropertyList> array(int depth) {
        PropertyList::Array items;
        while (const std::optional<Tag> next = tag()) {
            if (next->isEnd) {
                return next->name == "array" ? std::optional{PropertyList{std::move(items)}}
                                             : std::nullopt;
            }
            auto item = value(*next, depth + 1);
            if (!item) {
                return std::nullopt;
            }
            items.push_back(*std::move(item));
        }
        return std::nullopt;
    }

    std::optional<PropertyList> dictionary(int depth) {
        PropertyList::Dictionary items;
        while (const std::optional<Tag> next = tag()) {
            if (next->isEnd) {
                return next->name == "dict" ? std::optional{PropertyList{std::move(items)}}
                                            : std::nullopt;
            }
            const bool isKey = next->name == "key";
            auto key = isKey && !next->isEmpty ? text("key") : std::optional{std::string{}};
            auto item = isKey && key ? value(depth + 1) : std::nullopt;
            if (!item) {
                return std::nullopt;
            }
            items.emplace_back(*std::move(key), *std::move(item));
        }
        return std::nullopt;
    }

    std::string_view rest_;
};

}  // namespace

bool PropertyList::operator==(const PropertyList& other) const {
    return value == other.value;
}

const PropertyList* PropertyList::find(std::string_view key) const {
    const auto* const dictionary = std::get_if<Dictionary>(&value);
    if (dictionary == nullptr) {
        return nullptr;
    }
    const auto item = std::ranges::find(*dictionary, key, &Entry::key);
    return item != dictionary->end() ? &item->value : nullptr;
}

std::string PropertyList::xml() const {
    // The identifier is a name; nobody fetches what lies there.
    std::string xml =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
        "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
        "<plist version=\"1.0\">\n";
    write(*this, "", xml);
    return xml + "</plist>\n";
}

std::optional<PropertyList> PropertyList::parse(std::string_view xml) {
    return Reader{xml}.document();
}

}  // namespace Brimlo::Platform
