#include "BrimloApp/Overview/Machine.h"

#include "BrimloApp/Shell/Assign.h"
#include "BrimloApp/Shell/RunInBackground.h"
#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Platform/Privacy.h"

#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>

#include <utility>

namespace Brimlo {

Machine::Machine()
    : volume_{VolumeInfo::ofHome()}
    , hasFullDiskAccess_{Platform::canReadProtectedFolders()} {}

void Machine::refresh() {
    setVolume(VolumeInfo::ofHome());
    setFullDiskAccess(Platform::canReadProtectedFolders());
    measureTrash();
}

void Machine::measureTrash() {
    // What has changed since the running one began is for one more to see, and one is enough.
    if (isMeasuring()) {
        measuring_ = Measuring::runsAndIsToFollow;
        return;
    }
    measuring_ = Measuring::runs;
    runInBackground(
        this,
        [] { return Cleaner::trashSize(); },
        [](Machine& machine, const std::int64_t bytes) {
            const auto was = std::exchange(machine.measuring_, Measuring::none);
            if (was == Measuring::runsAndIsToFollow) {
                machine.measureTrash();
                return;  // These bytes may be older than what asked for the next ones.
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

void Machine::setFullDiskAccess(const bool hasAccess) {
    assign(*this, hasFullDiskAccess_, hasAccess, &Machine::hasFullDiskAccessChanged);
}

void Machine::setTrashBytes(const std::int64_t bytes) {
    assign(*this, trashBytes_, bytes, &Machine::trashBytesChanged);
}

}  // namespace Brimlo
