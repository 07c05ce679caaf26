#include "BrimloCore/Models/Confidence.h"

#include <algorithm>
#include <cstddef>

namespace Brimlo {

namespace {

struct Words {
    std::string_view rawValue;
    std::string_view label;
};

constexpr std::array<Words, 4> kWords{
    {
     {"verified-local", "Verified on a real Mac"},
     {"documented", "Vendor documented"},
     {"community", "Community reported"},
     {"unverified", "Unverified"},
     }
};

const Words& words(Confidence confidence) {
    return kWords[static_cast<std::size_t>(confidence)];
}

}  // namespace

std::string_view rawValue(Confidence confidence) {
    return words(confidence).rawValue;
}

std::string_view label(Confidence confidence) {
    return words(confidence).label;
}

bool isSupported(Confidence confidence) {
    return confidence <= Confidence::documented;
}

std::optional<Confidence> confidenceFromRawValue(std::string_view text) {
    const auto* found = std::ranges::find(
        kAllConfidences, text, [](Confidence confidence) { return rawValue(confidence); });
    if (found == kAllConfidences.end()) {
        return std::nullopt;
    }
    return *found;
}

}  // namespace Brimlo
