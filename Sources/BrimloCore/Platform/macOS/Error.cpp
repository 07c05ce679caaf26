#include "BrimloCore/Models/Error.h"

#include <system_error>

namespace Brimlo {

Error Error::fromSystem(int code) {
    // macOS has these messages in English only.
    return {
        .domain = kSystemErrorDomain,
        .code = code,
        .description = std::generic_category().message(code),
    };
}

}  // namespace Brimlo
