#pragma once

#include "BrimloApp/Shell/Rows.h"
#include "BrimloCore/Models/CleanupRule.h"

#include <QtQml/qqmlregistration.h>

#include <string>
#include <vector>

namespace Brimlo {

class RuleBook;

/// A rule as the list of rules shows it.
struct RuleLine {
    bool isCustom = true;
    std::string id;
    std::string name;
    Risk risk = Risk::review;
    std::string details;  ///< On one line.
    bool isEnabled = true;

    bool operator==(const RuleLine&) const = default;

    /// A rule of the user's may have the id of a built-in one, which it replaces.
    [[nodiscard]] std::string key() const { return (isCustom ? '+' : '-') + id; }
};

/// The user's own rules and those that are built in, the user's first, as far as they fit what was
/// searched for.
class RuleRows : public Brimlo::RowList {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    /// Part of a name or a group, in any letter case; an empty one fits all.
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY queryChanged)

public:
    explicit RuleRows(RuleBook& book);

    [[nodiscard]] const QString& query() const { return query_; }
    void setQuery(const QString& query);

    /// Opens the editor on one of the user's rules.
    Q_INVOKABLE void edit(int row);
    /// Deletes one of the user's rules.
    Q_INVOKABLE void remove(int row);
    /// Switches a built-in rule on or off.
    Q_INVOKABLE void setEnabled(int row, bool isEnabled);
    /// Opens the editor on a new rule that has everything of a built-in one but its id.
    Q_INVOKABLE void copy(int row);

Q_SIGNALS:
    void queryChanged();

private:
    void refresh();
    /// The rule at a place, if it is one of the user's, or a built-in one; null else.
    [[nodiscard]] const CleanupRule* customAt(int row) const;
    [[nodiscard]] const CleanupRule* builtInAt(int row) const;

    RuleBook& book_;
    Rows<RuleLine> rows_;
    QString query_;
};

}  // namespace Brimlo
