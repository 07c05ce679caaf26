#pragma once

#include "BrimloApp/Shell/AppModel.h"
#include "BrimloCore/DiskScanner/ScanControl.h"
#include "BrimloCore/VolumeAccount/VolumeAccount.h"

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QVariantList>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>

namespace Brimlo {

/// Why the volume of the home folder is full. Counted anew whenever it is opened, in the
/// background, and no longer than it is open. Main thread.
class DiskAccount : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    Q_PROPERTY(bool isOpen READ isOpen WRITE setOpen NOTIFY changed)
    Q_PROPERTY(bool isCounting READ isCounting NOTIFY changed)
    Q_PROPERTY(double countedFiles READ countedFiles NOTIFY progressChanged)
    // For each its `name`, `size` in words, `files`, and its `share` of what is taken.
    Q_PROPERTY(QVariantList lines READ lines NOTIFY changed)
    Q_PROPERTY(QStringList remarks READ remarks NOTIFY changed)

public:
    explicit DiskAccount(AppModel& app);
    ~DiskAccount() override;

    Q_DISABLE_COPY_MOVE(DiskAccount)

    [[nodiscard]] bool isOpen() const { return isOpen_; }
    void setOpen(bool isOpen);
    [[nodiscard]] bool isCounting() const { return control_ != nullptr; }
    [[nodiscard]] double countedFiles() const { return static_cast<double>(progress_.files); }

    /// Shows the result of counting; nullopt when the volume can't be looked at.
    void show(std::optional<VolumeAccount> account);
    [[nodiscard]] QVariantList lines() const;
    [[nodiscard]] QStringList remarks() const;

Q_SIGNALS:
    void changed();
    void progressChanged();

private:
    void count();
    void stop();

    AppModel& app_;
    bool isOpen_ = false;
    std::shared_ptr<ScanControl> control_;  ///< While it counts.
    std::unique_ptr<Clock::Pending> sampling_;
    ScanControl::Progress progress_;
    std::optional<VolumeAccount> account_;
};

}  // namespace Brimlo
