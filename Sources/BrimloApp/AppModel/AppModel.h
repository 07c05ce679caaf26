#pragma once

#include "BrimloApp/AppModel/JournalReading.h"
#include "BrimloApp/AppModel/ReportFigures.h"
#include "BrimloApp/AppModel/RuleDraft.h"
#include "BrimloApp/AppModel/Section.h"
#include "BrimloApp/AppModel/SuggestionFigures.h"
#include "BrimloApp/AppModel/Surroundings.h"
#include "BrimloApp/AppModel/VolumeFigures.h"
#include "BrimloCore/Cleaner/AutoCleaner.h"
#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Cleaner/DuplicateFinder.h"
#include "BrimloCore/DiskScanner/FileNode.h"
#include "BrimloCore/DiskScanner/ScanControl.h"
#include "BrimloCore/DiskScanner/UnreadableFolders.h"
#include "BrimloCore/Models/CleanupRule.h"
#include "BrimloCore/Models/Suggestion.h"
#include "BrimloCore/Support/AppConfig.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <QtCore/QDateTime>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QUrl>
#include <QtQml/QQmlEngine>
#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Brimlo {

/// The state of every screen, and all that can be done from them.
///
/// One object, confined to the main thread. The screens read its properties and call its
/// operations; what takes long runs in the background, where it is given copies, and comes home
/// once. Each long operation has a boolean that is true while it runs, and does nothing when called
/// meanwhile. A property notifies when its value has changed and never else.
///
/// Read on in the order of the sources: AppModel.cpp (the window), SmartCleanFlow.cpp,
/// AnalysisFlow.cpp, HistoryFlow.cpp, RuleFlow.cpp, BackgroundFlow.cpp, VolumeFacts.cpp. To QML,
/// enumerations are their raw words, and an absent text is an empty one.
class AppModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    // The window.
    Q_PROPERTY(QString section READ sectionID WRITE setSectionID NOTIFY sectionChanged)
    Q_PROPERTY(QString banner READ banner WRITE setBanner NOTIFY bannerChanged)
    Q_PROPERTY(QString busy READ busy NOTIFY busyChanged)

    // Smart Clean.
    Q_PROPERTY(bool isSuggesting READ isSuggesting NOTIFY isSuggestingChanged)
    Q_PROPERTY(QString suggestPhase READ suggestPhase NOTIFY suggestPhaseChanged)
    Q_PROPERTY(QDateTime suggestStarted READ suggestStarted NOTIFY suggestStartedChanged)
    Q_PROPERTY(Brimlo::SuggestionFigures found READ found NOTIFY suggestionsChanged)
    Q_PROPERTY(int suggestionCount READ suggestionCount NOTIFY suggestionsChanged)
    Q_PROPERTY(int planCount READ planCount NOTIFY currentPlanChanged)
    Q_PROPERTY(double planBytes READ planBytes NOTIFY currentPlanChanged)
    Q_PROPERTY(double planFinalBytes READ planFinalBytes NOTIFY currentPlanChanged)
    Q_PROPERTY(bool planHasFinalItems READ planHasFinalItems NOTIFY currentPlanChanged)
    Q_PROPERTY(QString personaFilter READ personaFilterID WRITE setPersonaFilterID NOTIFY
                   personaFilterChanged)
    Q_PROPERTY(bool showResult READ showResult WRITE setShowResult NOTIFY showResultChanged)
    Q_PROPERTY(Brimlo::ReportFigures lastReport READ reportFigures NOTIFY lastReportChanged)
    Q_PROPERTY(bool isCleaning READ isCleaning NOTIFY isCleaningChanged)
    Q_PROPERTY(QString cleaningPath READ cleaningPath NOTIFY cleaningPathChanged)
    Q_PROPERTY(int cleaningDone READ cleaningDone NOTIFY cleaningDoneChanged)
    Q_PROPERTY(int cleaningTotal READ cleaningTotal NOTIFY cleaningTotalChanged)

    // Space Analyzer.
    Q_PROPERTY(QString scanRoot READ scanRootText WRITE setScanRootText NOTIFY scanRootChanged)
    Q_PROPERTY(int treeVersion READ treeVersion NOTIFY treeVersionChanged)
    Q_PROPERTY(bool hasTree READ hasTree NOTIFY currentChanged)
    Q_PROPERTY(bool isScanning READ isScanning NOTIFY isScanningChanged)
    Q_PROPERTY(double scanFiles READ scanFiles NOTIFY scanFilesChanged)
    Q_PROPERTY(double scanBytes READ scanBytes NOTIFY scanBytesChanged)
    Q_PROPERTY(QString scanPath READ scanPath NOTIFY scanPathChanged)
    Q_PROPERTY(int unreadableCount READ unreadableCount NOTIFY unreadableCountChanged)
    Q_PROPERTY(int leftOutCount READ leftOutCount NOTIFY unreadableCountChanged)
    Q_PROPERTY(QString sortKey READ sortKeyID WRITE setSortKeyID NOTIFY sortKeyChanged)
    Q_PROPERTY(bool ascending READ ascending WRITE setAscending NOTIFY ascendingChanged)
    Q_PROPERTY(bool previewRequested READ previewRequested WRITE setPreviewRequested NOTIFY
                   previewRequestedChanged)
    Q_PROPERTY(int analyzerMode READ analyzerMode WRITE setAnalyzerMode NOTIFY analyzerModeChanged)

    // Duplicates and large files.
    Q_PROPERTY(QString dupRoot READ dupRootText WRITE setDupRootText NOTIFY dupRootChanged)
    Q_PROPERTY(bool isFindingDupes READ isFindingDupes NOTIFY isFindingDupesChanged)
    Q_PROPERTY(bool dupsSearched READ dupsSearched NOTIFY dupsSearchedChanged)
    Q_PROPERTY(int dupsUnreadable READ dupsUnreadable NOTIFY dupsSearchedChanged)
    Q_PROPERTY(QString largeRoot READ largeRootText WRITE setLargeRootText NOTIFY largeRootChanged)
    Q_PROPERTY(bool isFindingLarge READ isFindingLarge NOTIFY isFindingLargeChanged)
    Q_PROPERTY(bool largeSearched READ largeSearched NOTIFY largeSearchedChanged)
    Q_PROPERTY(int largeUnreadable READ largeUnreadable NOTIFY largeSearchedChanged)

    // History.
    Q_PROPERTY(QString journalProblem READ journalProblem NOTIFY journalProblemChanged)
    Q_PROPERTY(bool isJournalRead READ isJournalRead NOTIFY journalChanged)

    // Rules.
    Q_PROPERTY(Brimlo::RuleDraft* ruleDraft READ ruleDraft NOTIFY ruleDraftChanged)
    Q_PROPERTY(QStringList ruleIssues READ ruleIssues NOTIFY ruleIssuesChanged)

    // The machine and the settings.
    Q_PROPERTY(Brimlo::VolumeFigures volume READ volumeFigures NOTIFY volumeChanged)
    Q_PROPERTY(double trashBytes READ trashBytes NOTIFY trashBytesChanged)
    Q_PROPERTY(bool hasFullDiskAccess READ hasFullDiskAccess NOTIFY hasFullDiskAccessChanged)
    Q_PROPERTY(
        bool autoCleanEnabled READ autoCleanEnabled WRITE setAutoCleanEnabled NOTIFY configChanged)
    Q_PROPERTY(int freeSpaceThresholdGB READ freeSpaceThresholdGB WRITE setFreeSpaceThresholdGB
                   NOTIFY configChanged)
    Q_PROPERTY(int staleDays READ staleDays WRITE setStaleDays NOTIFY configChanged)
    Q_PROPERTY(int trashRetentionDays READ trashRetentionDays WRITE setTrashRetentionDays NOTIFY
                   configChanged)
    Q_PROPERTY(bool autoCleanIncludesCustomRules READ autoCleanIncludesCustomRules WRITE
                   setAutoCleanIncludesCustomRules NOTIFY configChanged)
    Q_PROPERTY(bool hasBundledCLI READ hasBundledCLI CONSTANT)
    Q_PROPERTY(bool agentInstalled READ agentInstalled NOTIFY agentInstalledChanged)
    Q_PROPERTY(bool agentIsOfOtherCopy READ agentIsOfOtherCopy NOTIFY agentIsOfOtherCopyChanged)
    Q_PROPERTY(bool cliInstalled READ cliInstalled NOTIFY cliInstalledChanged)
    Q_PROPERTY(QString cliPlace READ cliPlace NOTIFY cliInstalledChanged)
    Q_PROPERTY(bool offersCLI READ offersCLI NOTIFY offersCLIChanged)

