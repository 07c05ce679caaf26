#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <memory>

#include <unicode/brkiter.h>
#include <unicode/coll.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

namespace Brimlo::Text {

namespace {

bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<signed char>(c) >= 0; });
}

icu::UnicodeString toUnicode(std::string_view text) {
    return icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
}

std::string toUtf8(const icu::UnicodeString& text) {
    std::string bytes;
    text.toUTF8String(bytes);
    return bytes;
}

std::string loweredAscii(std::string_view text) {
    std::string result{text};
    for (char& c : result) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return result;
}

icu::UnicodeString decompose(const icu::UnicodeString& text) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* form = icu::Normalizer2::getNFDInstance(status);
    // The data of this form is compiled into the library, so it can't be missing.
    assert(U_SUCCESS(status));
    return form->normalize(text, status);
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"  // The library's macro narrows.
/// The code point at `index`, which is advanced; negative for ill-formed bytes.
UChar32 nextCodePoint(std::string_view text, std::int32_t& index) {
    UChar32 codePoint = 0;
    const auto length = static_cast<std::int32_t>(text.size());
    U8_NEXT(text.data(), index, length, codePoint);  // NOLINT: the library's macro
    return codePoint;
}
#pragma GCC diagnostic pop

/// Calls `visit` with the end offset of each user-perceived character.
template <typename Visit>
void forEachBoundary(std::string_view text, Visit visit) {
    UErrorCode status = U_ZERO_ERROR;
    // Creating an iterator costs far more than using it, so each thread keeps one.
    thread_local const std::unique_ptr<icu::BreakIterator> iterator{
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status)};
    UText source = UTEXT_INITIALIZER;
    utext_openUTF8(&source, text.data(), static_cast<std::int64_t>(text.size()), &status);
    assert(U_SUCCESS(status) && iterator);
    iterator->setText(&source, status);
    iterator->first();
    for (std::int32_t end = iterator->next(); end != icu::BreakIterator::DONE;
         end = iterator->next()) {
        visit(static_cast<std::size_t>(end));
    }
    utext_close(&source);
}

/// The text without any of the characters of `space` at both ends.
std::string_view without(std::string_view space, std::string_view text) {
    const std::size_t start = text.find_first_not_of(space);
    if (start == std::string_view::npos) {
        return {};
    }
    return text.substr(start, text.find_last_not_of(space) - start + 1);
}

}  // namespace

bool isValid(std::string_view text) {
    if (isAscii(text)) {
        return true;
    }
    const auto length = static_cast<std::int32_t>(text.size());
    std::int32_t index = 0;
    while (index < length) {
        if (nextCodePoint(text, index) < 0) {
            return false;
        }
    }
    return true;
}

std::string decomposed(std::string_view text) {
    return isAscii(text) ? std::string{text} : toUtf8(decompose(toUnicode(text)));
}

std::string folded(std::string_view text) {
    if (isAscii(text)) {
        return loweredAscii(text);
    }
    return toUtf8(decompose(toUnicode(text).toLower(icu::Locale::getRoot())));
}

std::string lowercased(std::string_view text) {
    if (isAscii(text)) {
        return loweredAscii(text);
    }
    return toUtf8(toUnicode(text).toLower(icu::Locale::getRoot()));
}

std::vector<std::string_view> characters(std::string_view text) {
    std::vector<std::string_view> result;
    std::size_t start = 0;
    forEachBoundary(text, [&](std::size_t end) {
        result.push_back(text.substr(start, end - start));
        start = end;
    });
    return result;
}

std::size_t characterCount(std::string_view text) {
    // In ASCII only CR LF is one character.
    if (isAscii(text) && !text.contains('\r')) {
        return text.size();
    }
    std::size_t count = 0;
    forEachBoundary(text, [&](std::size_t) { ++count; });
    return count;
}

std::string_view trimmed(std::string_view text) {
    return without(" \t", text);
}

std::string_view stripped(std::string_view text) {
    return without(" \t\n\v\f\r", text);
}

std::string repaired(std::string_view text) {
    return isAscii(text) ? std::string{text} : toUtf8(toUnicode(text));
}

std::string printable(std::string_view text) {
    const auto length = static_cast<std::int32_t>(text.size());
    std::string result;
    result.reserve(text.size());
    std::int32_t index = 0;
    while (index < length) {
        const auto start = static_cast<std::size_t>(index);
        const UChar32 codePoint = nextCodePoint(text, index);
        if (codePoint < 0 || u_iscntrl(codePoint) != 0) {
            result += "\uFFFD";
        } else {
            result += text.substr(start, static_cast<std::size_t>(index) - start);
        }
    }
    return result;
}

std::vector<std::string> collationKeys(const std::vector<std::string_view>& names) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::Collator> collator{icu::Collator::createInstance(status)};
    if (U_FAILURE(status)) {
        // Without data of any language, byte order is all there is.
        return {names.begin(), names.end()};
    }
    // Accents count, letter case does not.
    collator->setStrength(icu::Collator::SECONDARY);
    std::vector<std::string> keys;
    keys.reserve(names.size());
    std::vector<std::uint8_t> buffer(256);
    for (const std::string_view name : names) {
        const icu::UnicodeString text = toUnicode(name);
        const auto fill = [&] {
            return static_cast<std::size_t>(collator->getSortKey(
                text, buffer.data(), static_cast<std::int32_t>(buffer.size())));
        };
        std::size_t length = fill();
        if (length > buffer.size()) {
            buffer.resize(length);
            length = fill();
        }
        keys.emplace_back(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(length));
    }
    return keys;
}

}  // namespace Brimlo::Text
