#include "BrimloApp/Overview/Machine.h"

#include "BrimloApp/Shell/RunInBackground.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Platform/Privacy.h"

#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>

#include <utility>

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
    figures.hasPurgeable = snapshot->availableIncludingPurgeable.has_value();
    const auto purgeable = static_cast<double>(snapshot->purgeable());
    figures.takenShare = (figures.used - purgeable) / figures.total;
    figures.purgeableShare = purgeable / figures.total;
    figures.freeShare = figures.available / figures.total;
    return figures;
}

Machine::Machine()
    : volume_{VolumeInfo::ofHome()}
    , hasFullDiskAccess_{Platform::canReadProtectedFolders()} {}

void Machine::refresh() {
    setVolume(VolumeInfo::ofHome());
    setFullDiskAccess(Platform::canReadProtectedFolders());
    measureTrash();
}

void Machine::measureTrash() {
    // Changes since the measurement began need one more, and one is enough.
    if (isMeasuring()) {
        measuring_ = Measuring::runsAndIsToFollow;
        return;
    }
    measuring_ = Measuring::runs;
    runInBackground(
        this,
        [] { return Cleaner::trashSize(); },
        [](Machine& machine, std::int64_t bytes) {
            const auto was = std::exchange(machine.measuring_, Measuring::none);
            if (was == Measuring::runsAndIsToFollow) {
                machine.measureTrash();
                return;  // This result may be older than the last request.
            }
            machine.setTrashBytes(bytes);
        });
}

void Machine::openPrivacySettings() {
    const std::string address = Platform::privacySettingsAddress();
    if (!address.empty()) {
        QDesktopServices::openUrl(QUrl{QString::fromStdString(address)});
    }
}

void Machine::setVolume(std::optional<VolumeInfo::Snapshot> volume) {
    assign(*this, volume_, volume, &Machine::volumeChanged);
}

void Machine::setFullDiskAccess(bool hasAccess) {
    assign(*this, hasFullDiskAccess_, hasAccess, &Machine::hasFullDiskAccessChanged);
}

void Machine::setTrashBytes(std::int64_t bytes) {
    assign(*this, trashBytes_, bytes, &Machine::trashBytesChanged);
}

}  // namespace Brimlo