public:
    /// Reads what the screens show first: the volume, the settings, the rules. Starts the reading
    /// of the journal, the measuring of the Trash and the hourly auto-clean; never fails.
    explicit AppModel(Surroundings surroundings, QObject* parent = nullptr);
    ~AppModel() override;

    AppModel(const AppModel&) = delete;
    AppModel& operator=(const AppModel&) = delete;
    AppModel(AppModel&&) = delete;
    AppModel& operator=(AppModel&&) = delete;

    /// The model that the engine's property "appModel" holds, for QML's singleton of this name.
    [[nodiscard]] static AppModel* create(QQmlEngine* engine, QJSEngine* scripts);

    // ---- The window: AppModel.cpp -----------------------------------------------------------

    [[nodiscard]] Section section() const { return section_; }
    void setSection(Section section);

    /// A sentence about the last operation; empty when there is none.
    [[nodiscard]] const QString& banner() const { return banner_; }

    /// Shows a sentence, which goes by itself after 8 seconds, or after 20 when its words tell of a
    /// failure; an empty one takes the shown one away.
    void setBanner(const QString& text);

    /// Shows entries in the file manager; when there is none, the banner says so.
    void reveal(const std::vector<std::string>& paths);

    /// Refreshes the current section: starts its search again, or reads its files again.
    Q_INVOKABLE void rescan();

    /// What long work is under way; empty when none is.
    [[nodiscard]] const QString& busy() const { return busy_; }

    // ---- Smart Clean: SmartCleanFlow.cpp ----------------------------------------------------

    /// Starts a suggestion run for all audiences.
    Q_INVOKABLE void loadSuggestions();

    /// The result of the last suggestion run, the largest first.
    [[nodiscard]] const std::vector<Suggestion>& suggestions() const { return suggestions_; }
    /// Those of the audience chosen.
    [[nodiscard]] std::vector<const Suggestion*> visibleSuggestions() const;
    [[nodiscard]] int suggestionCount() const { return static_cast<int>(suggestions_.size()); }
    [[nodiscard]] bool isSuggesting() const { return isSuggesting_; }
    [[nodiscard]] const QString& suggestPhase() const { return suggestPhase_; }
    [[nodiscard]] const QDateTime& suggestStarted() const { return suggestStarted_; }

    /// The paths ticked.
    [[nodiscard]] const std::set<std::string>& selected() const { return selected_; }
    /// The plan for what is ticked, whether the audience filter shows it or not.
    [[nodiscard]] const CleanPlan& currentPlan() const { return currentPlan_; }
    [[nodiscard]] int planCount() const { return static_cast<int>(currentPlan_.items().size()); }
    [[nodiscard]] double planBytes() const {
        return static_cast<double>(currentPlan_.totalBytes());
    }
    [[nodiscard]] double planFinalBytes() const {
        return static_cast<double>(currentPlan_.finalBytes());
    }
    [[nodiscard]] bool planHasFinalItems() const { return currentPlan_.hasFinalItems(); }
    [[nodiscard]] std::optional<Persona> personaFilter() const { return personaFilter_; }
    void setPersonaFilter(std::optional<Persona> persona);
    [[nodiscard]] DisposalMode disposal() const { return disposal_; }

    /// Ticks all that is safe and owned by no running app, and nothing else.
    Q_INVOKABLE void selectAllSafe();
    Q_INVOKABLE void clearSelection();
    /// Ticks all items, or unticks them when all are ticked.
    void toggle(const Suggestion& suggestion);
    void toggle(const std::string& path);

    /// Carries a plan out, then calls `after`. During another clean it only says so.
    void runClean(const CleanPlan& plan, DisposalMode mode, std::function<void()> after = {});

    /// What came of the last clean.
    [[nodiscard]] const std::optional<CleanReport>& lastReport() const { return lastReport_; }
    [[nodiscard]] bool showResult() const { return showResult_; }
    void setShowResult(bool show);
    [[nodiscard]] bool isCleaning() const { return isCleaning_; }
    [[nodiscard]] const QString& cleaningPath() const { return cleaningPath_; }
    [[nodiscard]] int cleaningDone() const { return cleaningDone_; }
    [[nodiscard]] int cleaningTotal() const { return cleaningTotal_; }

    // ---- Space Analyzer, Large Files, Duplicates: AnalysisFlow.cpp --------------------------

    /// Starts a scan of `path`, or of the root set before.
    void startScan(const std::optional<std::string>& path = std::nullopt);
    Q_INVOKABLE void scan() { startScan(); }
    Q_INVOKABLE void scanHome();
    Q_INVOKABLE void scanWholeDisk();
    /// Starts a scan of a dropped folder; false when the address is not one of a folder.
    Q_INVOKABLE bool scanDropped(const QUrl& address);
    Q_INVOKABLE void cancelScan();

    [[nodiscard]] const std::string& scanRoot() const { return scanRoot_; }
    void setScanRoot(std::string path);
    /// The top of the last finished tree; null when there is none.
    [[nodiscard]] const std::shared_ptr<FileNode>& root() const { return root_; }
    /// The folder that is shown.
    [[nodiscard]] const std::shared_ptr<FileNode>& current() const { return current_; }
    [[nodiscard]] bool hasTree() const { return current_ != nullptr; }
    /// Shows a folder of the tree.
    void setCurrent(std::shared_ptr<FileNode> folder);
    /// The children of the folder that is shown, in the order chosen. Sorts them at each call.
    [[nodiscard]] std::vector<std::shared_ptr<FileNode>> currentChildren() const;
    /// Shows the folder, if it has something in it.
    void drill(const std::shared_ptr<FileNode>& node);
    /// Rises when nodes have left the tree.
    [[nodiscard]] int treeVersion() const { return treeVersion_; }
    [[nodiscard]] bool isScanning() const { return isScanning_; }
    [[nodiscard]] double scanFiles() const { return static_cast<double>(scanFiles_); }
    [[nodiscard]] double scanBytes() const { return static_cast<double>(scanBytes_); }
    [[nodiscard]] const QString& scanPath() const { return scanPath_; }
    [[nodiscard]] int unreadableCount() const { return unreadableCount_; }
    /// Other volumes below the scanned folder.
    [[nodiscard]] int leftOutCount() const { return leftOutCount_; }
    [[nodiscard]] const std::vector<UnreadableArea>& unreadableAreas() const {
        return unreadableAreas_;
    }
    [[nodiscard]] FileNode::SortKey sortKey() const { return sortKey_; }
    void setSortKey(FileNode::SortKey key);
    [[nodiscard]] bool ascending() const { return ascending_; }
    void setAscending(bool ascending);
    /// Whether Smart Clean is to open its preview.
    [[nodiscard]] bool previewRequested() const { return previewRequested_; }
    void setPreviewRequested(bool requested);
    /// 0 shows the list, any other value the treemap.
    [[nodiscard]] int analyzerMode() const { return analyzerMode_; }
    void setAnalyzerMode(int mode);

    /// The plan to dispose of these nodes. Aggregates have nothing that could go.
    [[nodiscard]] static CleanPlan planFor(const std::vector<std::shared_ptr<FileNode>>& nodes);
    /// Disposes of nodes, and takes those that went out of the tree and the large files that are
    /// shown by then, whichever scan or search those come from.
    void dispose(const std::vector<std::shared_ptr<FileNode>>& nodes, DisposalMode mode);

    Q_INVOKABLE void findLargeFiles();
    Q_INVOKABLE void findLargeFilesInHome();
    Q_INVOKABLE bool findLargeFilesInDropped(const QUrl& address);
    Q_INVOKABLE void cancelLargeFiles();
    /// Moves a file to the Trash; its row goes when the file went.
    void trashLargeFile(const std::shared_ptr<FileNode>& node);
    [[nodiscard]] const std::string& largeRoot() const { return largeRoot_; }
    void setLargeRoot(std::string path);
    /// The largest first.
    [[nodiscard]] const std::vector<std::shared_ptr<FileNode>>& largeFiles() const {
        return largeFiles_;
    }
    [[nodiscard]] bool isFindingLarge() const { return isFindingLarge_; }
    /// Whether the list is what a search found that nobody cancelled.
    [[nodiscard]] bool largeSearched() const { return largeSearched_; }
    /// Folders that this search could not read.
    [[nodiscard]] int largeUnreadable() const { return largeUnreadable_; }

    Q_INVOKABLE void findDuplicates();
    Q_INVOKABLE void findDuplicatesInHome();
    Q_INVOKABLE bool findDuplicatesInDropped(const QUrl& address);
    /// Ends a search without a result.
    Q_INVOKABLE void cancelDuplicates();
    /// Replaces all but the first file of a group with clones of it; takes `busy`. The group goes
    /// in any case.
    void cloneDuplicates(const DuplicateGroup& group);
    /// Moves all but the first file of a group to the Trash; the group goes in any case.
    void trashDuplicates(const DuplicateGroup& group);
    [[nodiscard]] const std::string& dupRoot() const { return dupRoot_; }
    void setDupRoot(std::string path);
    /// The most wasted bytes first.
    [[nodiscard]] const std::vector<DuplicateGroup>& dupGroups() const { return dupGroups_; }
    [[nodiscard]] bool isFindingDupes() const { return isFindingDupes_; }
    [[nodiscard]] bool dupsSearched() const { return dupsSearched_; }
    [[nodiscard]] int dupsUnreadable() const { return dupsUnreadable_; }

    // ---- History and the Trash: HistoryFlow.cpp ---------------------------------------------

    /// Whether the journal has been read since the start. That waits in the background for other
    /// processes that change it.
    [[nodiscard]] bool isJournalRead() const { return journalReading_ > 0; }
    /// The journal as last read, newest first.
    [[nodiscard]] const std::vector<JournalEntry>& journal() const { return journal_; }
    /// The same by cleanup, newest first.
    [[nodiscard]] const std::vector<HistoryBatch>& historyBatches() const {
        return historyBatches_;
    }
    /// Why the journal can't be read; empty when it can.
    [[nodiscard]] const QString& journalProblem() const { return journalProblem_; }
    void undoBatch(const HistoryBatch& batch);
    /// Puts back the items of these journal entries, as far as they can be.
    void undoAll(const std::vector<Uuid>& ids);
    /// Puts back what the last clean took.
    Q_INVOKABLE void undoLastClean();
    Q_INVOKABLE void emptyTrash();
    /// Deletes from the Trash what Brimlo moved there, however short ago.
    Q_INVOKABLE void purgeOwnTrash();

    // ---- Rules: RuleFlow.cpp ----------------------------------------------------------------

    /// The rule being written; null when the editor is closed.
    [[nodiscard]] RuleDraft* ruleDraft() const { return ruleDraft_.get(); }
    /// Opens the editor on a new rule, which may begin with a path; its name then is the path's
    /// last component unless another is given.
    void newRuleDraft(
        const std::optional<std::string>& path = std::nullopt,
        const std::optional<std::string>& name = std::nullopt);
    Q_INVOKABLE void newRule() { newRuleDraft(); }
    void editRule(const CleanupRule& rule);
    /// Closes the editor and forgets what stands in it.
    Q_INVOKABLE void closeRuleDraft();
    /// Saves what stands in the editor and closes it; where that failed, the editor stays and says
    /// why.
    Q_INVOKABLE void saveRuleDraft();
    /// The reason where it failed; empty else.
    QString saveRule(const CleanupRule& rule);
    /// Deletes one of the user's rules; its findings disappear at once.
    void deleteRule(const CleanupRule& rule);
    void setRuleDisabled(const std::string& id, bool disabled);
    /// Takes `busy`, and fails while other work has it.
    Q_INVOKABLE void importRules(const QUrl& file);
    /// Replaces a file that is there: whoever chose it was asked.
    Q_INVOKABLE void exportRules(const QUrl& file);

    [[nodiscard]] const std::vector<CleanupRule>& customRules() const { return customRules_; }
    /// What of the user's rule files could not be used, and why.
    [[nodiscard]] const QStringList& ruleIssues() const { return ruleIssues_; }
    [[nodiscard]] const std::vector<CleanupRule>& builtInRules() const { return builtInRules_; }
    [[nodiscard]] const std::set<std::string>& disabledRuleIDs() const { return disabledRuleIDs_; }

    // ---- Auto-clean, the background job, the command line tool: BackgroundFlow.cpp ----------

    /// Runs the unattended clean; `force` also where the settings have it off. Does nothing while
    /// other work is under way.
    Q_INVOKABLE void runAutoClean(bool force, bool dryRun);
    /// Installs the background job or takes it away. Blocks until that is done.
    Q_INVOKABLE void setAgent(bool enabled);
    /// Links the command line tool into the user's path. Blocks while the system asks for the
    /// administrator's password.
    Q_INVOKABLE void installCLI();
    /// Asks once, and never again, whether to install the command line tool: `offersCLI` turns true
    /// until it is answered.
    Q_INVOKABLE void offerCLIInstallIfNeeded();
    Q_INVOKABLE void answerCLIOffer(bool install);

    [[nodiscard]] bool hasBundledCLI() const { return CLIInstaller::bundledCLI(cli_).has_value(); }
    [[nodiscard]] bool agentInstalled() const { return agentInstalled_; }
    /// Whether the job starts the tool of another copy of the application.
    [[nodiscard]] bool agentIsOfOtherCopy() const { return agentIsOfOtherCopy_; }
    [[nodiscard]] bool cliInstalled() const { return !cliPlace_.isEmpty(); }
    /// Where a terminal finds the command line tool; empty when it does not.
    [[nodiscard]] QString cliPlace() const { return cliPlace_; }
    [[nodiscard]] bool offersCLI() const { return offersCLI_; }

    // ---- The machine and the settings: VolumeFacts.cpp -------------------------------------

    /// The settings as the file said when last read: at the start, before each auto-clean and
    /// suggestion run, and when the screen of the settings opens.
    [[nodiscard]] const AppConfig& config() const { return config_; }
    /// Changes the settings in their file, and shows what it says then. Whether that went well; if
    /// not, the banner tells.
    bool changeConfig(const std::function<void(AppConfig&)>& body);
    /// The volume of the home folder; nullopt when the system doesn't tell.
    [[nodiscard]] const std::optional<VolumeInfo::Snapshot>& volume() const { return volume_; }
    [[nodiscard]] bool hasFullDiskAccess() const { return hasFullDiskAccess_; }
    /// The size of the Trash as last measured.
    [[nodiscard]] double trashBytes() const { return static_cast<double>(trashBytes_); }
    /// Whether the folders that the system hides from applications can be read.
    [[nodiscard]] static bool checkFullDiskAccess();
    /// Reads the volume and the access anew, and measures the Trash in the background.
    Q_INVOKABLE void refreshVolume();
    /// Opens the page of the system's settings on access to the disk, where there is one.
    Q_INVOKABLE void openPrivacySettings();

    // ---- The same, in the words of QML ------------------------------------------------------

    [[nodiscard]] QString sectionID() const;
    void setSectionID(const QString& id);
    [[nodiscard]] QString personaFilterID() const;
    void setPersonaFilterID(const QString& id);
    [[nodiscard]] QString sortKeyID() const;
    void setSortKeyID(const QString& id);
    [[nodiscard]] QString scanRootText() const;
    void setScanRootText(const QString& path);
    [[nodiscard]] QString dupRootText() const;
    void setDupRootText(const QString& path);
    [[nodiscard]] QString largeRootText() const;
    void setLargeRootText(const QString& path);
    [[nodiscard]] VolumeFigures volumeFigures() const;
    [[nodiscard]] ReportFigures reportFigures() const { return ReportFigures::of(lastReport_); }
    [[nodiscard]] SuggestionFigures found() const { return SuggestionFigures::of(suggestions_); }
    [[nodiscard]] bool autoCleanEnabled() const { return config_.autoCleanEnabled; }
    void setAutoCleanEnabled(bool enabled);
    [[nodiscard]] int freeSpaceThresholdGB() const {
        return static_cast<int>(config_.freeSpaceThresholdGB);
    }
    void setFreeSpaceThresholdGB(int gigabytes);
    [[nodiscard]] int staleDays() const { return static_cast<int>(config_.staleDays); }
    void setStaleDays(int days);
    [[nodiscard]] int trashRetentionDays() const {
        return static_cast<int>(config_.trashRetentionDays);
    }
    void setTrashRetentionDays(int days);
    [[nodiscard]] bool autoCleanIncludesCustomRules() const {
        return config_.autoCleanIncludesCustomRules;
    }
    void setAutoCleanIncludesCustomRules(bool include);

