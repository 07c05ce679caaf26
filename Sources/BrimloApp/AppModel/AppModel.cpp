#include "BrimloApp/AppModel/AppModel.h"

#include "BrimloApp/AppModel/RunInBackground.h"
#include "BrimloApp/AppModel/Shown.h"
#include "BrimloApp/Platform/Reveal.h"
#include "BrimloCore/DisabledRules/DisabledRules.h"
#include "BrimloCore/RulePacks/Catalog.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <algorithm>
#include <array>
#include <type_traits>
#include <utility>

// Start-up, and what every screen shares: the section, the banner, the busy line.

namespace Brimlo {
namespace {

using namespace std::chrono_literals;

constexpr auto kBannerTime = 8s;
constexpr auto kErrorBannerTime = 20s;

/// Who sets the banner has no other way to say that something went wrong than its words.
bool tellsOfFailure(const QString& text) {
    constexpr std::array kWords{"failed", "could not", "unable"};
    const QString lowered = text.toLower();
    return std::ranges::any_of(kWords, [&](const char* word) { return lowered.contains(word); });
}

}  // namespace

AppModel::AppModel(Surroundings surroundings, QObject* parent)
    : QObject{parent}
    , clock_{*surroundings.clock}
    , cli_{std::move(surroundings.cli)}
    , docker_{std::move(surroundings.docker)}
    , volume_{VolumeInfo::ofHome()}
    , hasFullDiskAccess_{checkFullDiskAccess()}
    , scanRoot_{StoragePaths::home()}
    , dupRoot_{scanRoot_}
    , largeRoot_{scanRoot_}
    , builtInRules_{Catalog::builtInRules()}
    , disabledRuleIDs_{DisabledRules::load()}
    , cliPlace_{shown(CLIInstaller::installedAt(cli_).value_or(""))}
    , cleaner_{
          std::make_shared<Cleaner>(std::make_shared<Journal>(StoragePaths::journal()), docker_)} {
    readConfig();
    reloadCustomRules();
    readAgent();
    readJournal();
    refreshVolume();
    startAutoCleanTimer();
}

AppModel::~AppModel() {
    // The walks know nothing of the model: told to end, they at least end soon.
    cancelScan();
    cancelLargeFiles();
    cancelDuplicates();
    releaseInBackground(std::pair{std::move(root_), std::move(current_)});
}

// Of a singleton that can be made without arguments, QML makes one of its own.
static_assert(!std::is_default_constructible_v<AppModel>);

AppModel* AppModel::create(QQmlEngine* engine, QJSEngine* /*scripts*/) {
    auto* model = engine->property("appModel").value<AppModel*>();
    QJSEngine::setObjectOwnership(model, QJSEngine::CppOwnership);
    return model;
}

void AppModel::setSection(const Section section) {
    if (section == Section::settings) {
        readConfig();  // The tool may have changed them.
    }
    assign(section_, section, &AppModel::sectionChanged);
}

QString AppModel::sectionID() const {
    return QString::fromUtf8(id(section_));
}

void AppModel::setSectionID(const QString& id) {
    if (const auto section = sectionFromID(id.toStdString())) {
        setSection(*section);
    }
}

void AppModel::setBanner(const QString& text) {
    assign(banner_, text, &AppModel::bannerChanged);
    // The same text set again is shown for its whole time again.
    scheduleBannerDismiss();
}

void AppModel::reveal(const std::vector<std::string>& paths) {
    Platform::reveal(paths, [model = QPointer{this}] {
        if (model) {
            model->setBanner(QStringLiteral("Could not show it: no file manager answered."));
        }
    });
}

void AppModel::rescan() {
    switch (section_) {
        case Section::overview:
        case Section::clean:
            loadSuggestions();
            break;
        case Section::analyzer:
            startScan();
            break;
        case Section::largeFiles:
            findLargeFiles();
            break;
        case Section::duplicates:
            findDuplicates();
            break;
        case Section::rules:
            reloadCustomRules();
            break;
        case Section::history:
            readJournal();
            break;
        case Section::settings:
            refreshVolume();
            break;
    }
}

void AppModel::scheduleBannerDismiss() {
    bannerTask_.reset();
    if (banner_.isEmpty()) {
        return;
    }
    const auto time = tellsOfFailure(banner_) ? kErrorBannerTime : kBannerTime;
    bannerTask_ = clock_.schedule(time, Clock::Repeat::once, [this, shown = banner_] {
        if (banner_ == shown) {
            assign(banner_, QString{}, &AppModel::bannerChanged);
        }
    });
}

}  // namespace Brimlo
