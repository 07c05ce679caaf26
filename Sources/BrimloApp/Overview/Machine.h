#pragma once

#include "BrimloCore/DiskScanner/FreedSpace.h"
#include "BrimloCore/Support/VolumeInfo.h"
#include "BrimloCore/SystemSpace/SystemSpace.h"

#include <QtCore/QObject>
#include <QtCore/QVariantList>
#include <QtQml/qqmlregistration.h>

#include <optional>
#include <vector>

namespace Brimlo {

/// How full a volume is, for the screens: bytes, and shares of the total from 0 to 1.
class VolumeFigures {
    Q_GADGET
    QML_VALUE_TYPE(volumeFigures)

    Q_PROPERTY(bool isKnown MEMBER isKnown)
    Q_PROPERTY(bool isSystem MEMBER isSystem)
    Q_PROPERTY(double total MEMBER total)
    Q_PROPERTY(double available MEMBER available)
    Q_PROPERTY(double used MEMBER used)
    Q_PROPERTY(double takenShare MEMBER takenShare)
    Q_PROPERTY(bool hasPurgeable MEMBER hasPurgeable)
    Q_PROPERTY(double purgeableShare MEMBER purgeableShare)
    Q_PROPERTY(double freeShare MEMBER freeShare)

public:
    [[nodiscard]] static VolumeFigures of(const std::optional<VolumeInfo::Snapshot>& snapshot);

    bool isKnown = false;
    bool isSystem = true;  ///< Whether it is also the system's volume.
    double total = 0;
    double available = 0;
    double used = 0;            ///< Includes purgeable space.
    bool hasPurgeable = false;  ///< Whether the system has such a thing.
    double takenShare = 0;      ///< Used without purgeable space.
    double purgeableShare = 0;  ///< Space that the system can free by itself.
    double freeShare = 0;       ///< The three shares add up to 1.
};

/// How full the disk is, the size of the Trash, what the system lets the program read and what it
/// keeps outside the user's files. Main thread; measures in the background.
class Machine : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    Q_PROPERTY(Brimlo::VolumeFigures volume READ volumeFigures NOTIFY volumeChanged)
    Q_PROPERTY(double trashBytes READ trashBytes NOTIFY trashChanged)
    Q_PROPERTY(QString trashFrees READ trashFrees NOTIFY trashChanged)
    Q_PROPERTY(bool hasFullDiskAccess READ hasFullDiskAccess NOTIFY hasFullDiskAccessChanged)
    // Whether the parts of the system are shown. They are measured whenever that begins.
    Q_PROPERTY(bool showsSystem READ showsSystem WRITE setShowsSystem NOTIFY systemChanged)
    Q_PROPERTY(bool isMeasuringSystem READ isMeasuringSystem NOTIFY systemChanged)
    // For each its `name`, `about`, `size`, `commands`, and whether it `isComplete`.
    Q_PROPERTY(QVariantList systemParts READ systemParts NOTIFY systemChanged)

public:
    Machine();

    /// Reads the volume and the access again, and measures the Trash.
    Q_INVOKABLE void refresh();
    /// Opens the page of the system's settings about disk access, if there is one.
    Q_INVOKABLE void openPrivacySettings();

    /// The volume of the home folder; nullopt if the system doesn't tell.
    [[nodiscard]] const std::optional<VolumeInfo::Snapshot>& volume() const { return volume_; }
    void setVolume(std::optional<VolumeInfo::Snapshot> volume);
    [[nodiscard]] VolumeFigures volumeFigures() const { return VolumeFigures::of(volume_); }

    /// Whether the folders that the system hides from applications are readable.
    [[nodiscard]] bool hasFullDiskAccess() const { return hasFullDiskAccess_; }
    void setFullDiskAccess(bool hasAccess);

    /// The size of the Trash as last measured.
    [[nodiscard]] double trashBytes() const { return static_cast<double>(trash_.size); }
    /// What emptying it frees, by the words of `FreedSpace`; empty where that is all of it.
    [[nodiscard]] QString trashFrees() const;
    void setTrash(SpaceUse use);
    [[nodiscard]] bool isMeasuring() const { return measuring_ != Measuring::none; }

    [[nodiscard]] bool showsSystem() const { return showsSystem_; }
    void setShowsSystem(bool shows);
    /// Shows the result of a measurement.
    void show(std::vector<SystemPart> parts);
    [[nodiscard]] bool isMeasuringSystem() const { return isMeasuringSystem_; }
    [[nodiscard]] QVariantList systemParts() const;
    /// Copies the commands of a part, one a line.
    Q_INVOKABLE void copySystemCommands(int part) const;

Q_SIGNALS:
    void volumeChanged();
    void hasFullDiskAccessChanged();
    void trashChanged();
    void systemChanged();

private:
    void measureTrash();

    std::optional<VolumeInfo::Snapshot> volume_;
    bool hasFullDiskAccess_ = false;
    SpaceUse trash_;
    enum class Measuring { none, runs, runsAndIsToFollow };
    Measuring measuring_ = Measuring::none;

    bool showsSystem_ = false;
    bool isMeasuringSystem_ = false;
    std::vector<SystemPart> systemParts_;
};

}  // namespace Brimlo
