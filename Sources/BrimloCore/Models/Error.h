#pragma once

#include <string>

namespace Brimlo {

/// The domain of the errors that the program itself defines.
inline constexpr const char* kErrorDomain = "Brimlo";

/// The domain of the errors of the operating system; their code is `errno`.
inline constexpr const char* kSystemErrorDomain = "POSIX";

/// Why a whole operation failed, in words for the user.
struct Error {
    std::string domain;
    int code = 0;
    std::string description;  ///< Readable as it stands, without a path in front.

    bool operator==(const Error&) const = default;

    /// The system's own words for `code`, an `errno` value.
    [[nodiscard]] static Error fromSystem(int code);
};

}  // namespace Brimlo
