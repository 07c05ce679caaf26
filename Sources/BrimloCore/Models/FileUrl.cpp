#include "BrimloCore/Models/FileUrl.h"

#include <charconv>
#include <cstddef>

namespace Brimlo::FileUrl {

namespace {

bool isPlain(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view("-._~/").contains(c);
}

}  // namespace

std::string fromPath(std::string_view path) {
    return "file://" + encodePath(path);
}

std::string encodePath(std::string_view path) {
    constexpr std::string_view kHex = "0123456789ABCDEF";
    std::string encoded;
    encoded.reserve(path.size());
    for (const char c : path) {
        if (isPlain(c)) {
            encoded += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            encoded += {'%', kHex[byte >> 4U], kHex[byte & 0xFU]};
        }
    }
    return encoded;
}

std::optional<std::string> decodePath(std::string_view encoded) {
    std::string path;
    path.reserve(encoded.size());
    for (std::size_t i = 0; i < encoded.size(); ++i) {
        if (encoded[i] != '%') {
            path += encoded[i];
            continue;
        }
        if (encoded.size() - i < 3) {
            return std::nullopt;
        }
        const char* digits = encoded.data() + i + 1;
        unsigned byte = 0;
        if (std::from_chars(digits, digits + 2, byte, 16).ptr != digits + 2) {
            return std::nullopt;
        }
        path += static_cast<char>(byte);
        i += 2;
    }
    return path;
}

}  // namespace Brimlo::FileUrl
