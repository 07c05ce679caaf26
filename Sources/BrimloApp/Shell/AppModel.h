#pragma once

#include "BrimloApp/Settings/CLIInstaller.h"
#include "BrimloApp/Shell/Banner.h"
#include "BrimloApp/Shell/Clock.h"
#include "BrimloApp/Shell/RunInBackground.h"
#include "BrimloApp/Shell/Sections.h"
#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Docker/DockerClient.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/QQmlEngine>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Brimlo {

class Analyzer;
class Cleanup;
class DiskAccount;
class DuplicateSearch;
class History;
class LargeFileSearch;
class Machine;
class RuleBook;
class Settings;
class SmartClean;

/// What the model uses besides the user's home folder. Tests pass their own.
struct Surroundings {
    Clock* clock = &Clock::system();
    CLIInstaller::Places cli = CLIInstaller::usualPlaces();
    DockerClient::Places docker = DockerClient::usualPlaces();
    bool suggestsByItself = true;  ///< Whether it looks for what can go soon after the start.
};

/// The state behind every screen and all operations: one part for each screen, and here what they
/// share. Confined to the main thread.
///
/// Long operations run in the background on copies and deliver their result once. Each has a
/// property that is true while it runs, and does nothing when called meanwhile. A property notifies
/// only when its value changes. QML gets ratings, audiences and sort keys as the words of the core,
/// and an empty text for an absent one.
class AppModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_MOC_INCLUDE("BrimloApp/Analyzer/Analyzer.h")
    Q_MOC_INCLUDE("BrimloApp/Duplicates/DuplicateSearch.h")
    Q_MOC_INCLUDE("BrimloApp/History/History.h")
    Q_MOC_INCLUDE("BrimloApp/LargeFiles/LargeFileSearch.h")
    Q_MOC_INCLUDE("BrimloApp/Overview/DiskAccount.h")
    Q_MOC_INCLUDE("BrimloApp/Overview/Machine.h")
    Q_MOC_INCLUDE("BrimloApp/Review/Cleanup.h")
    Q_MOC_INCLUDE("BrimloApp/Rules/RuleBook.h")
    Q_MOC_INCLUDE("BrimloApp/Settings/Settings.h")
    Q_MOC_INCLUDE("BrimloApp/SmartClean/SmartClean.h")

    Q_PROPERTY(
        Brimlo::Sections::Section section READ section WRITE setSection NOTIFY sectionChanged)
    Q_PROPERTY(QString busy READ busy NOTIFY busyChanged)

    Q_PROPERTY(Brimlo::Banner* banner READ banner CONSTANT)
    Q_PROPERTY(Brimlo::Machine* machine READ machine CONSTANT)
    Q_PROPERTY(Brimlo::DiskAccount* diskAccount READ diskAccount CONSTANT)
    Q_PROPERTY(Brimlo::SmartClean* smartClean READ smartClean CONSTANT)
    Q_PROPERTY(Brimlo::Cleanup* cleanup READ cleanup CONSTANT)
    Q_PROPERTY(Brimlo::Analyzer* analyzer READ analyzer CONSTANT)
    Q_PROPERTY(Brimlo::LargeFileSearch* largeFiles READ largeFiles CONSTANT)
    Q_PROPERTY(Brimlo::DuplicateSearch* duplicates READ duplicates CONSTANT)
    Q_PROPERTY(Brimlo::RuleBook* rules READ rules CONSTANT)
    Q_PROPERTY(Brimlo::History* history READ history CONSTANT)
    Q_PROPERTY(Brimlo::Settings* settings READ settings CONSTANT)

public:
    /// Reads what the screens show first: the volume, the settings, the rules. Starts reading the
    /// journal, measuring the Trash and the hourly auto-clean; a second later, looks for what can
    /// go. Never fails.
    explicit AppModel(Surroundings surroundings, QObject* parent = nullptr);
    ~AppModel() override;

    Q_DISABLE_COPY_MOVE(AppModel)

    /// QML's singleton: the object in the engine's property "appModel".
    [[nodiscard]] static AppModel* create(QQmlEngine* engine, QJSEngine* scripts);

    // The parts, never null.
    [[nodiscard]] Banner* banner() const { return banner_.get(); }
    [[nodiscard]] Machine* machine() const { return machine_.get(); }
    [[nodiscard]] DiskAccount* diskAccount() const { return diskAccount_.get(); }
    [[nodiscard]] SmartClean* smartClean() const { return smartClean_.get(); }
    [[nodiscard]] Cleanup* cleanup() const { return cleanup_.get(); }
    [[nodiscard]] Analyzer* analyzer() const { return analyzer_.get(); }
    [[nodiscard]] LargeFileSearch* largeFiles() const { return largeFiles_.get(); }
    [[nodiscard]] DuplicateSearch* duplicates() const { return duplicates_.get(); }
    [[nodiscard]] RuleBook* rules() const { return rules_.get(); }
    [[nodiscard]] History* history() const { return history_.get(); }
    [[nodiscard]] Settings* settings() const { return settings_.get(); }

    [[nodiscard]] const Surroundings& surroundings() const { return surroundings_; }
    [[nodiscard]] const std::shared_ptr<Cleaner>& cleaner() const { return cleaner_; }

    [[nodiscard]] Section section() const { return section_; }
    void setSection(Section section);
    /// Refreshes the current section: repeats its search or reads its files again.
    Q_INVOKABLE void rescan();

    /// Takes back what the message is about; without a change there, the last clean.
    Q_INVOKABLE void undo();

    /// The long operation under way; empty if there is none.
    [[nodiscard]] const QString& busy() const { return busy_; }
    void setBusy(const QString& text);
    /// The result of work that takes `busy`.
    struct Outcome {
        std::string sentence;               ///< For the banner.
        std::vector<std::string> restored;  ///< Paths restored.
        std::vector<ItemProblem> stayed;    ///< Items that could not be restored.
    };
    /// Runs work that changes files in the background, with `text` as `busy`, then refreshes
    /// whatever it may have changed. Call it only while `busy` is empty.
    void runBusy(const QString& text, std::function<Outcome()> work);

    /// Shows entries in the file manager; on failure, the banner says so.
    void reveal(const std::vector<std::string>& paths);
    /// Opens a file with its application. Does not start programs, and says so.
    void openFile(const std::string& path);

Q_SIGNALS:
    void sectionChanged();
    void busyChanged();

private:
    void suggestSoon();

    /// Repeats the searches whose folders contain restored items.
    void findAgain(const std::vector<std::string>& restored);

    const Surroundings surroundings_;
    const std::shared_ptr<Cleaner> cleaner_;
    Section section_ = Section::Overview;
    std::unique_ptr<Clock::Pending> suggestTask_;
    QString busy_;

    const std::unique_ptr<Banner> banner_;
    const std::unique_ptr<Machine> machine_;
    const std::unique_ptr<DiskAccount> diskAccount_;
    const std::unique_ptr<SmartClean> smartClean_;
    const std::unique_ptr<Cleanup> cleanup_;
    const std::unique_ptr<Analyzer> analyzer_;
    const std::unique_ptr<LargeFileSearch> largeFiles_;
    const std::unique_ptr<DuplicateSearch> duplicates_;
    const std::unique_ptr<RuleBook> rules_;
    const std::unique_ptr<History> history_;
    const std::unique_ptr<Settings> settings_;
};

}  // namespace Brimlo
