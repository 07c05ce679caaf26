#include "BrimloCore/Models/CleanupRule.h"

#include <algorithm>
#include <cstddef>

namespace Brimlo {

namespace {

struct Words {
    std::string_view rawValue;
    std::string_view label;
};

constexpr std::array<Words, kAllRisks.size()> kRisks{
    {{"safe", "Safe"}, {"rebuild", "Rebuilds"}, {"review", "Review"}}
};

constexpr std::array<Words, kAllPersonas.size()> kPersonas{
    {
     {"general", "Everyone"},
     {"developer", "Developers"},
     {"aiml", "AI & ML"},
     {"video", "Video"},
     {"music", "Music"},
     {"photo", "Photo & Design"},
     {"design3D", "3D & Motion"},
     {"gamedev", "Game dev"},
     {"engineering", "Engineering & CAD"},
     {"science", "Science & research"},
     {"office", "Office & business"},
     {"gaming", "Gaming"},
     }
};

constexpr std::array<std::string_view, kAllConfidences.size()> kConfidences{
    "verified-local", "documented", "community", "unverified"};

template <typename Attribute, std::size_t count>
std::optional<Attribute> withRawValue(
    std::string_view text, const std::array<Attribute, count>& all) {
    const auto* found = std::ranges::find(all, text, [](Attribute each) { return rawValue(each); });
    return found == all.end() ? std::nullopt : std::optional{*found};
}

}  // namespace

std::string_view rawValue(Risk risk) {
    return kRisks[static_cast<std::size_t>(risk)].rawValue;
}

std::string_view label(Risk risk) {
    return kRisks[static_cast<std::size_t>(risk)].label;
}

std::string_view rawValue(Persona persona) {
    return kPersonas[static_cast<std::size_t>(persona)].rawValue;
}

std::string_view label(Persona persona) {
    return kPersonas[static_cast<std::size_t>(persona)].label;
}

std::optional<Persona> personaFromRawValue(std::string_view text) {
    return withRawValue(text, kAllPersonas);
}

std::string_view rawValue(Confidence confidence) {
    return kConfidences[static_cast<std::size_t>(confidence)];
}

bool isSupported(Confidence confidence) {
    return confidence <= Confidence::documented;
}

std::optional<Confidence> confidenceFromRawValue(std::string_view text) {
    return withRawValue(text, kAllConfidences);
}

std::vector<Experiment> ofSystem(std::vector<Experiment> experiments, std::string_view system) {
    std::erase_if(experiments, [&](const Experiment& each) { return each.system != system; });
    return experiments;
}

}  // namespace Brimlo
