#include "BrimloCore/Support/Collation.h"

#include <cstddef>
#include <cstdint>
#include <memory>

#include <unicode/coll.h>
#include <unicode/unistr.h>

namespace Brimlo::Collation {

std::vector<std::string> keys(const std::vector<std::string_view>& names) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::Collator> collator{icu::Collator::createInstance(status)};
    if (U_FAILURE(status)) {
        // Without the language's data the order of the bytes is the best there is.
        return {names.begin(), names.end()};
    }
    // Accents count, letter case does not.
    collator->setStrength(icu::Collator::SECONDARY);
    std::vector<std::string> keys;
    keys.reserve(names.size());
    std::vector<std::uint8_t> buffer(256);
    for (const std::string_view name : names) {
        const auto text =
            icu::UnicodeString::fromUTF8({name.data(), static_cast<std::int32_t>(name.size())});
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

}  // namespace Brimlo::Collation
