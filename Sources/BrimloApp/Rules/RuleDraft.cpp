#include "BrimloApp/Rules/RuleDraft.h"

#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/Support/Text.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <QtCore/QVariant>

#include <algorithm>
#include <limits>
#include <string_view>
#include <vector>

namespace Brimlo {

namespace {

constexpr int kUsualAgeDays = 30;

QStringList texts(const std::vector<std::string>& from) {
    QStringList list;
    for (const std::string& text : from) {
        list.push_back(QString::fromStdString(text));
    }
    return list;
}

std::string trimmed(const QString& text) {
    return std::string{Text::trimmed(text.toStdString())};
}

/// Trimmed texts, without empty ones.
std::vector<std::string> filled(const QStringList& from) {
    std::vector<std::string> pieces;
    for (const QString& text : from) {
        if (std::string piece = trimmed(text); !piece.empty()) {
            pieces.push_back(std::move(piece));
        }
    }
    return pieces;
}

std::string_view suggestedWording(Risk risk) {
    switch (risk) {
        case Risk::safe:
            return "The app recreates it automatically the next time it runs.";
        case Risk::rebuild:
            return "Comes back after the app rebuilds it or downloads it again.";
        case Risk::review:
            break;
    }
    return "May contain data of mine, so I check the list before deleting.";
}

}  // namespace

// `UserRules::make` gives a rule without a group its name as the group. A rule file may hold more
// days than the field's int.
RuleDraft::RuleDraft(const CleanupRule& rule)
    : ruleID_{rule.id}
    , name_{QString::fromStdString(rule.name)}
    , group_{rule.group == rule.name ? QString{} : QString::fromStdString(rule.group)}
    , paths_{texts(rule.paths)}
    , risk_{rule.risk}
    , regenerates_{QString::fromStdString(rule.regenerates)}
    , quitApps_{texts(rule.quitApps).join(", ")}
    , contentsOnly_{rule.contentsOnly}
    , useMinAge_{rule.minAgeDays.has_value()}
    , minAgeDays_{static_cast<int>(std::clamp<std::int64_t>(
          rule.minAgeDays.value_or(kUsualAgeDays), 0, std::numeric_limits<int>::max()))}
    , excludes_{texts(rule.excludes).join(", ")}
    , command_{QString::fromStdString(rule.officialCommand.value_or(""))}
    , conditions_{rule.conditions} {}

RuleDraft::RuleDraft(const std::string& path, const std::string& name)
    : name_{QString::fromStdString(name)}
    , paths_{QString::fromStdString(UserRules::tildeForm(path))} {}

std::unique_ptr<RuleDraft> RuleDraft::copyOf(const CleanupRule& rule) {
    auto draft = std::make_unique<RuleDraft>(rule);
    draft->ruleID_.reset();
    return draft;
}

CleanupRule RuleDraft::makeRule() const {
    return UserRules::make({
        .id = ruleID_,
        .name = trimmed(name_),
        .group = trimmed(group_),
        .paths = filled(paths_),
        .risk = risk_,
        .regenerates = regenerates_.toStdString(),
        .quitApps = filled(quitApps_.split(',')),
        .contentsOnly = contentsOnly_,
        .excludes = filled(excludes_.split(',')),
        .minAgeDays = useMinAge_ ? std::optional<std::int64_t>{minAgeDays_} : std::nullopt,
        .officialCommand =
            command_.isEmpty() ? std::nullopt : std::optional{command_.toStdString()},
        .personas = {Persona::general},
        .conditions = conditions_,
    });
}

QString RuleDraft::risk() const {
    return words(rawValue(risk_));
}

void RuleDraft::setRisk(const QString& word) {
    const auto found =
        std::ranges::find(kAllRisks, word, [](Risk risk) { return words(rawValue(risk)); });
    if (found != kAllRisks.end() && *found != risk_) {
        risk_ = *found;
        Q_EMIT changed();
    }
}

void RuleDraft::addPath() {
    paths_.push_back({});
    Q_EMIT changed();
}

void RuleDraft::removePath(int row) {
    if (row >= 0 && row < paths_.size()) {
        paths_.removeAt(row);
        Q_EMIT changed();
    }
}

void RuleDraft::setPath(int row, const QString& text) {
    if (row >= 0 && row < paths_.size() && paths_[row] != text) {
        paths_[row] = text;
        Q_EMIT changed();
    }
}

void RuleDraft::choosePath(int row, const QString& path) {
    setPath(row, QString::fromStdString(UserRules::tildeForm(path.toStdString())));
}

void RuleDraft::useSuggestedWording() {
    setProperty("regenerates", QString::fromUtf8(suggestedWording(risk_)));
}

}  // namespace Brimlo
