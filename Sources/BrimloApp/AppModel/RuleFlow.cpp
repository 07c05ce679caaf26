#include "BrimloApp/AppModel/AppModel.h"
#include "BrimloApp/AppModel/RunInBackground.h"
#include "BrimloApp/AppModel/Shown.h"
#include "BrimloCore/DisabledRules/DisabledRules.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/UserRules/RuleExchange.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <QtCore/QFile>

#include <algorithm>
#include <utility>

// How a rule comes into being and goes, and how the lists of rules stay what the files say. All but
// an import runs at once: a rule is a small file.

namespace Brimlo {
namespace {

QString words(const std::string& text) {
    return QString::fromStdString(text);
}

std::string pathOf(const QUrl& file) {
    return QFile::encodeName(file.toLocalFile()).toStdString();
}

QString outcomeWords(const UserRules::Imported& done) {
    QString banner = QStringLiteral("Imported %1 rule(s).").arg(done.imported.size());
    if (!done.rejected.empty()) {
        banner += QStringLiteral(" Rejected %1: %2")
                      .arg(done.rejected.size())
                      .arg(words(done.rejected.front()));
    }
    return banner;
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
    if (!ruleDraft_) {
        return;
    }
    const QString failure = saveRule(ruleDraft_->makeRule());
    if (failure.isEmpty()) {
        closeRuleDraft();
    } else {
        ruleDraft_->setProperty("saveFailure", failure);
    }
}

void AppModel::take(UserRules::Loaded loaded) {
    QStringList issues;
    for (const std::string& issue : loaded.issues) {
        issues.push_back(shown(issue));
    }
    assign(customRules_, std::move(loaded.rules), &AppModel::customRulesChanged);
    assign(ruleIssues_, std::move(issues), &AppModel::ruleIssuesChanged);
}

void AppModel::reloadCustomRules() {
    take(UserRules::load(UserRules::defaultDirectory()));
}

QString AppModel::saveRule(const CleanupRule& rule) {
    if (const auto saved = UserRules::save(rule, UserRules::defaultDirectory()); !saved) {
        QString failure =
            QStringLiteral("Could not save rule: %1").arg(words(saved.error().description));
        setBanner(failure);
        return failure;
    }
    reloadCustomRules();
    setBanner(QStringLiteral("Saved rule “%1”. Rescanning so it shows up in Smart Clean.")
                  .arg(words(rule.name)));
    suggestAnew();
    return {};
}

void AppModel::deleteRule(const CleanupRule& rule) {
    const auto removed = UserRules::remove(rule.id, UserRules::defaultDirectory());
    reloadCustomRules();
    if (std::ranges::count(customRules_, rule.id, &CleanupRule::id) > 0) {
        const QString why = removed ? QStringLiteral("another file holds it, too")
                                    : words(removed.error().description);
        setBanner(QStringLiteral("Could not delete rule: %1").arg(why));
        return;
    }
    if (isSuggesting_) {
        suggestAnew();
    }
    std::vector<Suggestion> left = suggestions_;
    std::erase_if(left, [id = rule.id](const Suggestion& each) { return each.id == id; });
    setSuggestions(std::move(left));
}

void AppModel::setRuleDisabled(const std::string& id, const bool disabled) {
    auto ids = DisabledRules::set(id, disabled);
    if (!ids) {
        setBanner(words(ids.error().description) + u'.');
    }
    assign(
        disabledRuleIDs_,
        ids ? *std::move(ids) : DisabledRules::load(),
        &AppModel::disabledRuleIDsChanged);
}

void AppModel::importRules(const QUrl& file) {
    if (!busy_.isEmpty()) {
        setBanner(QStringLiteral("Import failed: other work is under way."));
        return;
    }
    setBusy(QStringLiteral("Importing rules…"));
    struct Done {
        std::expected<UserRules::Imported, Error> outcome;
        UserRules::Loaded rules;
    };
    runInBackground(
        this,
        [path = pathOf(file)] {
            const std::string directory = UserRules::defaultDirectory();
            auto outcome = UserRules::importPack(path, false, directory);
            return Done{.outcome = std::move(outcome), .rules = UserRules::load(directory)};
        },
        [](AppModel& model, Done done) {
            model.setBusy({});
            model.take(std::move(done.rules));
            if (!done.outcome) {
                model.setBanner(QStringLiteral("Import failed: %1")
                                    .arg(words(done.outcome.error().description)));
                return;
            }
            model.setBanner(outcomeWords(*done.outcome));
            model.suggestAnew();
        });
}

void AppModel::exportRules(const QUrl& file) {
    const auto done = UserRules::exportTo(pathOf(file), customRules_, UserRules::Existing::replace);
    setBanner(
        done ? QStringLiteral("Exported %1 rule(s).").arg(customRules_.size())
             : QStringLiteral("Export failed: %1").arg(words(done.error().description)));
}

}  // namespace Brimlo
