#include "BrimloApp/AppModel/AppModel.h"
#include "BrimloApp/AppModel/RunInBackground.h"
#include "BrimloCore/Platform/Privacy.h"

#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>

#include <algorithm>
#include <limits>
#include <utility>

// What most screens read: how full the disk is, what the Trash holds, what the system lets the
// program see, and the settings.

namespace Brimlo {
namespace {

/// A settings file may hold any number; the controls of the screens count in int.
int shown(const std::int64_t number) {
    return static_cast<int>(std::clamp<std::int64_t>(
        number, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

}  // namespace

bool AppModel::checkFullDiskAccess() {
    return Platform::canReadProtectedFolders();
}

void AppModel::refreshVolume() {
    assign(volume_, VolumeInfo::snapshot("/"), &AppModel::volumeChanged);
    assign(hasFullDiskAccess_, checkFullDiskAccess(), &AppModel::hasFullDiskAccessChanged);
    measureTrash();
}

void AppModel::measureTrash() {
    // What has changed since the running one began is for one more to see, and one is enough.
    if (trashMeasuring_ != TrashMeasuring::none) {
        trashMeasuring_ = TrashMeasuring::runsAndIsToFollow;
        return;
    }
    trashMeasuring_ = TrashMeasuring::runs;
    runInBackground(
        this,
        [] { return Cleaner::trashSize(); },
        [](AppModel& model, const std::int64_t bytes) {
            const auto was = std::exchange(model.trashMeasuring_, TrashMeasuring::none);
            if (was == TrashMeasuring::runsAndIsToFollow) {
                model.measureTrash();
                return;  // These bytes may be older than what asked for the next ones.
            }
            model.assign(model.trashBytes_, bytes, &AppModel::trashBytesChanged);
        });
}

void AppModel::openPrivacySettings() {
    const std::string address = Platform::privacySettingsAddress();
    if (!address.empty()) {
        QDesktopServices::openUrl(QUrl{QString::fromStdString(address)});
    }
}

VolumeFigures AppModel::volumeFigures() const {
    return VolumeFigures::of(volume_);
}

void AppModel::setConfig(const AppConfig& config) {
    config.save();
    assign(config_, config, &AppModel::configChanged);
}

void AppModel::setAutoCleanEnabled(const bool enabled) {
    AppConfig config = config_;
    config.autoCleanEnabled = enabled;
    setConfig(config);
}

int AppModel::freeSpaceThresholdGB() const {
    return shown(config_.freeSpaceThresholdGB);
}

void AppModel::setFreeSpaceThresholdGB(const int gigabytes) {
    AppConfig config = config_;
    config.freeSpaceThresholdGB = gigabytes;
    setConfig(config);
}

int AppModel::staleDays() const {
    return shown(config_.staleDays);
}

void AppModel::setStaleDays(const int days) {
    AppConfig config = config_;
    config.staleDays = days;
    setConfig(config);
}

int AppModel::trashRetentionDays() const {
    return shown(config_.trashRetentionDays);
}

void AppModel::setTrashRetentionDays(const int days) {
    AppConfig config = config_;
    config.trashRetentionDays = days;
    setConfig(config);
}

}  // namespace Brimlo
