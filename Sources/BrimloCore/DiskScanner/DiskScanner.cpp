#include "BrimloCore/DiskScanner/DiskScanner.h"

#include "BrimloCore/DiskScanner/TreeScan.h"
#include "BrimloCore/Platform/EntryStatus.h"

#include <utility>

namespace Brimlo {

DiskScanner::DiskScanner(std::shared_ptr<ScanControl> control, const ScanOptions& options)
    : control_{std::move(control)}
    , options_{options} {}

std::shared_ptr<FileNode> DiskScanner::scan(const std::string& root) {
    const auto status = Platform::entryStatus(root.c_str());
    return status ? TreeScan{*control_, options_, linkedFiles_}.run(root, *status) : nullptr;
}

}  // namespace Brimlo
