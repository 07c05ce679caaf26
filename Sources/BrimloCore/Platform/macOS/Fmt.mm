#include "BrimloCore/Platform/Fmt.h"

#include "BrimloCore/Platform/macOS/Cocoa.h"

namespace Brimlo::Fmt {

namespace {

/// One a thread: it is costly to make, and no formatter is said to serve several at once.
struct ByteFormatter {
    NSByteCountFormatter* formatter = [[NSByteCountFormatter alloc] init];

    ByteFormatter() {
        formatter.countStyle = NSByteCountFormatterCountStyleFile;
        formatter.allowsNonnumericFormatting = NO;  // Else nothing is "Zero KB".
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
