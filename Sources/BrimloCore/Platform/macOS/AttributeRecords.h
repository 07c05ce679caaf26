#pragma once

#include "BrimloCore/Platform/DirectoryReader.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

/// The records in which getattrlistbulk(2) tells the entries of a directory. Plain text work: no
/// call of the system.
namespace Brimlo::Platform::AttributeRecords {

/// The attributes to ask for, as the fields of an `attrlist` of the same names. The layout that
/// `read` knows is that of these and of no others, with `FSOPT_PACK_INVAL_ATTRS`.
struct Request {
    std::uint32_t commonattr;
    std::uint32_t fileattr;
};

[[nodiscard]] Request request(EntryDetail detail);

/// Hands out the entries of the `count` records at the start of `buffer`. False when a record is
/// not what the kernel would write: then the ones from there on are left out. An entry without a
/// name that can be used is left out, too.
[[nodiscard]] bool read(
    std::span<const std::byte> buffer,
    std::size_t count,
    const std::function<void(const DirectoryEntry&)>& visit);

}  // namespace Brimlo::Platform::AttributeRecords
