#pragma once

#include "BrimloApp/Shell/Rows.h"
#include "BrimloApp/Shell/Search.h"
#include "BrimloCore/Models/CleanupRule.h"
#include "BrimloCore/Models/Suggestion.h"

#include <QtCore/QString>
#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace Brimlo {

class AppModel;
class SmartClean;

/// A line of the Smart Clean list. What its kind has no use for is empty.
struct SuggestionLine {
    enum class Kind { suggestion, details, item, more };
    enum class Tick { none, some, all };

    Kind kind = Kind::suggestion;
    std::string id;    ///< The suggestion's, on each of its lines.
    std::string path;  ///< An item's.

    std::string name;
    std::string group;
    Risk risk = Risk::review;
    std::string runningApps;
    std::int64_t size = 0;
    std::int64_t itemCount = 0;  ///< Of a suggestion, or those that are not listed.
    Tick tick = Tick::none;      ///< Of a suggestion, or of an item.
    bool expanded = false;
    bool isDocker = false;  ///< Whether it, or what belongs to it, goes for good through Docker.

    std::string regenerates;
    std::string officialCommand;

    std::string subtitle;
    std::string detail;
    std::int64_t idleDays = -1;  ///< -1 when it is not known, or too few to speak of.

    bool operator==(const SuggestionLine&) const = default;

    [[nodiscard]] std::string key() const;
};

/// The suggestions of the audience chosen that match a search, each followed by its details and
/// its items when it is expanded.
class SuggestionRows : public Brimlo::RowList {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY queryChanged)
    Q_PROPERTY(int visibleCount READ visibleCount NOTIFY visibleCountChanged)

public:
    SuggestionRows(AppModel& app, SmartClean& source);

    /// What the name or the group has to contain, letter case and spaces around it aside.
    [[nodiscard]] const QString& query() const { return query_; }
    void setQuery(const QString& query);

    /// How many suggestions there are without the search.
    [[nodiscard]] int visibleCount() const { return visibleCount_; }

    /// Ticks or unticks an item, or all items of a suggestion.
    Q_INVOKABLE void toggle(int place);
    /// Shows or hides what belongs to a suggestion. That holds for later runs as well.
    Q_INVOKABLE void toggleExpanded(int place);
    /// The place of the suggestion that a line belongs to.
    Q_INVOKABLE [[nodiscard]] int head(int place) const;
    /// Shows an item in the file manager; Docker's objects are not found there.
    Q_INVOKABLE void reveal(int place) const;

Q_SIGNALS:
    void queryChanged();
    void visibleCountChanged();

private:
    void refresh();
    void append(const Suggestion& suggestion, std::vector<SuggestionLine>& rows) const;

    AppModel& app_;
    SmartClean& source_;
    Rows<SuggestionLine> rows_;
    QString query_;
    Search search_;
    int visibleCount_ = 0;
    std::set<std::string> expanded_;  ///< Ids.
};

}  // namespace Brimlo