Q_SIGNALS:
    void sectionChanged();
    void bannerChanged();
    void busyChanged();

    void suggestionsChanged();
    void isSuggestingChanged();
    void suggestPhaseChanged();
    void suggestStartedChanged();
    void selectedChanged();
    void currentPlanChanged();
    void personaFilterChanged();
    void lastReportChanged();
    void showResultChanged();
    void isCleaningChanged();
    void cleaningPathChanged();
    void cleaningDoneChanged();
    void cleaningTotalChanged();

    void scanRootChanged();
    void rootChanged();
    void currentChanged();
    void treeVersionChanged();
    void isScanningChanged();
    void scanFilesChanged();
    void scanBytesChanged();
    void scanPathChanged();
    void unreadableCountChanged();
    void unreadableAreasChanged();
    void sortKeyChanged();
    void ascendingChanged();
    void previewRequestedChanged();
    void analyzerModeChanged();
    void dupRootChanged();
    void dupGroupsChanged();
    void isFindingDupesChanged();
    void dupsSearchedChanged();
    void largeRootChanged();
    void largeFilesChanged();
    void isFindingLargeChanged();
    void largeSearchedChanged();

    void journalChanged();
    void journalProblemChanged();

    void ruleDraftChanged();
    void customRulesChanged();
    void ruleIssuesChanged();
    void disabledRuleIDsChanged();

    void agentInstalledChanged();
    void agentIsOfOtherCopyChanged();
    void cliInstalledChanged();
    void offersCLIChanged();

    void configChanged();
    void volumeChanged();
    void hasFullDiskAccessChanged();
    void trashBytesChanged();

