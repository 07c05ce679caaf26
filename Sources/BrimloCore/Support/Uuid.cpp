#include "BrimloCore/Support/Uuid.h"

#include <algorithm>
#include <charconv>
#include <cstddef>

#include <boost/uuid/random_generator.hpp>

namespace Brimlo {

namespace {

constexpr std::size_t kTextLength = 36;

bool isHyphenPlace(std::size_t position) {
    return position == 8 || position == 13 || position == 18 || position == 23;
}

}  // namespace

Uuid Uuid::random() {
    // A scan makes hundreds of thousands. Asking the system for each would take as long as the
    // walk.
    static thread_local boost::uuids::random_generator_mt19937 generator;
    const boost::uuids::uuid made = generator();
    Uuid id;
    std::ranges::copy(made, id.bytes.begin());
    return id;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    if (text.size() != kTextLength) {
        return std::nullopt;
    }
    Uuid id;
    std::size_t position = 0;
    for (std::uint8_t& byte : id.bytes) {
        if (isHyphenPlace(position)) {
            if (text[position] != '-') {
                return std::nullopt;
            }
            ++position;
        }
        const char* digits = text.data() + position;
        if (std::from_chars(digits, digits + 2, byte, 16).ptr != digits + 2) {
            return std::nullopt;
        }
        position += 2;
    }
    return id;
}

std::string Uuid::text() const {
    constexpr std::string_view kHex = "0123456789ABCDEF";
    std::string result;
    result.reserve(kTextLength);
    for (const std::uint8_t byte : bytes) {
        if (isHyphenPlace(result.size())) {
            result += '-';
        }
        result += kHex[byte >> 4U];
        result += kHex[byte & 0xFU];
    }
    return result;
}

}  // namespace Brimlo
