#include "BrimloAppTests/Support/ModelTest.h"

#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Duplicates/DuplicateSearch.h"
#include "BrimloApp/LargeFiles/LargeFileSearch.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/SmartClean/SmartClean.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <utility>

namespace Brimlo::Testing {
namespace {

/// Tells the names of an object's signals as they come.
class ChangeRecorder : public QObject {
    Q_OBJECT
public:
    ChangeRecorder(QObject& recorded, std::vector<std::string>& names)
        : QObject{&recorded}
        , names_{names} {
        const QMetaObject& type = *recorded.metaObject();
        const QMetaMethod slot = staticMetaObject.method(staticMetaObject.methodOffset());
        for (int i = QObject::staticMetaObject.methodCount(); i < type.methodCount(); ++i) {
            if (type.method(i).methodType() == QMetaMethod::Signal) {
                connect(&recorded, type.method(i), this, slot);
            }
        }
    }

    Q_SLOT void note() {
        const QMetaObject& type = *sender()->metaObject();
        const std::string part{std::string_view{type.className()}.substr(qstrlen("Brimlo::"))};
        QByteArray name = type.method(senderSignalIndex()).name();
        names_.push_back(part + '.' + name.replace("Changed", "").toStdString());
    }

private:
    std::vector<std::string>& names_;
};

}  // namespace

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
        const QMetaObject& type = *model_->metaObject();
        for (int i = 0; i < type.propertyCount(); ++i) {
            if (auto* const part = type.property(i).read(model_.get()).value<QObject*>()) {
                new ChangeRecorder{*part, changes_};  // The part owns it.
            }
        }
        new ChangeRecorder{*model_, changes_};
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

#include "ModelTest.moc"
