#include "BrimloCore/Platform/macOS/Cocoa.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <tuple>

namespace Brimlo::Platform {

namespace {

TEST(CocoaErrorTest, SaysItInTheSystemsNumbersWhereThereAreSome) {
    const std::string cocoa = "NSCocoaErrorDomain";
    const std::string posix = "NSPOSIXErrorDomain";
    const std::string other = "NSOSStatusErrorDomain";
    const std::string ours = kSystemErrorDomain;
    const std::tuple<std::string, long, std::string, int> cases[] = {
        {cocoa, 4,   ours,  ENOENT},
        {cocoa, 640, ours,  ENOSPC},
        {cocoa, 512, cocoa, 512   },
        {posix, 18,  ours,  18    },
        {posix, 516, ours,  516   },
        {other, 516, other, 516   },
    };
    for (const auto& [domain, code, resultDomain, resultCode] : cases) {
        const Error expected{.domain = resultDomain, .code = resultCode, .description = "W."};
        EXPECT_EQ(cocoaError(domain, code, "W."), expected) << domain << code;
    }
    EXPECT_EQ(cocoaError(cocoa, 640, ""), Error::fromSystem(ENOSPC)) << "without words";
    EXPECT_EQ(cocoaError(other, 1, "").description, "the system refused without a reason");
}

}  // namespace

}  // namespace Brimlo::Platform
