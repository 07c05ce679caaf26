#pragma once

#include "BrimloApp/Shell/Clock.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <memory>

namespace Brimlo {

/// The message about the last operation, which goes after a while. Main thread.
class Banner : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(bool offersUndo READ offersUndo NOTIFY changed)
    Q_PROPERTY(bool undoesChange READ undoesChange NOTIFY changed)

public:
    explicit Banner(Clock& clock)
        : clock_{clock} {}

    /// Empty if there is no message.
    [[nodiscard]] const QString& text() const { return message_.text; }
    /// Whether the message has a button that undoes what it tells.
    [[nodiscard]] bool offersUndo() const { return message_.offersUndo; }
    /// Whether the button takes back a change, not a clean.
    [[nodiscard]] bool undoesChange() const { return message_.undoesChange; }

    /// Shows a message for 8 seconds, or for 20 if its words tell of a failure; an empty text
    /// removes the current one.
    Q_INVOKABLE void show(const QString& text) { put(Message{.text = text}); }
    /// Shows a message about the last clean for 20 seconds, with a button that undoes the clean.
    void offerUndo(const QString& text) { put(Message{.text = text, .offersUndo = true}); }
    /// Shows a message about a change for 20 seconds, with a button that takes the change back.
    void offerUndo(const QString& text, std::function<void()> takeBack);
    /// Takes the change back and removes the message. Call it only while it `undoesChange`.
    void takeBack();

Q_SIGNALS:
    void changed();

private:
    struct Message {
        QString text;
        bool offersUndo = false;
        bool undoesChange = false;

        bool operator==(const Message&) const = default;
    };
    void put(const Message& message);

    Clock& clock_;
    Message message_;
    std::function<void()> takeBack_;  ///< Valid while the message undoes a change.
    std::unique_ptr<Clock::Pending> end_;
};

}  // namespace Brimlo
