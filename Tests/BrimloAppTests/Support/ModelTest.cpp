#include "BrimloAppTests/Support/ModelTest.h"

#include <QtCore/QMetaMethod>
#include <QtCore/QThreadPool>
#include <QtTest/QSignalSpy>

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <utility>

namespace Brimlo::Testing {
namespace {

/// Tells the names of an object's properties as their change signals come.
class ChangeRecorder : public QSignalSpy {
public:
    ChangeRecorder(
        const QObject& object, const QMetaMethod& signal, std::vector<std::string>& names)
        : QSignalSpy{&object, signal}
        , name_{signal.name().chopped(qstrlen("Changed")).toStdString()}
        , names_{names} {}

    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override {
        names_.push_back(name_);
        return QSignalSpy::qt_metacall(call, id, arguments);
    }

private:
    std::string name_;
    std::vector<std::string>& names_;
};

}  // namespace

ModelTest::ModelTest() {
    // Some parts find their tool and their link by these.
    makeFolder("resources");
    makeFolder("bin");
}

ModelTest::~ModelTest() {
    model_.reset();
    QThreadPool::globalInstance()->waitForDone();
    settle();
}

Surroundings ModelTest::surroundings() {
    const CLIInstaller::Places cli{
        .resources = at("resources"),
        .link = at("bin/brimlo"),
        .authorizers = {at("pkexec")},
    };
    return {.clock = &clock, .cli = cli, .docker = {at("docker")}};
}

AppModel& ModelTest::model() {
    if (!model_) {
        model_ = std::make_unique<AppModel>(surroundings());
        const QMetaObject* const type = model_->metaObject();
        for (int i = type->methodOffset(); i < type->methodCount(); ++i) {
            if (type->method(i).methodType() == QMetaMethod::Signal) {
                (new ChangeRecorder{*model_, type->method(i), changes_})->setParent(model_.get());
            }
        }
    }
    return *model_;
}

std::string ModelTest::bundleTool() {
    const std::string tool = write("resources/brimlo", "#!/bin/sh\n");
    std::filesystem::permissions(tool, std::filesystem::perms::owner_all);
    return tool;
}

std::vector<std::string> ModelTest::changes() {
    return std::exchange(changes_, {});
}

void ModelTest::finish() {
    const auto isIdle = [this] {
        const AppModel& it = model();
        return !it.isSuggesting() && !it.isCleaning() && !it.isScanning() && !it.isFindingDupes() &&
               !it.isFindingLarge() && it.busy().isEmpty();
    };
    // Each item of a clean is synced to the disk several times.
    waitFor(isIdle, std::chrono::minutes{4});
    // The measuring of the Trash has no flag.
    QThreadPool::globalInstance()->waitForDone();
    settle();
}

void ModelTest::suggest() {
    model().loadSuggestions();
    finish();
}

const Suggestion& ModelTest::suggestion(const std::string& id) {
    const auto& all = model().suggestions();
    const auto found = std::ranges::find(all, id, &Suggestion::id);
    if (found == all.end()) {
        throw std::runtime_error("there is no suggestion " + id);
    }
    return *found;
}

}  // namespace Brimlo::Testing
