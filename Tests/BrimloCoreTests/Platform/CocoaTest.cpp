#include "BrimloCore/Platform/macOS/Cocoa.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace Brimlo::Platform {

namespace {

TEST(CocoaErrorTest, SaysItInTheSystemsNumbersWhereThereAreSome) {
    const std::string cocoa = "NSCocoaErrorDomain";
    const std::string posix = "NSPOSIXErrorDomain";
    const std::string other = "NSOSStatusErrorDomain";
    const std::string ours = kSystemErrorDomain;
    const struct {
        std::string domain;
        long code;
        std::string resultDomain;
        int resultCode;
    } cases[] = {
        {cocoa, 4,    ours,  ENOENT },
        {cocoa, 513,  ours,  EACCES },
        {cocoa, 516,  ours,  EEXIST },
        {cocoa, 640,  ours,  ENOSPC },
        {cocoa, 642,  ours,  EROFS  },
        {cocoa, 3328, ours,  ENOTSUP},
        {cocoa, 512,  cocoa, 512    },
        {posix, 18,   ours,  18     },
        {posix, 516,  ours,  516    },
        {other, 516,  other, 516    },
        {other, -120, other, -120   },
    };
    for (const auto& c : cases) {
        const Error expected{.domain = c.resultDomain, .code = c.resultCode, .description = "W."};
        EXPECT_EQ(cocoaError(c.domain, c.code, "W."), expected) << c.domain << c.code;
    }
    EXPECT_EQ(cocoaError(cocoa, 640, ""), Error::fromSystem(ENOSPC)) << "without words";
    EXPECT_EQ(cocoaError(other, 1, "").description, "the system refused without a reason");
}

}  // namespace

}  // namespace Brimlo::Platform
