#include "BrimloCore/Platform/Volume.h"

#include "BrimloCore/Platform/macOS/Cocoa.h"

namespace Brimlo::Platform {

namespace {

std::optional<std::int64_t> bytes(
    NSDictionary<NSURLResourceKey, id>* values, NSURLResourceKey key) {
    const id value = values[key];
    if (![value isKindOfClass:[NSNumber class]]) {
        return std::nullopt;
    }
    return static_cast<NSNumber*>(value).longLongValue;
}

}  // namespace

std::optional<VolumeCapacity> volumeCapacity(const std::string& path) {
    @autoreleasepool {
        NSArray<NSURLResourceKey>* const keys = @[
            NSURLVolumeTotalCapacityKey,
            NSURLVolumeAvailableCapacityKey,
            NSURLVolumeAvailableCapacityForImportantUsageKey,
        ];
        NSDictionary<NSURLResourceKey, id>* const values =
            [fileUrl(path, YES) resourceValuesForKeys:keys error:nil];
        const auto total = bytes(values, NSURLVolumeTotalCapacityKey);
        const auto available = bytes(values, NSURLVolumeAvailableCapacityKey);
        if (!total || !available) {
            return std::nullopt;
        }
        return VolumeCapacity{
            .total = *total,
            .available = *available,
            .availableForImportantUsage =
                bytes(values, NSURLVolumeAvailableCapacityForImportantUsageKey),
        };
    }
}

// F_FULLFSYNC works on one file, and sync(2) does not wait.
bool syncVolume(const std::string& /*folder*/) {
    return false;
}

/// macOS mounts only whole volumes, each in one place.
struct OtherNames::Mounts {};

OtherNames::OtherNames() = default;

std::vector<std::string> OtherNames::of(std::string_view /*path*/) const {
    static_cast<void>(mounts_);
    return {};
}

}  // namespace Brimlo::Platform
