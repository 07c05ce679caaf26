#include "BrimloApp/Rules/RuleRows.h"

#include "BrimloApp/Rules/RuleBook.h"
#include "BrimloApp/Shell/Search.h"
#include "BrimloApp/Shell/Shown.h"

#include <QtCore/QMetaProperty>

#include <algorithm>
#include <memory>
#include <utility>

namespace Brimlo {

namespace {

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

/// The rule of a row, or null if it no longer exists.
const CleanupRule* find(const std::vector<CleanupRule>& rules, const RuleLine& line) {
    const auto found = std::ranges::find(rules, line.id, &CleanupRule::id);
    return found == rules.end() ? nullptr : &*found;
}

}  // namespace

RuleRows::RuleRows(RuleBook& book)
    : book_{book}
    , rows_{
          *this,
          {
           {"isCustom", [](const RuleLine& line) { return line.isCustom; }},
           {"ruleID", [](const RuleLine& line) { return QString::fromStdString(line.id); }},
           {"name", [](const RuleLine& line) { return shown(line.name); }},
           {"risk", [](const RuleLine& line) { return words(rawValue(line.risk)); }},
           {"details", [](const RuleLine& line) { return shown(line.details); }},
           {"isEnabled", [](const RuleLine& line) { return line.isEnabled; }},
           }} {
    connect(&book, &RuleBook::customRulesChanged, this, &RuleRows::refresh);
    connect(&book, &RuleBook::disabledRuleIDsChanged, this, &RuleRows::refresh);
}

void RuleRows::setQuery(const QString& query) {
    if (query != query_) {
        query_ = query;
        Q_EMIT queryChanged();
        refresh();
    }
}

void RuleRows::refresh() {
    const Search search{query_};
    std::vector<RuleLine> lines;
    const auto append = [&](const std::vector<CleanupRule>& rules, bool isCustom) {
        for (const CleanupRule& rule : rules) {
            if (search.finds(rule.name, rule.group)) {
                lines.push_back(
                    {.isCustom = isCustom,
                     .id = rule.id,
                     .name = rule.name,
                     .risk = rule.risk,
                     .details = details(rule),
                     .isEnabled = !book_.disabledRuleIDs().contains(rule.id)});
            }
        }
    };
    append(book_.customRules(), true);
    append(book_.builtInRules(), false);
    rows_.set(std::move(lines));
}

const CleanupRule* RuleRows::customAt(int row) const {
    const RuleLine* line = rows_.at(row);
    return line != nullptr && line->isCustom ? find(book_.customRules(), *line) : nullptr;
}

const CleanupRule* RuleRows::builtInAt(int row) const {
    const RuleLine* line = rows_.at(row);
    return line != nullptr && !line->isCustom ? find(book_.builtInRules(), *line) : nullptr;
}

void RuleRows::edit(int row) {
    if (const CleanupRule* rule = customAt(row)) {
        book_.editRule(*rule);
    }
}

void RuleRows::remove(int row) {
    if (const CleanupRule* rule = customAt(row)) {
        book_.deleteRule(*rule);
    }
}

void RuleRows::setEnabled(int row, bool isEnabled) {
    if (const CleanupRule* rule = builtInAt(row)) {
        book_.setRuleDisabled(rule->id, !isEnabled);
    }
}

void RuleRows::copy(int row) {
    const CleanupRule* rule = builtInAt(row);
    if (rule == nullptr) {
        return;
    }
    book_.openRuleDraft("copy of " + rule->id, [&] {
        const RuleDraft original{*rule};
        auto draft = std::make_unique<RuleDraft>();
        const QMetaObject& fields = RuleDraft::staticMetaObject;
        for (int i = fields.propertyOffset(); i < fields.propertyCount(); ++i) {
            if (const QMetaProperty field = fields.property(i); field.isWritable()) {
                field.write(draft.get(), field.read(&original));
            }
        }
        return draft;
    });
}

}  // namespace Brimlo
