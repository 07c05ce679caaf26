#pragma once

#include "BrimloCore/Platform/DirectoryEntry.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

/// The records in which getattrlistbulk(2) returns directory entries. Pure parsing, no system
/// calls.
namespace Brimlo::Platform::AttributeRecords {

/// The attributes to request, as fields of an `attrlist`. `read` knows the layout of exactly these,
/// with `FSOPT_PACK_INVAL_ATTRS`.
struct Request {
    std::uint32_t commonattr;
    std::uint32_t fileattr;
};

[[nodiscard]] Request request(EntryDetail detail);

/// Passes on the entries of the `count` records at the start of `buffer`. False at a malformed
/// record: it and the following ones are left out. An entry without a usable name is left out, too.
[[nodiscard]] bool read(
    std::span<const std::byte> buffer,
    std::size_t count,
    const std::function<void(const DirectoryEntry&)>& visit);

}  // namespace Brimlo::Platform::AttributeRecords
