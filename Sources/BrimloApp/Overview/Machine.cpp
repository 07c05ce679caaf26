#include "BrimloApp/Overview/Machine.h"

#include "BrimloApp/Shell/RunInBackground.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Platform/Privacy.h"

#include <QtCore/QUrl>
#include <QtGui/QClipboard>
#include <QtGui/QDesktopServices>
#include <QtGui/QGuiApplication>

#include <algorithm>
#include <cstddef>
#include <iterator>
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
        [] { return Cleaner::trashUse(); },
        [](Machine& machine, SpaceUse use) {
            const auto was = std::exchange(machine.measuring_, Measuring::none);
            if (was == Measuring::runsAndIsToFollow) {
                machine.measureTrash();
                return;  // This result may be older than the last request.
            }
            machine.setTrash(std::move(use));
        });
}

void Machine::openPrivacySettings() {
    const std::string address = Platform::privacySettingsAddress();
    if (!address.empty()) {
        QDesktopServices::openUrl(QUrl{QString::fromStdString(address)});
    }
}

void Machine::setShowsSystem(bool shows) {
    assign(*this, showsSystem_, shows, &Machine::systemChanged);
    if (!shows || isMeasuringSystem_) {
        return;
    }
    assign(*this, isMeasuringSystem_, true, &Machine::systemChanged);
    runInBackground(
        this,
        [] { return SystemSpace::measure(); },
        [](Machine& machine, std::vector<SystemPart> parts) { machine.show(std::move(parts)); });
}

void Machine::show(std::vector<SystemPart> parts) {
    isMeasuringSystem_ = false;
    systemParts_ = std::move(parts);
    Q_EMIT systemChanged();
}

QVariantList Machine::systemParts() const {
    QVariantList parts;
    for (const SystemPart& part : systemParts_) {
        QStringList commands;
        std::ranges::transform(part.store.commands, std::back_inserter(commands), shown);
        parts.append(QVariantMap{
            {"name",       shown(part.store.name) },
            {"about",      shown(part.store.about)},
            {"size",       number(part.size)      },
            {"commands",   commands               },
            {"isComplete", part.isComplete        },
        });
    }
    return parts;
}

void Machine::copySystemCommands(int part) const {
    const auto place = static_cast<std::size_t>(part);
    if (part < 0 || place >= systemParts_.size()) {
        return;
    }
    QStringList lines;
    std::ranges::transform(systemParts_[place].store.commands, std::back_inserter(lines), shown);
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

void Machine::setVolume(std::optional<VolumeInfo::Snapshot> volume) {
    assign(*this, volume_, volume, &Machine::volumeChanged);
}

void Machine::setFullDiskAccess(bool hasAccess) {
    assign(*this, hasFullDiskAccess_, hasAccess, &Machine::hasFullDiskAccessChanged);
}

QString Machine::trashFrees() const {
    return words(FreedSpace::alone(trash_).words());
}

void Machine::setTrash(SpaceUse use) {
    const QString frees = trashFrees();
    const std::int64_t before = std::exchange(trash_, std::move(use)).size;
    if (trash_.size != before || trashFrees() != frees) {
        Q_EMIT trashChanged();
    }
}

}  // namespace Brimlo
