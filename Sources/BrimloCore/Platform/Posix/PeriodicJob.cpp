#include "BrimloCore/Platform/PeriodicJob.h"

#include <algorithm>

namespace Brimlo::Platform {
namespace {

bool isControl(unsigned char byte) {
    constexpr unsigned char kDelete = 0x7f;
    return byte < ' ' || byte == kDelete;
}

bool isUnfit(const std::string& text) {
    return std::ranges::any_of(text, isControl);
}

}  // namespace

std::expected<void, Error> PeriodicJob::checkFit(const Settings& settings) {
    if (std::ranges::any_of(settings.arguments, isUnfit) || isUnfit(settings.log)) {
        constexpr int kCode = 21;
        return std::unexpected(Error{
            .domain = kErrorDomain,
            .code = kCode,
            .description = "A path holds a line break or another control character",
        });
    }
    return {};
}

}  // namespace Brimlo::Platform
