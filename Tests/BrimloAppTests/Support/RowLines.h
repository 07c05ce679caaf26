#pragma once

#include "BrimloApp/Shell/RowList.h"

#include <QtCore/QStringList>
#include <QtCore/QVariant>

namespace Brimlo::Testing {

/// The rows of a list as its view gets them: the values of these roles, joined with "|".
[[nodiscard]] inline QStringList lines(const RowList& list, const QList<QByteArray>& roles) {
    QStringList lines;
    for (int place = 0; place < list.count(); ++place) {
        QStringList values;
        for (const QByteArray& role : roles) {
            values.append(list.data(list.index(place), list.roleNames().key(role)).toString());
        }
        lines.append(values.join("|"));
    }
    return lines;
}

}  // namespace Brimlo::Testing
