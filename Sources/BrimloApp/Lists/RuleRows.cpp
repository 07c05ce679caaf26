#include "BrimloApp/Lists/RuleRows.h"

#include "BrimloApp/Lists/Search.h"

#include <QtCore/QMetaProperty>

#include <algorithm>
#include <array>
#include <utility>

namespace Brimlo {
namespace {

constexpr std::array kKinds{"custom", "builtIn", "all"};

std::string details(const CleanupRule& rule) {
    std::vector<std::string> parts;
    if (rule.group != rule.name && !rule.group.empty()) {
        parts.push_back(rule.group);
    }
    if (rule.paths.size() == 1) {
        parts.push_back(rule.paths.front());
    } else if (!rule.paths.empty()) {
        parts.push_back(std::to_string(rule.paths.size()) + " locations");
    }
    if (rule.minAgeDays) {
        parts.push_back(
            "older than " + std::to_string(*rule.minAgeDays) +
            (*rule.minAgeDays == 1 ? " day" : " days"));
    }
    if (rule.contentsOnly) {
        parts.emplace_back("contents only");
    }
    std::string joined;
    for (const std::string& part : parts) {
        joined += (joined.empty() ? "" : "  ·  ") + part;
    }
    return joined;
}

}  // namespace

RuleRows::RuleRows(QObject* parent)
    : SourceRows{
          {
           {"isCustom", [](const RuleRow& row) { return row.isCustom; }},
           {"ruleID", [](const RuleRow& row) { return QString::fromStdString(row.id); }},
           {"name", [](const RuleRow& row) { return shown(row.name); }},
           {"risk", [](const RuleRow& row) { return QString::fromUtf8(rawValue(row.risk)); }},
           {"details", [](const RuleRow& row) { return shown(row.details); }},
           {"isEnabled", [](const RuleRow& row) { return row.isEnabled; }},
           },
          {&AppModel::customRulesChanged, &AppModel::disabledRuleIDsChanged           },
          parent
} {}

QString RuleRows::kind() const {
    return QString::fromUtf8(kKinds.at(static_cast<std::size_t>(kind_)));
}

void RuleRows::setKind(const QString& kind) {
    const auto* const found = std::ranges::find(kKinds, kind.toStdString());
    if (found != kKinds.end() && kind != this->kind()) {
        kind_ = static_cast<Kind>(found - kKinds.begin());
        Q_EMIT kindChanged();
        refresh();
    }
}

void RuleRows::setQuery(const QString& query) {
    if (query != query_) {
        query_ = query;
        Q_EMIT queryChanged();
        refresh();
    }
}

const std::vector<CleanupRule>& RuleRows::rules(const Kind kind) const {
    static const std::vector<CleanupRule> none;
    if (source() == nullptr || (kind_ != kind && kind_ != Kind::all)) {
        return none;
    }
    return kind == Kind::custom ? source()->customRules() : source()->builtInRules();
}

void RuleRows::refresh() {
    const Search search{query_};
    std::vector<RuleRow> rows;
    for (const Kind kind : {Kind::custom, Kind::builtIn}) {
        for (const CleanupRule& rule : rules(kind)) {
            if (search.finds(rule.name, rule.group)) {
                rows.push_back(
                    {.isCustom = kind == Kind::custom,
                     .id = rule.id,
                     .name = rule.name,
                     .risk = rule.risk,
                     .details = details(rule),
                     .isEnabled = !source()->disabledRuleIDs().contains(rule.id)});
            }
        }
    }
    setRows(std::move(rows));
    setCounts(rules(Kind::custom).size(), rules(Kind::builtIn).size());
}

void RuleRows::setCounts(const std::size_t custom, const std::size_t builtIn) {
    const int oldCustom = std::exchange(customCount_, static_cast<int>(custom));
    const int oldBuiltIn = std::exchange(builtInCount_, static_cast<int>(builtIn));
    if (oldCustom != customCount_ || oldBuiltIn != builtInCount_) {
        Q_EMIT totalCountChanged();
    }
}

std::optional<CleanupRule> RuleRows::ruleAt(const int row, const Kind kind) const {
    const RuleRow* const found = this->row(row);
    if (found == nullptr || found->isCustom != (kind == Kind::custom)) {
        return std::nullopt;
    }
    const auto rule = std::ranges::find(rules(kind), found->id, &CleanupRule::id);
    return rule == rules(kind).end() ? std::nullopt : std::optional{*rule};
}

void RuleRows::edit(const int row) {
    if (const auto rule = ruleAt(row, Kind::custom)) {
        source()->editRule(*rule);
    }
}

void RuleRows::remove(const int row) {
    if (const auto rule = ruleAt(row, Kind::custom)) {
        source()->deleteRule(*rule);
    }
}

void RuleRows::setEnabled(const int row, const bool isEnabled) {
    if (const auto rule = ruleAt(row, Kind::builtIn)) {
        source()->setRuleDisabled(rule->id, !isEnabled);
    }
}

void RuleRows::copy(const int row) {
    const auto rule = ruleAt(row, Kind::builtIn);
    if (!rule) {
        return;
    }
    const RuleDraft original{*rule};
    source()->newRuleDraft();
    const QMetaObject& fields = RuleDraft::staticMetaObject;
    for (int i = fields.propertyOffset(); i < fields.propertyCount(); ++i) {
        if (const QMetaProperty field = fields.property(i); field.isWritable()) {
            field.write(source()->ruleDraft(), field.read(&original));
        }
    }
}

}  // namespace Brimlo
