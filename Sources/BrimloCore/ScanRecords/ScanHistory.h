#pragma once

#include "BrimloCore/Models/Error.h"
#include "BrimloCore/ScanRecords/ScanRecord.h"

#include <chrono>
#include <cstddef>
#include <expected>
#include <optional>
#include <string>
#include <vector>

/// The records of earlier scans, files in the support folder that the user alone can read. Any
/// thread.
namespace Brimlo::ScanHistory {

/// So many records of one folder are kept, and so many in all.
inline constexpr std::size_t kMostOfOneRoot = 12;
inline constexpr std::size_t kMost = 240;

/// Keeps a record, unless the settings say otherwise or can't be read.
///
/// Of a folder with more than `kMostOfOneRoot` records the newest and the oldest stay; of the
/// others goes the one whose neighbours lie closest together for their age, so that the records
/// become rarer the older they are. Beyond `kMost` the oldest go.
[[nodiscard]] std::expected<void, Error> remember(const ScanRecord& record);

/// An earlier scan.
struct Found {
    std::optional<ScanRecord> record;
    std::vector<std::string> refused;  ///< Why newer ones were passed over, a sentence each.
};

/// The newest record of a folder, as `ScanRecord::root` spells it, that is not younger than
/// `latest`.
[[nodiscard]] Found newest(
    const std::string& root, std::optional<std::chrono::sys_seconds> latest = std::nullopt);

/// Removes all records.
[[nodiscard]] std::expected<void, Error> forget();

}  // namespace Brimlo::ScanHistory
