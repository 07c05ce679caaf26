#pragma once

#include "BrimloApp/Overview/VolumeFigures.h"
#include "BrimloCore/Support/VolumeInfo.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <optional>

namespace Brimlo {

/// How full the disk is, what the Trash holds, and what the system lets the program see. Main
/// thread; the Trash is measured in the background.
class Machine : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    Q_PROPERTY(Brimlo::VolumeFigures volume READ volumeFigures NOTIFY volumeChanged)
    Q_PROPERTY(double trashBytes READ trashBytes NOTIFY trashBytesChanged)
    Q_PROPERTY(bool hasFullDiskAccess READ hasFullDiskAccess NOTIFY hasFullDiskAccessChanged)

public:
    Machine();

    /// Reads the volume and the access anew, and measures the Trash.
    Q_INVOKABLE void refresh();
    /// Opens the page of the system's settings on access to the disk, where there is one.
    Q_INVOKABLE void openPrivacySettings();

    /// The volume of the home folder; nullopt when the system doesn't tell.
    [[nodiscard]] const std::optional<VolumeInfo::Snapshot>& volume() const { return volume_; }
    void setVolume(std::optional<VolumeInfo::Snapshot> volume);
    [[nodiscard]] VolumeFigures volumeFigures() const { return VolumeFigures::of(volume_); }

    /// Whether the folders that the system hides from applications can be read.
    [[nodiscard]] bool hasFullDiskAccess() const { return hasFullDiskAccess_; }
    void setFullDiskAccess(bool hasAccess);

    /// The size of the Trash as last measured.
    [[nodiscard]] double trashBytes() const { return static_cast<double>(trashBytes_); }
    void setTrashBytes(std::int64_t bytes);
    [[nodiscard]] bool isMeasuring() const { return measuring_ != Measuring::none; }

Q_SIGNALS:
    void volumeChanged();
    void hasFullDiskAccessChanged();
    void trashBytesChanged();

private:
    void measureTrash();

    std::optional<VolumeInfo::Snapshot> volume_;
    bool hasFullDiskAccess_ = false;
    std::int64_t trashBytes_ = 0;
    enum class Measuring { none, runs, runsAndIsToFollow };
    Measuring measuring_ = Measuring::none;
};

}  // namespace Brimlo
