#pragma once

#include "BrimloApp/Shell/AppModel.h"
#include "BrimloApp/SmartClean/SuggestionRows.h"
#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Cleaner/CleanReport.h"
#include "BrimloCore/LeftAlone/LeftAlone.h"
#include "BrimloCore/Models/Suggestion.h"

#include <QtCore/QDateTime>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariantList>
#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace Brimlo {

class PlanReview;

/// The suggestions, and which items are ticked. Main thread; looks for suggestions in the
/// background.
class SmartClean : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")
    Q_MOC_INCLUDE("BrimloApp/Review/PlanReview.h")

    Q_PROPERTY(bool isSuggesting READ isSuggesting NOTIFY progressChanged)
    Q_PROPERTY(bool hasSuggested READ hasSuggested NOTIFY progressChanged)
    Q_PROPERTY(QString suggestPhase READ suggestPhase NOTIFY progressChanged)
    Q_PROPERTY(QDateTime suggestStarted READ suggestStarted NOTIFY progressChanged)
    // The figures of the plan for all ticked items.
    Q_PROPERTY(int planCount READ planCount NOTIFY currentPlanChanged)
    Q_PROPERTY(double planBytes READ planBytes NOTIFY currentPlanChanged)
    Q_PROPERTY(QString planFrees READ planFrees NOTIFY currentPlanChanged)
    Q_PROPERTY(QString planDestination READ planDestination NOTIFY currentPlanChanged)
    Q_PROPERTY(bool planHasFinalItems READ planHasFinalItems NOTIFY currentPlanChanged)
    Q_PROPERTY(bool previewRequested READ previewRequested WRITE setPreviewRequested NOTIFY
                   previewRequestedChanged)
    // What is never suggested: for each its `name`, its `title`, and whether it `isRule`.
    Q_PROPERTY(QVariantList leftAlone READ leftAlone NOTIFY leftAloneChanged)
    // Why the list could not be read; empty if it could.
    Q_PROPERTY(QString leftAloneFault READ leftAloneFault NOTIFY leftAloneChanged)
    Q_PROPERTY(Brimlo::SuggestionRows* rows READ rows CONSTANT)
    Q_PROPERTY(Brimlo::PlanReview* review READ review CONSTANT)

