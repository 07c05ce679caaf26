#include "BrimloApp/AppModel/Section.h"

#include <algorithm>
#include <cstddef>

namespace Brimlo {
namespace {

struct Words {
    std::string_view id;
    std::string_view title;
    std::string_view symbol;
};

constexpr std::array<Words, kAllSections.size()> kWords{
    {
     {"overview", "Overview", "gauge.with.dots.needle.67percent"},
     {"clean", "Smart Clean", "sparkles"},
     {"analyzer", "Space Analyzer", "chart.pie"},
     {"largeFiles", "Large Files", "doc.text.magnifyingglass"},
     {"rules", "Rules", "slider.horizontal.3"},
     {"duplicates", "Duplicates", "doc.on.doc"},
     {"history", "History", "clock.arrow.circlepath"},
     {"settings", "Settings", "gearshape"},
     }
};

const Words& words(const Section section) {
    return kWords.at(static_cast<std::size_t>(section));
}

}  // namespace

std::string_view id(const Section section) {
    return words(section).id;
}

std::string_view rawValue(const Section section) {
    return words(section).title;
}

std::string_view symbol(const Section section) {
    return words(section).symbol;
}

std::optional<Section> sectionFromID(const std::string_view text) {
    const auto found = std::ranges::find(kAllSections, text, [](Section each) { return id(each); });
    return found == kAllSections.end() ? std::nullopt : std::optional{*found};
}

}  // namespace Brimlo
