#pragma once

#include "BrimloApp/Shell/Rows.h"
#include "BrimloCore/Models/CleanupRule.h"

#include <QtQml/qqmlregistration.h>

#include <map>
#include <string>
#include <vector>

namespace Brimlo {

class RuleBook;

/// A rule in the list of rules.
struct RuleLine {
    bool isCustom = true;
    std::string id;
    std::string name;
    Risk risk = Risk::review;
    std::string details;  ///< On one line.
    bool isEnabled = true;
    bool expanded = false;
    std::vector<std::string> places;  ///< If expanded: each place, and what matches there now.

    bool operator==(const RuleLine&) const = default;

    /// A user's rule may have the id of the built-in rule that it replaces.
    [[nodiscard]] std::string key() const { return (isCustom ? '+' : '-') + id; }
};

/// The rules that match the search, the user's own first.
class RuleRows : public Brimlo::RowList {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    /// Part of a name or group, letter case ignored; empty matches all.
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY queryChanged)

public:
    explicit RuleRows(RuleBook& book);

    [[nodiscard]] const QString& query() const { return query_; }
    void setQuery(const QString& query);

    /// Opens the editor with one of the user's rules.
    Q_INVOKABLE void edit(int row);
    /// Deletes one of the user's rules.
    Q_INVOKABLE void remove(int row);
    /// Shows or hides the places of a rule; what they match is measured in the background.
    Q_INVOKABLE void toggleExpanded(int row);
    /// Switches a built-in rule on or off.
    Q_INVOKABLE void setEnabled(int row, bool isEnabled);
    /// Opens the editor with a copy of a built-in rule under a new id.
    Q_INVOKABLE void copy(int row);

Q_SIGNALS:
    void queryChanged();

private:
    void refresh();
    /// The user's rule or the built-in rule of a row, or null.
    [[nodiscard]] const CleanupRule* customAt(int row) const;
    [[nodiscard]] const CleanupRule* builtInAt(int row) const;

    RuleBook& book_;
    Rows<RuleLine> rows_;
    QString query_;
    std::map<std::string, std::vector<std::string>> places_;  ///< Of expanded rows, by their keys.
};

}  // namespace Brimlo
