#pragma once

#include "BrimloCore/Support/VolumeInfo.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace Brimlo {

/// How full a volume is, for the screens: bytes, and shares of the whole from 0 to 1.
class VolumeFigures {
    Q_GADGET
    QML_VALUE_TYPE(volumeFigures)

    Q_PROPERTY(bool isKnown MEMBER isKnown)
    Q_PROPERTY(bool isSystem MEMBER isSystem)
    Q_PROPERTY(double total MEMBER total)
    Q_PROPERTY(double available MEMBER available)
    Q_PROPERTY(double used MEMBER used)
    Q_PROPERTY(double takenShare MEMBER takenShare)
    Q_PROPERTY(double purgeableShare MEMBER purgeableShare)
    Q_PROPERTY(double freeShare MEMBER freeShare)

public:
    [[nodiscard]] static VolumeFigures of(const std::optional<VolumeInfo::Snapshot>& snapshot);

    bool isKnown = false;
    bool isSystem = true;  ///< Whether the system lies on it too.
    double total = 0;
    double available = 0;
    double used = 0;            ///< With what the system could free by itself.
    double takenShare = 0;      ///< Used and not purgeable.
    double purgeableShare = 0;  ///< What the system could free by itself.
    double freeShare = 0;       ///< Together with the other two shares 1.
};

}  // namespace Brimlo
