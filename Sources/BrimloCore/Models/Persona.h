#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace Brimlo {

/// The audience of a rule.
enum class Persona {
    general,
    developer,
    aiml,
    video,
    music,
    photo,
    design3D,
    gamedev,
    engineering,
    science,
    office,
    gaming,
};

inline constexpr std::array kAllPersonas{
    Persona::general,
    Persona::developer,
    Persona::aiml,
    Persona::video,
    Persona::music,
    Persona::photo,
    Persona::design3D,
    Persona::gamedev,
    Persona::engineering,
    Persona::science,
    Persona::office,
    Persona::gaming,
};

/// The audience's word in JSON and on the command line; also its id.
[[nodiscard]] std::string_view rawValue(Persona persona);

/// The audience's name for the screen.
[[nodiscard]] std::string_view label(Persona persona);

/// The identifier of the audience's icon.
[[nodiscard]] std::string_view symbol(Persona persona);

/// The audience with exactly this raw value, or nullopt.
[[nodiscard]] std::optional<Persona> personaFromRawValue(std::string_view text);

}  // namespace Brimlo
