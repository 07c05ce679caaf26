#pragma once

#include "BrimloApp/Shell/Sections.h"

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QUrl>

#include <expected>
#include <optional>

class QWindow;

namespace Brimlo {

class AppModel;

/// What a start of the application, or the desktop, asks of its window: to look at a folder, to
/// show a screen, or only to come to the front. Whoever asks, nothing else can be asked for.
struct WindowRequest {
    QUrl folder;                     ///< To analyze; empty for none.
    std::optional<Section> section;  ///< To show.
    /// What lets the window come to the front on Wayland; empty if the desktop gave nothing.
    QString token;

    bool operator==(const WindowRequest&) const = default;

    /// That of the words after the program's name; a sentence if they mean nothing.
    [[nodiscard]] static std::expected<WindowRequest, QString> ofWords(const QStringList& words);
    /// That of addresses: the first that is one of a file here.
    [[nodiscard]] static WindowRequest ofAddresses(const QStringList& addresses);
    /// That of an action of the desktop entry; of an unknown one only the window.
    [[nodiscard]] static WindowRequest ofAction(const QString& action);
    /// The action of the section, empty if it has none.
    [[nodiscard]] QString action() const;

    /// Goes to the folder or the screen.
    void meet(AppModel& model) const;
    /// Brings the window to the front.
    void raise(QWindow& window) const;
};

}  // namespace Brimlo
