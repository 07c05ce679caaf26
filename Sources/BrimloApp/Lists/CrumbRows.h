#pragma once

#include "BrimloApp/Lists/SourceRows.h"
#include "BrimloApp/Lists/UuidHash.h"

#include <QtQml/qqmlregistration.h>

#include <string>

namespace Brimlo {

/// One folder on the way to the one that is shown.
struct CrumbRow {
    Uuid id;
    std::string name;

    bool operator==(const CrumbRow&) const = default;

    [[nodiscard]] const Uuid& key() const { return id; }
};

/// The way from the root of the scanned tree down to the folder that is shown, which is the last.
class CrumbRows : public BRIMLO_SOURCE_ROWS(CrumbRow) {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(Brimlo::AppModel* source READ source WRITE setSource NOTIFY sourceChanged)
    // Of the folder that is shown.
    Q_PROPERTY(QString folderName READ folderName NOTIFY folderChanged)
    Q_PROPERTY(double size READ size NOTIFY folderChanged)
    Q_PROPERTY(double fileCount READ fileCount NOTIFY folderChanged)

public:
    explicit CrumbRows(QObject* parent = nullptr);

    /// Shows the folder of a row.
    Q_INVOKABLE void show(int row);

    [[nodiscard]] QString folderName() const;
    [[nodiscard]] double size() const;
    [[nodiscard]] double fileCount() const;

Q_SIGNALS:
    void sourceChanged();
    void folderChanged();

private:
    void refresh() override;
    void tellSource() override { Q_EMIT sourceChanged(); }
};

}  // namespace Brimlo
