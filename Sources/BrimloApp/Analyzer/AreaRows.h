#pragma once

#include "BrimloApp/Shell/Rows.h"
#include "BrimloCore/DiskScanner/ScanControl.h"
#include "BrimloCore/DiskScanner/UnreadableFolders.h"

#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Brimlo {

/// An area of the disk that the last scan could not read.
struct AreaLine {
    std::string area;
    std::int64_t count = 0;  ///< Folders in it.
    std::string reason;

    bool operator==(const AreaLine&) const = default;

    [[nodiscard]] const std::string& key() const { return area; }
};

/// What the last scan did not see: totals, and the first few areas.
class AreaRows : public Brimlo::RowList {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    Q_PROPERTY(int unreadableCount READ unreadableCount NOTIFY unseenChanged)
    Q_PROPERTY(int leftOutCount READ leftOutCount NOTIFY unseenChanged)
    Q_PROPERTY(int moreCount READ moreCount NOTIFY unseenChanged)

public:
    AreaRows();

    struct Unseen {
        int unreadableCount = 0;  ///< Folders.
        int leftOutCount = 0;     ///< Other volumes below the scanned folder.
        std::vector<UnreadableArea> areas;

        bool operator==(const Unseen&) const = default;

        [[nodiscard]] static Unseen of(const ScanControl& control);
    };
    void show(Unseen unseen);
    [[nodiscard]] int unreadableCount() const { return unseen_.unreadableCount; }
    [[nodiscard]] int leftOutCount() const { return unseen_.leftOutCount; }
    /// How many areas are not listed.
    [[nodiscard]] int moreCount() const { return static_cast<int>(unseen_.areas.size()) - count(); }

Q_SIGNALS:
    void unseenChanged();

private:
    Rows<AreaLine> rows_;
    Unseen unseen_;
};

}  // namespace Brimlo
