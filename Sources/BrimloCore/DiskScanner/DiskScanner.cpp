#include "BrimloCore/DiskScanner/DiskScanner.h"

#include "BrimloCore/DiskScanner/TreeScan.h"
#include "BrimloCore/Support/Path.h"

#include <utility>

namespace Brimlo {

DiskScanner::DiskScanner(std::shared_ptr<ScanControl> control, const ScanOptions& options)
    : control_{std::move(control)}
    , options_{options} {}

std::shared_ptr<FileNode> DiskScanner::scan(const std::string& root) {
    if (!Path::isUsable(root)) {
        return nullptr;
    }
    return TreeScan{*control_, options_, linkedFiles_}.run(Path::standardized(root));
}

}  // namespace Brimlo
