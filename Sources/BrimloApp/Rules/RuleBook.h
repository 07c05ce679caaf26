#pragma once

#include "BrimloApp/Rules/RuleDraft.h"
#include "BrimloApp/Shell/AppModel.h"
#include "BrimloCore/Models/CleanupRule.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QUrl>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Brimlo {

class RuleRows;

/// All cleanup rules, and the draft in the editor. Main thread. Everything but an import runs at
/// once, since a rule is a small file.
class RuleBook : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")
    Q_MOC_INCLUDE("BrimloApp/Rules/RuleRows.h")

    Q_PROPERTY(Brimlo::RuleDraft* ruleDraft READ ruleDraft NOTIFY ruleDraftChanged)
    Q_PROPERTY(QStringList ruleIssues READ ruleIssues NOTIFY ruleIssuesChanged)
    Q_PROPERTY(int customCount READ customCount NOTIFY customRulesChanged)
    Q_PROPERTY(Brimlo::RuleRows* rows READ rows CONSTANT)

public:
    explicit RuleBook(AppModel& app);
    ~RuleBook() override;

    Q_DISABLE_COPY_MOVE(RuleBook)

    /// Reads the user's rules again.
    void reload();
    /// Reads again which built-in rules are switched off.
    void readDisabled();
    [[nodiscard]] const std::vector<CleanupRule>& customRules() const { return customRules_; }
    [[nodiscard]] int customCount() const { return static_cast<int>(customRules_.size()); }
    /// Problems in the user's rule files.
    [[nodiscard]] const QStringList& ruleIssues() const { return ruleIssues_; }
    void show(UserRules::Loaded rules);
    /// Those of this system.
    [[nodiscard]] const std::vector<CleanupRule>& builtInRules() const { return builtInRules_; }
    [[nodiscard]] const std::set<std::string>& disabledRuleIDs() const { return disabledRuleIDs_; }
    void setRuleDisabled(const std::string& id, bool disabled);

    /// The draft in the editor; null while the editor is closed.
    [[nodiscard]] RuleDraft* ruleDraft() const { return ruleDraft_.get(); }
    /// Opens the editor with the draft that was kept under `key`, or else with a new one.
    void openRuleDraft(
        const std::string& key, const std::function<std::unique_ptr<RuleDraft>()>& make);
    /// Opens the editor with a new rule, optionally for a path; its name is then the last component
    /// of the path unless another is given.
    void newRuleDraft(
        const std::optional<std::string>& path = std::nullopt,
        const std::optional<std::string>& name = std::nullopt);
    Q_INVOKABLE void newRule() { newRuleDraft(); }
    void editRule(const CleanupRule& rule);
    /// Closes the editor. What was typed is shown when the editor opens again for the same rule.
    Q_INVOKABLE void keepRuleDraft();
    /// Closes the editor and discards the draft.
    Q_INVOKABLE void closeRuleDraft();
    /// Saves the draft and closes the editor; on failure the editor stays open and says why.
    Q_INVOKABLE void saveRuleDraft();
    /// Why it failed; empty on success.
    QString saveRule(const CleanupRule& rule);
    /// Deletes one of the user's rules; its suggestions disappear at once. The message about it
    /// offers to put the rule back.
    void deleteRule(const CleanupRule& rule);

    /// Takes `busy`; fails while other work has it.
    Q_INVOKABLE void importRules(const QUrl& file);
    /// Overwrites an existing file: the dialog has asked.
    Q_INVOKABLE void exportRules(const QUrl& file);

    [[nodiscard]] RuleRows* rows() const { return rows_.get(); }

Q_SIGNALS:
    void ruleDraftChanged();
    void customRulesChanged();
    void ruleIssuesChanged();
    void disabledRuleIDsChanged();

private:
    void setRuleDraft(std::unique_ptr<RuleDraft> draft);
    void restore(const std::vector<CleanupRule>& deleted);

    AppModel& app_;
    std::unique_ptr<RuleDraft> ruleDraft_;
    std::string draftKey_;  ///< A rule's id, or what a new rule is made from.
    bool isDraftChanged_ = false;
    std::map<std::string, std::unique_ptr<RuleDraft>> keptDrafts_;  ///< By their keys.
    std::vector<CleanupRule> customRules_;
    QStringList ruleIssues_;
    const std::vector<CleanupRule> builtInRules_;
    std::set<std::string> disabledRuleIDs_;
    const std::unique_ptr<RuleRows> rows_;
};

}  // namespace Brimlo
