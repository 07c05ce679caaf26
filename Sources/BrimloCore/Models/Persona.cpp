#include "BrimloCore/Models/Persona.h"

#include <algorithm>
#include <cstddef>

namespace Brimlo {

namespace {

struct Words {
    std::string_view rawValue;
    std::string_view label;
    std::string_view symbol;
};

constexpr std::array<Words, 12> kWords{
    {
     {"general", "Everyone", "person.2"},
     {"developer", "Developers", "hammer"},
     {"aiml", "AI & ML", "brain"},
     {"video", "Video", "film"},
     {"music", "Music", "music.note"},
     {"photo", "Photo & Design", "camera"},
     {"design3D", "3D & Motion", "cube"},
     {"gamedev", "Game dev", "gamecontroller"},
     {"engineering", "Engineering & CAD", "ruler"},
     {"science", "Science & research", "flask"},
     {"office", "Office & business", "briefcase"},
     {"gaming", "Gaming", "gamecontroller.fill"},
     }
};
static_assert(kWords.size() == kAllPersonas.size());

const Words& words(Persona persona) {
    return kWords[static_cast<std::size_t>(persona)];
}

}  // namespace

std::string_view rawValue(Persona persona) {
    return words(persona).rawValue;
}

std::string_view label(Persona persona) {
    return words(persona).label;
}

std::string_view symbol(Persona persona) {
    return words(persona).symbol;
}

std::optional<Persona> personaFromRawValue(std::string_view text) {
    const auto* found =
        std::ranges::find(kAllPersonas, text, [](Persona persona) { return rawValue(persona); });
    if (found == kAllPersonas.end()) {
        return std::nullopt;
    }
    return *found;
}

}  // namespace Brimlo
