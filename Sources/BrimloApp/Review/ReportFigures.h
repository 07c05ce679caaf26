#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace Brimlo {

struct CleanReport;

/// What came of a clean, for the screens. All zero and empty when there was none.
class ReportFigures {
    Q_GADGET
    QML_VALUE_TYPE(reportFigures)

    Q_PROPERTY(int processed MEMBER processed)
    Q_PROPERTY(double freedNow MEMBER freedNow)
    Q_PROPERTY(double movedToTrash MEMBER movedToTrash)
    Q_PROPERTY(QStringList problems MEMBER problems)
    Q_PROPERTY(bool hasProblems READ hasProblems)
    Q_PROPERTY(bool canUndo MEMBER canUndo)

public:
    [[nodiscard]] static ReportFigures of(const std::optional<CleanReport>& report);

    bool operator==(const ReportFigures&) const = default;

    [[nodiscard]] bool hasProblems() const { return !problems.isEmpty(); }

    int processed = 0;        ///< Items that went.
    double freedNow = 0;      ///< Bytes of what is gone at once.
    double movedToTrash = 0;  ///< Bytes of what went to the Trash.
    QStringList problems;     ///< "path: reason": refused, failed, gone without a journal entry.
    bool canUndo = false;     ///< Whether the journal tells of something that went.
};

}  // namespace Brimlo
