#include "BrimloAppTests/Support/ModelTest.h"

#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Duplicates/DuplicateSearch.h"
#include "BrimloApp/LargeFiles/LargeFileSearch.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/SmartClean/SmartClean.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <utility>

namespace Brimlo::Testing {

HeldWork::HeldWork(QThreadPool& pool)
    : threads_{pool.maxThreadCount()} {
    for (int i = 0; i < threads_; ++i) {
        pool.start([gate = gate_] { gate->acquire(); });
    }
}

HeldWork::~HeldWork() {
    gate_->release(threads_);
}

Arrivals::Arrivals() {
    QCoreApplication::instance()->installEventFilter(this);
}

bool Arrivals::eventFilter(QObject* const to, QEvent* const event) {
    count_ += to == QCoreApplication::instance() && event->type() == QEvent::MetaCall ? 1 : 0;
    return false;
}

ModelTest::ModelTest() {
    // Some parts find their tool and their link by these.
    makeFolder("resources");
    makeFolder("bin");
}

ModelTest::~ModelTest() {
    model_.reset();
    Background::waitForDone();
    settle();
}

Surroundings ModelTest::surroundings() {
    const CLIInstaller::Places cli{
        .resources = at("resources"),
        .link = at("bin/brimlo"),
        .authorizers = {at("pkexec")},
        .searchPath = at("path"),
    };
    return {.clock = &clock, .cli = cli, .docker = {at("docker")}};
}

AppModel& ModelTest::model() {
    if (!model_) {
        model_ = std::make_unique<AppModel>(surroundings());
    }
    return *model_;
}

std::string ModelTest::writeProgram(const std::string& relative, const std::string& script) const {
    const std::string program = write(relative, "#!/bin/sh\n" + script + "\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    return program;
}

void ModelTest::addRule(UserRules::Draft draft) {
    draft.regenerates = "It comes back.";
    ASSERT_TRUE(UserRules::save(UserRules::make(std::move(draft)), UserRules::defaultDirectory()));
}

void ModelTest::addSampleRules() const {
    addRule(
        {.id = "custom.caches",
         .name = "Caches",
         .paths = {"~/caches/*"},
         .risk = Risk::safe,
         .officialCommand = "tidy --all",
         .personas = {Persona::general}});
    const std::filesystem::path program{QCoreApplication::applicationFilePath().toStdString()};
    addRule(
        {.id = "custom.running",
         .name = "Running",
         .group = "Group",
         .paths = {"~/running/*"},
         .risk = Risk::safe,
         .quitApps = {program.filename().string()},
         .personas = {Persona::video}});
    addRule(
        {.id = "custom.mine",
         .name = "Mine",
         .paths = {"~/mine/*"},
         .risk = Risk::review,
         .personas = {Persona::general}});
    write("caches/large/data", std::string(200'000, 'a'));
    write("caches/small/data", std::string(90'000, 'a'));
    write("running/data", std::string(50'000, 'a'));
    write("mine/data", std::string(10'000, 'a'));
}

CleanPlan ModelTest::planFiles(const int count) const {
    std::vector<CleanItem> items;
    items.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        items.push_back({.path = write("files/" + std::to_string(i)), .size = 1});
    }
    return CleanPlan{items};
}

void ModelTest::finish() {
    const auto isIdle = [this] {
        const AppModel& it = model();
        return !it.smartClean()->isSuggesting() && !it.cleanup()->isCleaning() &&
               !it.analyzer()->isScanning() && !it.duplicates()->isSearching() &&
               !it.largeFiles()->isSearching() && it.busy().isEmpty();
    };
    // Each item of a clean is synced to the disk several times.
    waitFor(isIdle, std::chrono::minutes{4});
    // The measuring of the Trash has no flag, and may be followed by one more.
    do {
        Background::waitForDone();
        settle();
    } while (Background::readers().activeThreadCount() > 0);
}

void ModelTest::suggest() {
    model().smartClean()->loadSuggestions();
    finish();
}

const Suggestion& ModelTest::suggestion(const std::string& id) {
    const auto& all = model().smartClean()->suggestions();
    const auto found = std::ranges::find(all, id, &Suggestion::id);
    if (found == all.end()) {
        throw std::runtime_error("there is no suggestion " + id);
    }
    return *found;
}

}  // namespace Brimlo::Testing
