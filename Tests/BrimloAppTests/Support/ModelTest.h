#pragma once

#include "BrimloApp/Shell/AppModel.h"
#include "BrimloApp/Shell/RunInBackground.h"
#include "BrimloAppTests/Support/AppTest.h"
#include "BrimloAppTests/Support/TestClock.h"
#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <QtCore/QSemaphore>

#include <memory>
#include <string>

namespace Brimlo::Testing {

/// While it lives, no work of a pool begins: what waits for it stays in that state, however quick
/// the work is.
class HeldWork {
public:
    explicit HeldWork(QThreadPool& pool = Background::readers());
    ~HeldWork();
    Q_DISABLE_COPY_MOVE(HeldWork)

private:
    std::shared_ptr<QSemaphore> gate_ = std::make_shared<QSemaphore>();
    int threads_;
};

/// Counts what comes home from the background while it lives.
class Arrivals : public QObject {
public:
    Arrivals();
    [[nodiscard]] int count() const { return count_; }
    bool eventFilter(QObject* to, QEvent* event) override;

private:
    int count_ = 0;
};

/// The application's model on a home folder of the test's own. Nothing of the machine's is
/// reached: the command line tool would be linked inside the home, and Docker's tool is the file
/// "docker" there, which is missing at first.
class ModelTest : public AppTest {
protected:
    ModelTest();
    ~ModelTest() override;

    Q_DISABLE_COPY_MOVE(ModelTest)

    /// The model, made at the first call: what stands in the home by then is what it starts with.
    AppModel& model();
    /// Ends the model and makes another one at the next call.
    void restart() { model_.reset(); }

    /// Writes a shell script that can be run, and returns its path, which few ask for.
    // NOLINTNEXTLINE(modernize-use-nodiscard)
    std::string writeProgram(const std::string& relative, const std::string& script = "") const;
    /// Gives this build a command line tool and returns its path.
    std::string bundleTool() { return writeProgram("resources/brimlo"); }

    /// Adds a rule to the user's own.
    static void addRule(UserRules::Draft draft);
    /// Two caches of one safe rule, one of a safe rule whose app "runs" (this very program) and
    /// that only video people have, and one item to review.
    void addSampleRules() const;

    /// A clean of so many new files in the folder "files".
    [[nodiscard]] CleanPlan planFiles(int count) const;

    /// What the model stands on.
    [[nodiscard]] Surroundings surroundings();

    /// Runs the event loop until the model has nothing under way.
    void finish();

    /// A suggestion run from beginning to end.
    void suggest();

    /// The suggestion of a rule; fails the test when there is none.
    const Suggestion& suggestion(const std::string& id);

    TestClock clock;

private:
    std::unique_ptr<AppModel> model_;
};

}  // namespace Brimlo::Testing
