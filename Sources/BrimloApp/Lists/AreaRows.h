#pragma once

#include "BrimloApp/Lists/SourceRows.h"

#include <QtQml/qqmlregistration.h>

#include <string>

namespace Brimlo {

/// A part of the disk that the last scan could not look into.
struct AreaRow {
    std::string area;
    std::int64_t count = 0;  ///< Folders in it.
    std::string reason;

    bool operator==(const AreaRow&) const = default;

    [[nodiscard]] const std::string& key() const { return area; }
};

/// The first few parts of the disk that the last scan could not look into.
class AreaRows : public BRIMLO_SOURCE_ROWS(AreaRow) {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(Brimlo::AppModel* source READ source WRITE setSource NOTIFY sourceChanged)
    Q_PROPERTY(int moreCount READ moreCount NOTIFY moreCountChanged)

public:
    explicit AreaRows(QObject* parent = nullptr);

    /// How many more there are than are listed.
    [[nodiscard]] int moreCount() const { return moreCount_; }

Q_SIGNALS:
    void sourceChanged();
    void moreCountChanged();

private:
    void refresh() override;
    void tellSource() override { Q_EMIT sourceChanged(); }

    int moreCount_ = 0;
};

}  // namespace Brimlo
