#include "BrimloCore/Platform/Fmt.h"

#include "BrimloCore/Platform/macOS/Cocoa.h"

namespace Brimlo::Fmt {

namespace {

/// One per thread: a formatter is expensive to create and not documented as thread-safe.
struct ByteFormatter {
    NSByteCountFormatter* formatter = [[NSByteCountFormatter alloc] init];

    ByteFormatter() {
        formatter.countStyle = NSByteCountFormatterCountStyleFile;
        formatter.allowsNonnumericFormatting = NO;  // Else 0 is "Zero KB".
    }
};

}  // namespace

std::string bytes(std::int64_t count) {
    @autoreleasepool {
        thread_local const ByteFormatter own;
        return Platform::text([own.formatter stringFromByteCount:count]);
    }
}

}  // namespace Brimlo::Fmt
