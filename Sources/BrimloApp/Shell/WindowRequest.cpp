#include "BrimloApp/Shell/WindowRequest.h"

#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Shell/AppModel.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/Support/Path.h"

#include <QtCore/QFileInfo>
#include <QtGui/QWindow>

#include <algorithm>
#include <array>
#include <utility>

namespace Brimlo {

namespace {

/// As the desktop entry names them.
constexpr std::array kActions{
    std::pair{"Analyze",    Section::Analyzer  },
    std::pair{"Clean",      Section::Clean     },
    std::pair{"Duplicates", Section::Duplicates},
};

}  // namespace

std::expected<WindowRequest, QString> WindowRequest::ofWords(const QStringList& words) {
    if (words.isEmpty()) {
        return WindowRequest{};
    }
    if (words.size() == 2 && words.first() == "--show") {
        WindowRequest request = ofAction(words.last());
        if (request.section) {
            return request;
        }
    }
    if (words.size() != 1 || words.first().startsWith("--")) {
        return std::unexpected(
            QStringLiteral("Give a folder, or --show with Analyze, Clean or Duplicates."));
    }
    const auto path = Path::typed(toPath(words.first()));
    if (!path || !QFileInfo{fromPath(*path)}.isDir()) {
        return std::unexpected(QStringLiteral("\"%1\" is not a folder.").arg(words.first()));
    }
    return WindowRequest{
        .folder = QUrl::fromLocalFile(fromPath(*path)), .section = {}, .token = {}};
}

WindowRequest WindowRequest::ofAddresses(const QStringList& addresses) {
    for (const QString& address : addresses) {
        const QUrl url{address, QUrl::StrictMode};
        if (url.isLocalFile() && url.host().isEmpty()) {
            return {.folder = url, .section = {}, .token = {}};
        }
    }
    return {};
}

WindowRequest WindowRequest::ofAction(const QString& action) {
    const auto* const found =
        std::ranges::find_if(kActions, [&](const auto& known) { return action == known.first; });
    return {
        .folder = {},
        .section = found == kActions.end() ? std::nullopt : std::optional{found->second},
        .token = {},
    };
}

QString WindowRequest::action() const {
    const auto* const found =
        std::ranges::find_if(kActions, [&](const auto& known) { return section == known.second; });
    return found == kActions.end() ? QString{} : QString{found->first};
}

void WindowRequest::meet(AppModel& model) const {
    if (!folder.isEmpty()) {
        model.setSection(Section::Analyzer);
        if (model.analyzer()->isScanning()) {
            model.banner()->show(QStringLiteral(
                "A scan is under way. Open the folder again when it has ended or is cancelled."));
        } else if (!model.analyzer()->scanDropped(folder)) {
            model.banner()->show(QStringLiteral("What was to be opened is not a folder."));
        }
    } else if (section) {
        model.setSection(*section);
    }
}

void WindowRequest::raise(QWindow& window) const {
    if (!token.isEmpty()) {
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());  // Qt takes it from there.
    }
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.raise();
    window.requestActivate();
}

}  // namespace Brimlo
