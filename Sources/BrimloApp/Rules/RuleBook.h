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

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Brimlo {

class RuleRows;

/// All cleanup rules, as their files say, and the one being written. Main thread. All but an import
/// runs at once: a rule is a small file.
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

    /// Reads the user's rules anew.
    void reload();
    /// Reads anew which built-in rules are switched off.
    void readDisabled();
    [[nodiscard]] const std::vector<CleanupRule>& customRules() const { return customRules_; }
    [[nodiscard]] int customCount() const { return static_cast<int>(customRules_.size()); }
    /// What of the user's rule files could not be used, and why.
    [[nodiscard]] const QStringList& ruleIssues() const { return ruleIssues_; }
    void show(UserRules::Loaded rules);
    [[nodiscard]] const std::vector<CleanupRule>& builtInRules() const { return builtInRules_; }
    [[nodiscard]] const std::set<std::string>& disabledRuleIDs() const { return disabledRuleIDs_; }
    void setRuleDisabled(const std::string& id, bool disabled);

    /// The rule being written; null when the editor is closed.
    [[nodiscard]] RuleDraft* ruleDraft() const { return ruleDraft_.get(); }
    /// Opens the editor on a new rule, which may begin with a path; its name then is the path's
    /// last component unless another is given.
    void newRuleDraft(
        const std::optional<std::string>& path = std::nullopt,
        const std::optional<std::string>& name = std::nullopt);
    Q_INVOKABLE void newRule() { newRuleDraft(); }
    void editRule(const CleanupRule& rule);
    /// Closes the editor and forgets its fields.
    Q_INVOKABLE void closeRuleDraft();
    /// Saves the rule in the editor and closes it; where that failed, the editor stays and says
    /// why.
    Q_INVOKABLE void saveRuleDraft();
    /// The reason where it failed; empty else.
    QString saveRule(const CleanupRule& rule);
    /// Deletes one of the user's rules; its findings disappear at once.
    void deleteRule(const CleanupRule& rule);

    /// Takes `busy`, and fails while other work has it.
    Q_INVOKABLE void importRules(const QUrl& file);
    /// Replaces a file that is there: whoever chose it was asked.
    Q_INVOKABLE void exportRules(const QUrl& file);

    [[nodiscard]] RuleRows* rows() const { return rows_.get(); }

Q_SIGNALS:
    void ruleDraftChanged();
    void customRulesChanged();
    void ruleIssuesChanged();
    void disabledRuleIDsChanged();

private:
    void setRuleDraft(std::unique_ptr<RuleDraft> draft);

    AppModel& app_;
    std::unique_ptr<RuleDraft> ruleDraft_;
    std::vector<CleanupRule> customRules_;
    QStringList ruleIssues_;
    const std::vector<CleanupRule>& builtInRules_;
    std::set<std::string> disabledRuleIDs_;
    const std::unique_ptr<RuleRows> rows_;
};

}  // namespace Brimlo
