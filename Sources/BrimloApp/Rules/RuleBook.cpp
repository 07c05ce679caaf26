#include "BrimloApp/Rules/RuleBook.h"

#include "BrimloApp/Rules/RuleRows.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloApp/SmartClean/SmartClean.h"
#include "BrimloCore/DisabledRules/DisabledRules.h"
#include "BrimloCore/RulePacks/Catalog.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/UserRules/RuleFile.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <algorithm>
#include <utility>

namespace Brimlo {

namespace {

std::string pathOf(const QUrl& file) {
    return toPath(file.toLocalFile());
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

RuleBook::RuleBook(AppModel& app)
    : app_{app}
    , builtInRules_{Catalog::ofThisSystem(Catalog::builtInRules())}
    , disabledRuleIDs_{DisabledRules::load()}
    , rows_{std::make_unique<RuleRows>(*this)} {}

RuleBook::~RuleBook() = default;

// ---- The editor ----------------------------------------------------------------------------

void RuleBook::setRuleDraft(std::unique_ptr<RuleDraft> draft) {
    // The editor may still be fading out, with bindings to the old draft.
    if (RuleDraft* old = ruleDraft_.release()) {
        old->deleteLater();
    }
    ruleDraft_ = std::move(draft);
    Q_EMIT ruleDraftChanged();
}

void RuleBook::openRuleDraft(
    const std::string& key, const std::function<std::unique_ptr<RuleDraft>()>& make) {
    auto kept = keptDrafts_.extract(key);
    auto draft = kept.empty() ? make() : std::move(kept.mapped());
    draftKey_ = key;
    isDraftChanged_ = !kept.empty();
    connect(draft.get(), &RuleDraft::changed, this, [this] { isDraftChanged_ = true; });
    setRuleDraft(std::move(draft));
}

void RuleBook::newRuleDraft(
    const std::optional<std::string>& path, const std::optional<std::string>& name) {
    openRuleDraft(path.value_or(""), [&] {
        return path ? std::make_unique<RuleDraft>(
                          *path, name.value_or(std::string{Path::name(*path)}))
                    : std::make_unique<RuleDraft>();
    });
}

void RuleBook::editRule(const CleanupRule& rule) {
    openRuleDraft(rule.id, [&] { return std::make_unique<RuleDraft>(rule); });
}

void RuleBook::keepRuleDraft() {
    if (!ruleDraft_ || !isDraftChanged_) {
        closeRuleDraft();
        return;
    }
    disconnect(ruleDraft_.get(), nullptr, this, nullptr);
    ruleDraft_->setProperty("saveFailure", QString{});
    keptDrafts_.insert_or_assign(draftKey_, std::move(ruleDraft_));
    Q_EMIT ruleDraftChanged();
    app_.banner()->show(
        QStringLiteral("The draft is kept until Brimlo closes. It is there when you "
                       "open the editor again for the same rule."));
}

void RuleBook::closeRuleDraft() {
    if (ruleDraft_) {
        setRuleDraft(nullptr);
    }
}

void RuleBook::saveRuleDraft() {
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

// ---- The rules -----------------------------------------------------------------------------

void RuleBook::show(UserRules::Loaded loaded) {
    QStringList issues;
    for (const std::string& issue : loaded.issues) {
        issues.push_back(shown(issue));
    }
    assign(*this, customRules_, std::move(loaded.rules), &RuleBook::customRulesChanged);
    assign(*this, ruleIssues_, std::move(issues), &RuleBook::ruleIssuesChanged);
}

void RuleBook::reload() {
    show(UserRules::load(UserRules::defaultDirectory()));
}

void RuleBook::readDisabled() {
    assign(*this, disabledRuleIDs_, DisabledRules::load(), &RuleBook::disabledRuleIDsChanged);
}

QString RuleBook::saveRule(const CleanupRule& rule) {
    if (const auto saved = UserRules::save(rule, UserRules::defaultDirectory()); !saved) {
        QString failure =
            QStringLiteral("Could not save rule: %1").arg(words(saved.error().description));
        app_.banner()->show(failure);
        return failure;
    }
    reload();
    app_.banner()->show(QStringLiteral("Saved rule “%1”. Rescanning so it shows up in Smart Clean.")
                            .arg(words(rule.name)));
    app_.smartClean()->suggestAnew();
    return {};
}

void RuleBook::deleteRule(const CleanupRule& rule) {
    const std::string id = rule.id;  // Copied, because `rule` may be destroyed by reload().
    std::vector<CleanupRule> deleted = customRules_;
    const auto removed = UserRules::remove(id, UserRules::defaultDirectory());
    reload();
    if (std::ranges::count(customRules_, id, &CleanupRule::id) > 0) {
        const QString why = removed ? QStringLiteral("another file holds it, too")
                                    : words(removed.error().description);
        app_.banner()->show(QStringLiteral("Could not delete rule: %1").arg(why));
        return;
    }
    if (app_.smartClean()->isSuggesting()) {
        app_.smartClean()->suggestAnew();
    }
    app_.smartClean()->forgetRule(id);
    // A file that another program wrote may have held several.
    std::erase_if(deleted, [&](const CleanupRule& each) {
        return std::ranges::count(customRules_, each.id, &CleanupRule::id) > 0;
    });
    if (!deleted.empty()) {
        app_.banner()->offerUndo(
            QStringLiteral("Deleted rule “%1”.").arg(shown(deleted.front().name)),
            [this, deleted] { restore(deleted); });
    }
}

void RuleBook::restore(const std::vector<CleanupRule>& deleted) {
    if (const auto saved = UserRules::saveAll(deleted, UserRules::defaultDirectory()); !saved) {
        app_.banner()->show(QStringLiteral("Could not put the rule back: %1")
                                .arg(words(saved.error().description)));
        return;
    }
    reload();
    app_.smartClean()->suggestAnew();
}

void RuleBook::setRuleDisabled(const std::string& id, bool disabled) {
    if (const auto ids = DisabledRules::set(id, disabled); !ids) {
        app_.banner()->show(words(ids.error().description) + u'.');
    }
    readDisabled();
}

void RuleBook::importRules(const QUrl& file) {
    if (!app_.busy().isEmpty()) {
        app_.banner()->show(QStringLiteral("Import failed: other work is under way."));
        return;
    }
    app_.setBusy(QStringLiteral("Importing rules…"));
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
        [](RuleBook& book, Done done) {
            book.app_.setBusy({});
            book.show(std::move(done.rules));
            if (!done.outcome) {
                book.app_.banner()->show(QStringLiteral("Import failed: %1")
                                             .arg(words(done.outcome.error().description)));
                return;
            }
            book.app_.banner()->show(outcomeWords(*done.outcome));
            book.app_.smartClean()->suggestAnew();
        });
}

void RuleBook::exportRules(const QUrl& file) {
    const auto done = UserRules::exportTo(pathOf(file), customRules_, UserRules::Existing::replace);
    app_.banner()->show(
        done ? QStringLiteral("Exported %1 rule(s).").arg(customRules_.size())
             : QStringLiteral("Export failed: %1").arg(words(done.error().description)));
}

}  // namespace Brimlo