private:
    friend struct CannedState;  // For pictures of states that no disk at hand is in.

    /// Stores a value and notifies, when it is another one.
    template <typename T>
    void assign(T& field, T value, void (AppModel::*changed)()) {
        if (field != value) {
            field = std::move(value);
            Q_EMIT(this->*changed)();
        }
    }

    void setBusy(const QString& text) { assign(busy_, text, &AppModel::busyChanged); }
    void scheduleBannerDismiss();

    /// Starts a run that sees what has just changed: after the one under way, if there is one.
    void suggestAnew();
    void setSuggestions(std::vector<Suggestion> suggestions);
    void setSelected(std::set<std::string> paths);
    void rebuildPlan();
    void takeCleaned(const CleanPlan& plan, const CleanReport& report);

    /// Scans the tree's folder once more and opens the same folder in it; so do the two below.
    void scanAnew();
    void findLargeFilesAnew();
    void findDuplicatesAnew();
    void sampleScan();
    void takeTree(std::shared_ptr<FileNode> tree);
    void removeDisposed(const std::vector<std::shared_ptr<FileNode>>& nodes);
    void takeOutOfTree(const std::string& path);
    void takeOutOfLargeFiles(const std::set<std::string>& paths);
    void forgetWhatWent();
    void removeGroup(const Uuid& id);

    void readJournal();
    void take(JournalReading reading);
    /// What came of an operation that takes `busy`.
    struct Outcome {
        std::string sentence;               ///< For the banner.
        std::vector<std::string> restored;  ///< Where items are again.
    };
    /// Does such an operation, `work` in the background.
    void runBusy(const QString& text, std::function<Outcome()> work);
    /// Looks anew for whatever is listed of the places where items came back.
    void takeRestored(const std::vector<std::string>& paths);

    void setRuleDraft(std::unique_ptr<RuleDraft> draft);
    void reloadCustomRules();
    void take(UserRules::Loaded rules);
    /// Reads the settings anew. Whether they could be read; if not, the banner tells, once.
    bool readConfig();

    void measureTrash();

    void startAutoCleanTimer();
    void readAgent();

    // In the order in which the screens are told of them; the window's first.
    Clock& clock_;
    const CLIInstaller::Places cli_;
    const DockerClient::Places docker_;

    Section section_ = Section::overview;
    QString banner_;
    std::unique_ptr<Clock::Pending> bannerTask_;
    QString busy_;

    std::optional<VolumeInfo::Snapshot> volume_;
    AppConfig config_;
    QString configFault_;  ///< Why the settings could not be read; empty when they could.
    bool hasFullDiskAccess_ = false;
    std::int64_t trashBytes_ = 0;
    enum class TrashMeasuring { none, runs, runsAndIsToFollow };
    TrashMeasuring trashMeasuring_ = TrashMeasuring::none;

    std::vector<Suggestion> suggestions_;
    bool isSuggesting_ = false;
    bool suggestAgain_ = false;  ///< Another run is wanted after this one.
    QString suggestPhase_;
    QDateTime suggestStarted_ = QDateTime::currentDateTime();
    std::set<std::string> selected_;
    CleanPlan currentPlan_{{}};
    std::optional<Persona> personaFilter_;
    DisposalMode disposal_ = DisposalMode::trash;
    std::optional<CleanReport> lastReport_;
    bool showResult_ = false;
    bool isCleaning_ = false;
    QString cleaningPath_;
    int cleaningDone_ = 0;
    int cleaningTotal_ = 0;

    std::string scanRoot_;
    std::shared_ptr<FileNode> root_;
    std::shared_ptr<FileNode> current_;
    int treeVersion_ = 0;
    bool isScanning_ = false;
    bool scanAgain_ = false;
    std::string reopened_;  ///< The folder to open in the tree of the scan under way.
    std::int64_t scanFiles_ = 0;
    std::int64_t scanBytes_ = 0;
    QString scanPath_;
    int unreadableCount_ = 0;
    int leftOutCount_ = 0;
    std::vector<UnreadableArea> unreadableAreas_;
    FileNode::SortKey sortKey_ = FileNode::SortKey::size;
    bool ascending_ = false;
    std::shared_ptr<ScanControl> scanControl_;
    std::unique_ptr<Clock::Pending> scanSampling_;
    std::set<std::string> wentMeanwhile_;  ///< Since the scan or search under way began.
    bool previewRequested_ = false;
    int analyzerMode_ = 0;
    std::string dupRoot_;
    std::vector<DuplicateGroup> dupGroups_;
    bool isFindingDupes_ = false;
    bool findDupesAgain_ = false;
    bool dupsSearched_ = false;
    int dupsUnreadable_ = 0;
    std::shared_ptr<ScanControl> dupControl_;
    std::string largeRoot_;
    std::vector<std::shared_ptr<FileNode>> largeFiles_;
    bool isFindingLarge_ = false;
    bool findLargeAgain_ = false;
    bool largeSearched_ = false;
    int largeUnreadable_ = 0;
    std::shared_ptr<ScanControl> largeControl_;

    std::unique_ptr<RuleDraft> ruleDraft_;
    std::vector<CleanupRule> customRules_;
    QStringList ruleIssues_;
    const std::vector<CleanupRule>& builtInRules_;
    std::set<std::string> disabledRuleIDs_;

    bool agentInstalled_ = false;
    bool agentIsOfOtherCopy_ = false;
    QString cliPlace_;
    bool offersCLI_ = false;
    std::unique_ptr<Clock::Pending> autoTimer_;

    const std::shared_ptr<Cleaner> cleaner_;
    std::vector<JournalEntry> journal_;
    std::vector<HistoryBatch> historyBatches_;
    QString journalProblem_;
    std::uint64_t journalReading_ = 0;  ///< The number of the reading that `journal_` holds.
};

}  // namespace Brimlo
