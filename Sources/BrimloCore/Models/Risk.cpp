#include "BrimloCore/Models/Risk.h"

#include <cstddef>

namespace Brimlo {

namespace {

struct Words {
    std::string_view rawValue;
    std::string_view label;
    std::string_view explanation;
};

constexpr std::array<Words, 3> kWords{
    {
     {"safe", "Safe", "Regenerated automatically; at worst the next launch is slightly slower."},
     {"rebuild",
         "Rebuilds",
         "Regenerable, but costs time or bandwidth (re-download, full rebuild)."},
     {"review",
         "Review",
         "May contain data you created or cannot easily recreate. Decide manually."},
     }
};

const Words& words(Risk risk) {
    return kWords[static_cast<std::size_t>(risk)];
}

}  // namespace

std::string_view rawValue(Risk risk) {
    return words(risk).rawValue;
}

std::string_view label(Risk risk) {
    return words(risk).label;
}

std::string_view explanation(Risk risk) {
    return words(risk).explanation;
}

}  // namespace Brimlo
