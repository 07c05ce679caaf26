#pragma once

#include "BrimloApp/Lists/SourceRows.h"
#include "BrimloCore/Models/CleanupRule.h"

#include <QtQml/qqmlregistration.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace Brimlo {

/// A rule as the list of rules shows it.
struct RuleRow {
    bool isCustom = true;
    std::string id;
    std::string name;
    Risk risk = Risk::review;
    std::string details;  ///< On one line.
    bool isEnabled = true;

    bool operator==(const RuleRow&) const = default;

    /// A rule of the user's may have the id of a built-in one, which it replaces.
    [[nodiscard]] std::string key() const { return (isCustom ? '+' : '-') + id; }
};

/// The user's own rules, those that are built in, or both, the user's first, as far as they fit
/// what was searched for.
class RuleRows : public BRIMLO_SOURCE_ROWS(RuleRow) {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(Brimlo::AppModel* source READ source WRITE setSource NOTIFY sourceChanged)
    /// "custom", "builtIn" or "all".
    Q_PROPERTY(QString kind READ kind WRITE setKind NOTIFY kindChanged)
    /// Part of a name or a group, in any letter case; an empty one fits all.
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY queryChanged)
    /// How many there are, whatever is searched for; and how many of them are the user's.
    Q_PROPERTY(int totalCount READ totalCount NOTIFY totalCountChanged)
    Q_PROPERTY(int customCount READ customCount NOTIFY totalCountChanged)

public:
    explicit RuleRows(QObject* parent = nullptr);

    [[nodiscard]] QString kind() const;
    void setKind(const QString& kind);
    [[nodiscard]] const QString& query() const { return query_; }
    void setQuery(const QString& query);
    [[nodiscard]] int totalCount() const { return customCount_ + builtInCount_; }
    [[nodiscard]] int customCount() const { return customCount_; }

    /// Opens the editor on one of the user's rules.
    Q_INVOKABLE void edit(int row);
    /// Deletes one of the user's rules.
    Q_INVOKABLE void remove(int row);
    /// Switches a built-in rule on or off.
    Q_INVOKABLE void setEnabled(int row, bool isEnabled);
    /// Opens the editor on a new rule that has everything of a built-in one but its id.
    Q_INVOKABLE void copy(int row);

Q_SIGNALS:
    void sourceChanged();
    void kindChanged();
    void queryChanged();
    void totalCountChanged();

private:
    enum class Kind { custom, builtIn, all };

    void refresh() override;
    void tellSource() override { Q_EMIT sourceChanged(); }

    /// The rules of one kind that this list is to show; none without a source.
    [[nodiscard]] const std::vector<CleanupRule>& rules(Kind kind) const;
    /// The rule at a place, if it is one of this kind.
    [[nodiscard]] std::optional<CleanupRule> ruleAt(int row, Kind kind) const;
    void setCounts(std::size_t custom, std::size_t builtIn);

    Kind kind_ = Kind::custom;
    QString query_;
    int customCount_ = 0;
    int builtInCount_ = 0;
};

}  // namespace Brimlo
