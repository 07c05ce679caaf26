#include "BrimloApp/AppModel/AppModel.h"
#include "BrimloApp/AppModel/Shown.h"
#include "BrimloCore/DisabledRules/DisabledRules.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/UserRules/RuleExchange.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <QtCore/QFile>

#include <algorithm>
#include <utility>

// How a rule comes into being and goes, and how the lists of rules stay what the files say. All of
// it runs at once: a rule is a small file.

namespace Brimlo {
namespace {

QString words(const std::string& text) {
    return QString::fromStdString(text);
}

/// Not atomic: the file is the user's own, wherever they chose to have it.
std::expected<void, QString> writeFile(const QString& path, const std::string& text) {
    QFile file{path};
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        file.write(text.data(), static_cast<qint64>(text.size())) !=
            static_cast<qint64>(text.size()) ||
        !file.flush()) {
        return std::unexpected(file.errorString());
    }
    return {};
}

}  // namespace

void AppModel::setRuleDraft(std::unique_ptr<RuleDraft> draft) {
    // The editor may still be on its way out, with bindings to the old draft.
    if (RuleDraft* const old = ruleDraft_.release()) {
        old->deleteLater();
    }
    ruleDraft_ = std::move(draft);
    Q_EMIT ruleDraftChanged();
}

void AppModel::newRuleDraft(
    const std::optional<std::string>& path, const std::optional<std::string>& name) {
    setRuleDraft(
        path ? std::make_unique<RuleDraft>(*path, name.value_or(std::string{Path::name(*path)}))
             : std::make_unique<RuleDraft>());
}

void AppModel::editRule(const CleanupRule& rule) {
    setRuleDraft(std::make_unique<RuleDraft>(rule));
}

void AppModel::closeRuleDraft() {
    if (ruleDraft_) {
        setRuleDraft(nullptr);
    }
}

void AppModel::saveRuleDraft() {
    if (ruleDraft_) {
        const CleanupRule rule = ruleDraft_->makeRule();
        closeRuleDraft();
        saveRule(rule);
    }
}

void AppModel::reloadCustomRules() {
    UserRules::Loaded loaded = UserRules::load(UserRules::defaultDirectory());
    QStringList issues;
    for (const std::string& issue : loaded.issues) {
        issues.push_back(shown(issue));
    }
    assign(customRules_, std::move(loaded.rules), &AppModel::customRulesChanged);
    assign(ruleIssues_, std::move(issues), &AppModel::ruleIssuesChanged);
}

void AppModel::saveRule(const CleanupRule& rule) {
    if (const auto saved = UserRules::save(rule, UserRules::defaultDirectory()); !saved) {
        setBanner(QStringLiteral("Could not save rule: %1").arg(words(saved.error().description)));
        return;
    }
    reloadCustomRules();
    setBanner(QStringLiteral("Saved rule “%1”. Rescanning so it shows up in Smart Clean.")
                  .arg(words(rule.name)));
    loadSuggestions();
}

void AppModel::deleteRule(const CleanupRule& rule) {
    (void)UserRules::remove(rule.id, UserRules::defaultDirectory());
    reloadCustomRules();
    std::vector<Suggestion> left = suggestions_;
    std::erase_if(left, [id = rule.id](const Suggestion& each) { return each.id == id; });
    setSuggestions(std::move(left));
}

void AppModel::setRuleDisabled(const std::string& id, const bool disabled) {
    DisabledRules::set(id, disabled);
    assign(disabledRuleIDs_, DisabledRules::load(), &AppModel::disabledRuleIDsChanged);
}

void AppModel::importRules(const QUrl& file) {
    const std::string path = QFile::encodeName(file.toLocalFile()).toStdString();
    const auto done = UserRules::importPack(path, false, UserRules::defaultDirectory());
    if (!done) {
        setBanner(QStringLiteral("Import failed: %1").arg(words(done.error().description)));
        return;
    }
    reloadCustomRules();
    QString banner = QStringLiteral("Imported %1 rule(s).").arg(done->imported.size());
    if (!done->rejected.empty()) {
        banner += QStringLiteral(" Rejected %1: %2")
                      .arg(done->rejected.size())
                      .arg(words(done->rejected.front()));
    }
    setBanner(banner);
    loadSuggestions();
}

void AppModel::exportRules(const QUrl& file) {
    const auto text = UserRules::exportJSON(customRules_);
    if (!text) {
        setBanner(QStringLiteral("Export failed: %1").arg(words(text.error().description)));
    } else if (const auto written = writeFile(file.toLocalFile(), *text); !written) {
        setBanner(QStringLiteral("Export failed: %1").arg(written.error()));
    } else {
        setBanner(QStringLiteral("Exported %1 rule(s).").arg(customRules_.size()));
    }
}

}  // namespace Brimlo
