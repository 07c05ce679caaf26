#pragma once

#include "BrimloApp/AppModel/AppModel.h"
#include "BrimloApp/AppModel/Shown.h"
#include "BrimloApp/Lists/RowModel.h"

#include <QtCore/QPointer>

#include <cstdint>
#include <utility>
#include <vector>

namespace Brimlo {

/// A list of something that the model holds, made anew whenever that changes. Main thread.
///
/// Empty without a source, and so again when the source is gone. A list declares the property
/// `source` itself, because only a class that isn't a template can.
template <typename Row>
class SourceRows : public RowModel<Row> {
public:
    /// The model; null when none was given or it is gone.
    [[nodiscard]] AppModel* source() const { return source_; }

    void setSource(AppModel* const source) {
        if (source_ == source) {
            return;
        }
        for (const QMetaObject::Connection& each : std::exchange(connections_, {})) {
            QObject::disconnect(each);
        }
        source_ = source;
        if (source != nullptr) {
            follow(*source);
        }
        tellSource();
        refresh();
    }

protected:
    using Signal = void (AppModel::*)();

    /// A list that follows these signals.
    SourceRows(
        std::vector<typename RowModel<Row>::Role> roles,
        std::vector<Signal> changes,
        QObject* const parent)
        : RowModel<Row>{std::move(roles), parent}
        , changes_{std::move(changes)} {}

    /// Makes the rows anew.
    virtual void refresh() = 0;
    /// Emits the signal of the property `source`.
    virtual void tellSource() = 0;

    /// A count of bytes or files: QML has no wide integers.
    [[nodiscard]] static double number(const std::int64_t count) {
        return static_cast<double>(count);
    }

private:
    void follow(const AppModel& source) {
        for (const Signal change : changes_) {
            connections_.push_back(QObject::connect(&source, change, this, [this] { refresh(); }));
        }
        connections_.push_back(QObject::connect(&source, &QObject::destroyed, this, [this] {
            tellSource();
            refresh();
        }));
    }

    const std::vector<Signal> changes_;
    std::vector<QMetaObject::Connection> connections_;
    QPointer<AppModel> source_;
};

}  // namespace Brimlo

// The base of a list. moc can't follow a template, and what it makes of the list would lack all
// that the list inherits; for it the base is the nearest class that it knows.
#ifdef Q_MOC_RUN
#define BRIMLO_SOURCE_ROWS(Row) Brimlo::RowList
#else
#define BRIMLO_SOURCE_ROWS(Row) SourceRows<Row>
#endif
