#pragma once

#include "BrimloApp/Shell/Rows.h"

#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <string>

namespace Brimlo {

class Analyzer;

/// A part of the disk that the last scan could not look into.
struct AreaLine {
    std::string area;
    std::int64_t count = 0;  ///< Folders in it.
    std::string reason;

    bool operator==(const AreaLine&) const = default;

    [[nodiscard]] const std::string& key() const { return area; }
};

/// The first few parts of the disk that the last scan could not look into.
class AreaRows : public Brimlo::RowList {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    Q_PROPERTY(int moreCount READ moreCount NOTIFY moreCountChanged)

public:
    explicit AreaRows(Analyzer& analyzer);

    /// How many more there are than are listed.
    [[nodiscard]] int moreCount() const { return moreCount_; }

Q_SIGNALS:
    void moreCountChanged();

private:
    void refresh();

    Analyzer& analyzer_;
    Rows<AreaLine> rows_;
    int moreCount_ = 0;
};

}  // namespace Brimlo
