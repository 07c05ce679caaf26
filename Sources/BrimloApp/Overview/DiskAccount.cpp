#include "BrimloApp/Overview/DiskAccount.h"

#include "BrimloApp/Shell/RunInBackground.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/Platform/Fmt.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Brimlo {

namespace {

using namespace std::chrono_literals;

constexpr auto kSamplingTime = 150ms;
/// More make the list long, not clear.
constexpr std::size_t kMostLines = 30;

}  // namespace

DiskAccount::DiskAccount(AppModel& app)
    : app_{app} {}

DiskAccount::~DiskAccount() {
    stop();  // The walk outlives the model; cancelled, it ends soon.
}

void DiskAccount::setOpen(bool isOpen) {
    if (isOpen == isOpen_) {
        return;
    }
    isOpen_ = isOpen;
    if (isOpen) {
        count();
    } else {
        stop();
    }
    Q_EMIT changed();
}

void DiskAccount::count() {
    account_.reset();
    control_ = std::make_shared<ScanControl>();
    assign(*this, progress_, ScanControl::Progress{}, &DiskAccount::progressChanged);
    sampling_ = app_.surroundings().clock->schedule(kSamplingTime, Clock::Repeat::always, [this] {
        assign(*this, progress_, control_->progress(), &DiskAccount::progressChanged);
    });
    runInBackground(
        this,
        [control = control_] { return VolumeAccount::of(StoragePaths::home(), *control); },
        [control = control_](DiskAccount& room, std::optional<VolumeAccount> account) {
            // Another count may have begun since this one was stopped.
            if (control == room.control_) {
                room.show(std::move(account));
            }
        });
}

void DiskAccount::stop() {
    if (control_) {
        control_->cancel();
    }
    sampling_.reset();
    control_.reset();
}

void DiskAccount::show(std::optional<VolumeAccount> account) {
    stop();
    account_ = std::move(account);
    Q_EMIT changed();
}

QVariantList DiskAccount::lines() const {
    QVariantList lines;
    if (!account_) {
        return lines;
    }
    const double taken = std::max(1.0, number(account_->taken()));
    for (const AccountLine& line : account_->largest(kMostLines)) {
        const bool isPath = line.kind == AccountLine::Kind::area;
        lines.append(QVariantMap{
            {"name", shown(isPath ? UserRules::tildeForm(line.name) : line.name)},
            {"size", QString::fromStdString(Fmt::bytes(line.bytes))},
            {"files", number(line.files)},
            {"share", std::max(0.0, number(line.bytes) / taken)},
        });
    }
    return lines;
}

QStringList DiskAccount::remarks() const {
    QStringList remarks;
    if (account_) {
        std::ranges::transform(account_->remarks(), std::back_inserter(remarks), shown);
    }
    return remarks;
}

}  // namespace Brimlo
