#pragma once

#include "BrimloApp/Shell/Rows.h"
#include "BrimloCore/Support/Uuid.h"

#include <QtQml/qqmlregistration.h>

#include <string>

namespace Brimlo {

class Analyzer;

/// One folder of the path to the current folder.
struct CrumbLine {
    Uuid id;
    std::string name;

    bool operator==(const CrumbLine&) const = default;

    [[nodiscard]] const Uuid& key() const { return id; }
};

/// The path from the root of the scanned tree to the current folder, which is the last row.
class CrumbRows : public Brimlo::RowList {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    // Of the current folder.
    Q_PROPERTY(double size READ size NOTIFY folderChanged)
    Q_PROPERTY(double fileCount READ fileCount NOTIFY folderChanged)

public:
    explicit CrumbRows(Analyzer& analyzer);

    /// Goes to the folder of a row.
    Q_INVOKABLE void show(int row);

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
