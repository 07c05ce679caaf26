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
bool AppModel::checkFullDiskAccess() {
    return Platform::canReadProtectedFolders();
}

void AppModel::refreshVolume() {
    assign(volume_, VolumeInfo::ofHome(), &AppModel::volumeChanged);
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

bool AppModel::readConfig() {
    const auto read = AppConfig::read();
    assign(config_, read.value_or(AppConfig{}), &AppModel::configChanged);
    const QString fault = read ? QString{} : QString::fromStdString(read.error().description + ".");
    if (std::exchange(configFault_, fault) != fault && !fault.isEmpty()) {
        setBanner(fault);
    }
    return read.has_value();
}

bool AppModel::changeConfig(const std::function<void(AppConfig&)>& body) {
    const auto changed = AppConfig::change(body);
    readConfig();
    if (!changed) {
        setBanner(QString::fromStdString(changed.error().description + "."));
    }
    return changed.has_value();
}

void AppModel::setAutoCleanEnabled(const bool enabled) {
    changeConfig([enabled](AppConfig& config) { config.autoCleanEnabled = enabled; });
}

void AppModel::setFreeSpaceThresholdGB(const int gigabytes) {
    changeConfig([gigabytes](AppConfig& config) { config.freeSpaceThresholdGB = gigabytes; });
}

void AppModel::setStaleDays(const int days) {
    changeConfig([days](AppConfig& config) { config.staleDays = days; });
}

void AppModel::setTrashRetentionDays(const int days) {
    changeConfig([days](AppConfig& config) { config.trashRetentionDays = days; });
}

void AppModel::setAutoCleanIncludesCustomRules(const bool include) {
    changeConfig([include](AppConfig& config) { config.autoCleanIncludesCustomRules = include; });
}

}  // namespace Brimlo
