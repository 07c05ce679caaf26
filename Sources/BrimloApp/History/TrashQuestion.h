#pragma once

#include "BrimloApp/Shell/AppModel.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/qqmlregistration.h>

#include <cstdint>

namespace Brimlo {

/// What is asked before anything is deleted from the Trash for good. Main thread; measures in the
/// background.
class TrashQuestion : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    Q_PROPERTY(bool isAboutAll READ isAboutAll NOTIFY changed)
    Q_PROPERTY(bool isMeasured READ isMeasured NOTIFY changed)
    Q_PROPERTY(double count READ count NOTIFY changed)
    Q_PROPERTY(double bytes READ bytes NOTIFY changed)
    Q_PROPERTY(QString frees READ frees NOTIFY changed)

public:
    /// What would be deleted: everything in the Trash, or only what Brimlo moved there.
    enum class Subject { all, own };

    explicit TrashQuestion(AppModel& app);

    Q_INVOKABLE void askToEmpty() { ask(Subject::all); }
    Q_INVOKABLE void askToPurge() { ask(Subject::own); }
    /// Closes the question, and deletes if the answer is yes.
    Q_INVOKABLE void answer(bool yes);

    [[nodiscard]] bool isOpen() const { return state_.isOpen; }
    [[nodiscard]] bool isAboutAll() const { return state_.subject == Subject::all; }
    /// Whether the figures are known.
    [[nodiscard]] bool isMeasured() const { return state_.isMeasured; }
    /// Items that would be deleted.
    [[nodiscard]] double count() const { return static_cast<double>(state_.count); }
    [[nodiscard]] double bytes() const { return static_cast<double>(state_.bytes); }
    /// What that frees, as `TrashReport` words it.
    [[nodiscard]] QString frees() const { return state_.frees; }

Q_SIGNALS:
    void changed();

private:
    struct State {
        bool isOpen = false;
        Subject subject = Subject::all;
        bool isMeasured = false;
        std::int64_t count = 0;
        std::int64_t bytes = 0;
        QString frees;

        bool operator==(const State&) const = default;
    };
    void ask(Subject subject);
    void show(const State& state);

    AppModel& app_;
    State state_;
    std::uint64_t number_ = 0;  ///< Of the question asked last.
};

}  // namespace Brimlo
