#include "BrimloAppTests/Support/AppTest.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtGui/QGuiApplication>
#include <gtest/gtest.h>

#include <memory>

namespace Brimlo::Testing {
namespace {

/// The one application object of a test program: it lives as long as all tests do.
class ApplicationEnvironment : public testing::Environment {
public:
    void SetUp() override {
        qputenv("QT_QUICK_BACKEND", "software");
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
            qputenv("QT_QPA_PLATFORM", "offscreen");
        }
        application_ = std::make_unique<QGuiApplication>(argc_, argv_.data());
    }

    void TearDown() override { application_.reset(); }

private:
    int argc_ = 1;
    std::string name_ = "brimlo-test";
    std::vector<char*> argv_{name_.data(), nullptr};
    std::unique_ptr<QGuiApplication> application_;
};

[[maybe_unused]] const auto* const kEnvironment =
    testing::AddGlobalTestEnvironment(std::make_unique<ApplicationEnvironment>().release());

}  // namespace

void AppTest::waitFor(
    const std::function<bool()>& condition, const std::chrono::milliseconds limit) {
    QElapsedTimer waited;
    waited.start();
    while (!condition()) {
        ASSERT_LT(waited.elapsed(), limit.count()) << "the condition never held";
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 20);
    }
}

void AppTest::settle() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

}  // namespace Brimlo::Testing