public:
    explicit SmartClean(AppModel& app);
    ~SmartClean() override;

    Q_DISABLE_COPY_MOVE(SmartClean)

    /// Starts a suggestion run for all audiences.
    Q_INVOKABLE void loadSuggestions();
    /// Starts a run that sees the latest changes: after the current run, if there is one.
    void suggestAnew();

    struct Progress {
        bool isSuggesting = false;
        QString phase;
        QDateTime started;
        bool hasSuggested = false;  ///< Whether a run has ended, with or without a finding.

        bool operator==(const Progress&) const = default;
    };
    void show(Progress progress);
    [[nodiscard]] bool isSuggesting() const { return progress_.isSuggesting; }
    [[nodiscard]] bool hasSuggested() const { return progress_.hasSuggested; }
    [[nodiscard]] const QString& suggestPhase() const { return progress_.phase; }
    [[nodiscard]] const QDateTime& suggestStarted() const { return progress_.started; }

    /// Shows the result of a run and ticks what it preselects.
    void show(std::vector<Suggestion> found);
    /// The suggestions, the largest first.
    [[nodiscard]] const std::vector<Suggestion>& suggestions() const { return suggestions_; }
    /// Removes what a clean removed, and unticks everything in its plan.
    void forget(const CleanPlan& plan, const CleanReport& report);
    /// Removes the suggestion of a rule.
    void forgetRule(const std::string& id);

    /// Never suggests a path or a rule again: it goes from the list at once, and the message about
    /// it, which calls it `title`, offers to take that back. On failure the message says so.
    void leavePathAlone(const std::string& path, const QString& title);
    void leaveRuleAlone(const std::string& id, const QString& title);
    /// Suggests again what was left alone.
    Q_INVOKABLE void suggestAgain(const QString& name, bool isRule);
    /// Reads again what is left alone.
    void readLeftAlone();
    [[nodiscard]] QVariantList leftAlone() const;
    [[nodiscard]] const QString& leftAloneFault() const { return leftAloneFault_; }

    /// The ticked paths.
    using Paths = std::unordered_set<std::string>;
    [[nodiscard]] const Paths& selected() const { return selected_; }
    /// Ticks exactly the items that are safe and owned by no running app.
    Q_INVOKABLE void selectAllSafe();
    Q_INVOKABLE void clearSelection();
    /// Ticks these items of a suggestion, or unticks them if all are ticked. Costs no more than
    /// that suggestion, whatever else was found.
    void toggle(const Suggestion& suggestion, const std::vector<std::string>& together);
    /// The same with all its items.
    void toggle(const Suggestion& suggestion);
    /// How many items of a suggestion are ticked.
    [[nodiscard]] std::int64_t ticked(const Suggestion& suggestion) const;
    /// What removing a suggestion's items, and nothing else, frees.
    struct Frees {
        std::string words;  ///< Of `FreedSpace`; empty where all of it is freed.
        std::string why;    ///< Why not all is.
    };
    [[nodiscard]] const Frees& frees(const Suggestion& suggestion) const;

    /// The plan for all ticked items, visible or not. Built anew at each call, which takes its time
    /// for thousands of items.
    [[nodiscard]] CleanPlan currentPlan() const { return planOf(suggestions_, selected_); }
    /// The plan for these paths. Any thread.
    [[nodiscard]] static CleanPlan planOf(
        const std::vector<Suggestion>& suggestions, const Paths& selected);
    [[nodiscard]] int planCount() const { return static_cast<int>(figures_.count); }
    [[nodiscard]] double planBytes() const { return static_cast<double>(figures_.bytes); }
    /// What they free, by the words of `FreedSpace`; empty where it is all that they take.
    [[nodiscard]] QString planFrees() const;
    /// Where the items go, as `CleanFigures` words it.
    [[nodiscard]] QString planDestination() const;
    [[nodiscard]] bool planHasFinalItems() const { return figures_.finalCount > 0; }

    /// Whether the screen should open its preview.
    [[nodiscard]] bool previewRequested() const { return previewRequested_; }
    void setPreviewRequested(bool requested);

    [[nodiscard]] SuggestionRows* rows() const { return rows_.get(); }
    /// The review of the plan.
    [[nodiscard]] PlanReview* review() const { return review_.get(); }

Q_SIGNALS:
    void progressChanged();
    void suggestionsChanged();
    void selectedChanged();
    void currentPlanChanged();
    void previewRequestedChanged();
    void leftAloneChanged();

private:
    void set(std::vector<Suggestion> suggestions, Paths selected);
    void setSuggestions(std::vector<Suggestion> suggestions) {
        set(std::move(suggestions), selected_);
    }
    void setSelected(Paths selected);
    /// Counts anew what is ticked of each suggestion, and gives the figures of all.
    CleanFigures countTicked();
    [[nodiscard]] bool changeLeftAlone(const std::function<void(LeftAlone&)>& body);
    /// Shows `left` and offers to show again what is there now.
    void leaveAlone(
        std::vector<Suggestion> left, const QString& title, std::function<void(LeftAlone&)> undo);

    AppModel& app_;
    Progress progress_;
    bool suggestAgain_ = false;  ///< Whether to run again afterwards.
    std::vector<Suggestion> suggestions_;
    Paths selected_;
    /// Of the ticked items of each suggestion, by its id, and of all. No item lies in another one
    /// (`resolveOverlaps`), so they are those of the plan.
    std::unordered_map<std::string, std::int64_t> tickedOf_;
    std::unordered_map<std::string, Frees> freesOf_;
    CleanFigures figures_;
    bool previewRequested_ = false;
    LeftAlone leftAlone_;
    QString leftAloneFault_;

    const std::unique_ptr<SuggestionRows> rows_;
    const std::unique_ptr<PlanReview> review_;
};

}  // namespace Brimlo
