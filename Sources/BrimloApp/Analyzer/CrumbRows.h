#pragma once

#include "BrimloApp/Shell/Rows.h"
#include "BrimloCore/Support/Uuid.h"

#include <QtCore/QString>
#include <QtQml/qqmlregistration.h>

#include <string>

namespace Brimlo {

class Analyzer;

/// One folder on the way to the one that is shown.
struct CrumbLine {
    Uuid id;
    std::string name;

    bool operator==(const CrumbLine&) const = default;

    [[nodiscard]] const Uuid& key() const { return id; }
};

/// The way from the root of the scanned tree down to the folder that is shown, which is the last.
class CrumbRows : public Brimlo::RowList {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    // Of the folder that is shown.
    Q_PROPERTY(QString folderName READ folderName NOTIFY folderChanged)
    Q_PROPERTY(double size READ size NOTIFY folderChanged)
    Q_PROPERTY(double fileCount READ fileCount NOTIFY folderChanged)

public:
    explicit CrumbRows(Analyzer& analyzer);

    /// Shows the folder of a row.
    Q_INVOKABLE void show(int row);

    [[nodiscard]] QString folderName() const;
    [[nodiscard]] double size() const;
    [[nodiscard]] double fileCount() const;

Q_SIGNALS:
    void folderChanged();

private:
    void refresh();

    Analyzer& analyzer_;
    Rows<CrumbLine> rows_;
};

}  // namespace Brimlo
