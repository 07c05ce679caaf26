#include "BrimloApp/Shell/AppModel.h"

#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Duplicates/DuplicateSearch.h"
#include "BrimloApp/History/History.h"
#include "BrimloApp/LargeFiles/LargeFileSearch.h"
#include "BrimloApp/Overview/DiskAccount.h"
#include "BrimloApp/Overview/Machine.h"
#include "BrimloApp/Platform/Desktop.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/Rules/RuleBook.h"
#include "BrimloApp/Settings/Settings.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloApp/SmartClean/SmartClean.h"
#include "BrimloCore/DiskScanner/FileKind.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <QtCore/QFileInfo>
#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>

#include <algorithm>
#include <type_traits>
#include <utility>

namespace Brimlo {

namespace {

using namespace std::chrono_literals;

constexpr auto kTimeToSuggest = 1s;

}  // namespace

AppModel::AppModel(Surroundings surroundings, QObject* parent)
    : QObject{parent}
    , surroundings_{std::move(surroundings)}
    , cleaner_{std::make_shared<Cleaner>(
          std::make_shared<Journal>(StoragePaths::journal()), surroundings_.docker)}
    , banner_{std::make_unique<Banner>(*surroundings_.clock)}
    , machine_{std::make_unique<Machine>()}
    , diskAccount_{std::make_unique<DiskAccount>(*this)}
    , smartClean_{std::make_unique<SmartClean>(*this)}
    , cleanup_{std::make_unique<Cleanup>(*this)}
    , analyzer_{std::make_unique<Analyzer>(*this)}
    , largeFiles_{std::make_unique<LargeFileSearch>(*this)}
    , duplicates_{std::make_unique<DuplicateSearch>(*this)}
    , rules_{std::make_unique<RuleBook>(*this)}
    , history_{std::make_unique<History>(*this)}
    , settings_{std::make_unique<Settings>(*this)} {
    settings_->read();
    rules_->reload();
    history_->readJournal();
    machine_->refresh();
    settings_->startAutoCleanTimer();
    if (surroundings_.suggestsByItself) {
        suggestSoon();
    }
}

AppModel::~AppModel() = default;

// QML would default-construct a singleton instead of calling `create`.
static_assert(!std::is_default_constructible_v<AppModel>);

AppModel* AppModel::create(QQmlEngine* engine, QJSEngine* /*scripts*/) {
    auto* model = engine->property("appModel").value<AppModel*>();
    QJSEngine::setObjectOwnership(model, QJSEngine::CppOwnership);
    return model;
}

void AppModel::setSection(Section section) {
    if (section == Section::Settings) {
        settings_->read();  // The command line tool may have changed them.
        smartClean_->readLeftAlone();
    }
    if (section == Section::History) {
        history_->readJournal();  // Another program may have emptied the Trash.
    }
    assign(*this, section_, section, &AppModel::sectionChanged);
}

void AppModel::rescan() {
    switch (section_) {
        case Section::Overview:
        case Section::Clean:
            smartClean_->loadSuggestions();
            break;
        case Section::Analyzer:
            analyzer_->scan();
            break;
        case Section::LargeFiles:
            largeFiles_->find();
            break;
        case Section::Duplicates:
            duplicates_->find();
            break;
        case Section::Rules:
            rules_->reload();
            break;
        case Section::History:
            history_->readJournal();
            break;
        case Section::Settings:
            machine_->refresh();
            break;
    }
}

void AppModel::suggestSoon() {
    // Not at once: the window has its first frames to draw.
    suggestTask_ = surroundings_.clock->schedule(kTimeToSuggest, Clock::Repeat::once, [this] {
        if (smartClean_->suggestions().empty()) {
            smartClean_->loadSuggestions();
        }
    });
}

// ---- Changes to files ----------------------------------------------------------------------

void AppModel::undo() {
    if (banner_->undoesChange()) {
        banner_->takeBack();
    } else {
        history_->undoLastClean();
    }
}

void AppModel::setBusy(const QString& text) {
    assign(*this, busy_, text, &AppModel::busyChanged);
}

void AppModel::runBusy(const QString& text, std::function<Outcome()> work) {
    setBusy(text);
    struct Done {
        Outcome outcome;
        JournalReading journal;
    };
    changeInBackground(
        this,
        [work = std::move(work), cleaner = cleaner_] {
            Outcome outcome = work();
            return Done{.outcome = std::move(outcome), .journal = JournalReading::of(*cleaner)};
        },
        [](AppModel& model, Done done) {
            model.setBusy({});
            model.banner_->show(shown(done.outcome.sentence));
            model.machine_->refresh();
            model.history_->show(std::move(done.journal));
            model.history_->showStayed(done.outcome.stayed);
            model.findAgain(done.outcome.restored);
        });
}

void AppModel::findAgain(const std::vector<std::string>& restored) {
    if (restored.empty()) {
        return;
    }
    const auto holdsOne = [&](const std::string& folder) {
        return std::ranges::any_of(restored, [&](const std::string& path) {
            return Path::below(folder, path).has_value();
        });
    };
    smartClean_->suggestAnew();
    analyzer_->findAgainIf(holdsOne);
    largeFiles_->findAgainIf(holdsOne);
    duplicates_->findAgainIf(holdsOne);
}

void AppModel::openFile(const std::string& path) {
    const QFileInfo file{fromPath(path)};
    if (file.isExecutable() || kindOfFile(Path::name(path)) == FileKind::code ||
        file.suffix() == "desktop") {
        banner_->show(QStringLiteral("Could not open it: it may be a program."));
    } else if (!file.isFile() || !QDesktopServices::openUrl(QUrl::fromLocalFile(fromPath(path)))) {
        banner_->show(QStringLiteral("Could not open it: no application did."));
    }
}

void AppModel::reveal(const std::vector<std::string>& paths) {
    Desktop::reveal(paths, [model = QPointer{this}] {
        if (model) {
            model->banner_->show(QStringLiteral("Could not show it: no file manager answered."));
        }
    });
}

}  // namespace Brimlo
