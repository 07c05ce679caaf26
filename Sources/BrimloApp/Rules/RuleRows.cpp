#include "BrimloApp/Rules/RuleRows.h"

#include "BrimloApp/Rules/RuleBook.h"
#include "BrimloApp/Shell/RunInBackground.h"
#include "BrimloApp/Shell/Search.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/Fmt.h"
#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"

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

/// Each place of a rule, and what matches there now. Blocks.
std::vector<std::string> measuredPlaces(CleanupRule rule) {
    std::vector<std::string> lines;
    for (const std::string& place : std::exchange(rule.paths, {})) {
        rule.paths = {place};
        const std::vector<SuggestionItem> items = SuggestionEngine::preview(rule);
        const std::string count =
            std::to_string(items.size()) + (items.size() == 1 ? " item, " : " items, ");
        const std::int64_t size = Bytes::total(items, &SuggestionItem::size);
        lines.push_back(
            place + ": " + (items.empty() ? "nothing matches now" : count + Fmt::bytes(size)));
    }
    return lines;
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
           {"expanded", [](const RuleLine& line) { return line.expanded; }},
           {"places",
            [](const RuleLine& line) {
                QStringList lines;
                for (const std::string& place : line.places) {
                    lines.append(shown(place));
                }
                return lines;
            }},
           {"isEnabled", [](const RuleLine& line) { return line.isEnabled; }},
           }} {
    connect(&book, &RuleBook::customRulesChanged, this, [this] {
        places_.clear();  // A rule may look elsewhere now.
        refresh();
    });
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
    for (RuleLine& line : lines) {
        if (const auto unfolded = places_.find(line.key()); unfolded != places_.end()) {
            line.expanded = true;
            line.places = unfolded->second;
        }
    }
    rows_.set(std::move(lines));
}

void RuleRows::toggleExpanded(int row) {
    const CleanupRule* rule = customAt(row) != nullptr ? customAt(row) : builtInAt(row);
    if (rule == nullptr) {
        return;
    }
    const std::string key = rows_.at(row)->key();
    if (places_.erase(key) == 0) {
        places_[key] = rule->paths;
        runInBackground(
            this,
            [rule = *rule] { return measuredPlaces(rule); },
            [key](RuleRows& rows, std::vector<std::string> places) {
                if (const auto unfolded = rows.places_.find(key); unfolded != rows.places_.end()) {
                    unfolded->second = std::move(places);
                    rows.refresh();
                }
            });
    }
    refresh();
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
    if (const CleanupRule* rule = builtInAt(row)) {
        book_.openRuleDraft("copy of " + rule->id, [&] { return RuleDraft::copyOf(*rule); });
    }
}

}  // namespace Brimlo
