#pragma once

#include <string>

namespace Brimlo {

/// The domain of the program's own errors.
inline constexpr const char* kErrorDomain = "Brimlo";

/// The domain of the operating system's errors; their code is `errno`.
inline constexpr const char* kSystemErrorDomain = "POSIX";

/// Why an operation failed, in words for the user.
struct Error {
    std::string domain;
    int code = 0;
    std::string description;  ///< A complete phrase, without a path in front.

    bool operator==(const Error&) const = default;

    /// The system's message for `code`, an `errno` value. In English whatever the process's locale,
    /// since it stands in English sentences.
    [[nodiscard]] static Error fromSystem(int code);
};

}  // namespace Brimlo
