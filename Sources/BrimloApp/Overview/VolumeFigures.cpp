#include "BrimloApp/Overview/VolumeFigures.h"

namespace Brimlo {

VolumeFigures VolumeFigures::of(const std::optional<VolumeInfo::Snapshot>& snapshot) {
    if (!snapshot || snapshot->total <= 0) {
        return {};
    }
    VolumeFigures figures;
    figures.isKnown = true;
    figures.isSystem = snapshot->isSystem;
    figures.total = static_cast<double>(snapshot->total);
    figures.available = static_cast<double>(snapshot->available);
    figures.used = static_cast<double>(snapshot->used());
    const auto purgeable = static_cast<double>(snapshot->purgeable());
    figures.takenShare = (figures.used - purgeable) / figures.total;
    figures.purgeableShare = purgeable / figures.total;
    figures.freeShare = figures.available / figures.total;
    return figures;
}

}  // namespace Brimlo
