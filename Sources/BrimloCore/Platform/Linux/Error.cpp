#include "BrimloCore/Models/Error.h"

#include <cstring>

namespace Brimlo {

Error Error::fromSystem(int code) {
    // Unlike strerror(), this is never translated.
    const char* words = strerrordesc_np(code);
    return {
        .domain = kSystemErrorDomain,
        .code = code,
        .description =
            words == nullptr ? "Unknown error " + std::to_string(code) : std::string{words},
    };
}

}  // namespace Brimlo
