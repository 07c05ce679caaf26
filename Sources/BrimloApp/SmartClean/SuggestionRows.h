#pragma once

#include "BrimloApp/Shell/Rows.h"
#include "BrimloApp/Shell/Search.h"
#include "BrimloCore/Cleaner/ItemGroups.h"
#include "BrimloCore/Models/CleanupRule.h"
#include "BrimloCore/Models/Suggestion.h"

#include <QtCore/QString>
#include <QtCore/QVariantList>
#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Brimlo {

class AppModel;
class SmartClean;

/// A row of the Smart Clean list. Fields that a kind does not use are empty.
struct SuggestionLine {
    enum class Kind { suggestion, details, folder, item, more };
    enum class Tick { none, some, all };

    Kind kind = Kind::suggestion;
    std::string id;      ///< The suggestion's id, in each of its rows.
    std::string path;    ///< The path of an item, or of a folder of many.
    std::string folder;  ///< The folder whose row a row is below.

    std::string name;
    std::string group;
    Risk risk = Risk::review;
    std::string runningApps;
    std::int64_t size = 0;
    std::string frees;  ///< What removing it alone frees, in words; empty if that is its size.
    /// The items of a suggestion or a folder, or how many are not listed.
    std::int64_t itemCount = 0;
    Tick tick = Tick::none;  ///< For suggestions, folders and items.
    bool expanded = false;
    bool isDocker =
        false;  ///< Whether Docker removes the item, or an item of the suggestion, for good.

    std::string regenerates;
    std::string officialCommand;
    std::vector<Reason> reasons;

    std::string subtitle;
    std::string detail;
    std::int64_t idleDays = -1;  ///< -1 if unknown or too few to mention.

    bool operator==(const SuggestionLine&) const = default;

    [[nodiscard]] std::string key() const;
};

/// The suggestions for an audience that match a search, each followed by its details and items if
/// expanded. Many items of one folder are one row, followed by them if that is expanded.
class SuggestionRows : public Brimlo::RowList {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY queryChanged)
    // For each audience its `id`, a word, and its `text` and `symbol`; first of all audiences.
    Q_PROPERTY(QVariantList audiences READ audiences CONSTANT)
    Q_PROPERTY(QString audience READ audience WRITE setAudience NOTIFY audienceChanged)
    Q_PROPERTY(int visibleCount READ visibleCount NOTIFY visibleCountChanged)
    // The figures of all suggestions, visible or not.
    Q_PROPERTY(int foundCount READ foundCount NOTIFY figuresChanged)
    Q_PROPERTY(double safeBytes READ safeBytes NOTIFY figuresChanged)
    Q_PROPERTY(double rebuildBytes READ rebuildBytes NOTIFY figuresChanged)

public:
    SuggestionRows(AppModel& app, SmartClean& source);

    /// What the name or the group must contain, ignoring letter case and surrounding spaces.
    [[nodiscard]] const QString& query() const { return query_; }
    void setQuery(const QString& query);

    [[nodiscard]] static QVariantList audiences();
    /// The word of the audience whose suggestions are visible; empty for all.
    [[nodiscard]] QString audience() const;
    void setAudience(const QString& word);

    /// How many suggestions are for the audience, whether they match the search or not.
    [[nodiscard]] int visibleCount() const { return visibleCount_; }

    [[nodiscard]] int foundCount() const;
    [[nodiscard]] double safeBytes() const { return bytesAt(Risk::safe); }
    [[nodiscard]] double rebuildBytes() const { return bytesAt(Risk::rebuild); }

    /// Toggles an item, or all items of a suggestion or a folder.
    Q_INVOKABLE void toggle(int place);
    /// Expands or collapses a suggestion, a folder or the reasons in the details, also in later
    /// runs.
    Q_INVOKABLE void toggleExpanded(int place);
    /// The row of the folder, or else of the suggestion, that a row belongs to.
    Q_INVOKABLE [[nodiscard]] int head(int place) const;
    /// Shows an item or a folder in the file manager; does nothing for Docker's objects.
    Q_INVOKABLE void reveal(int place) const;
    /// Whether a row is an item or a folder, of the disk or Docker's.
    Q_INVOKABLE [[nodiscard]] bool isItem(int place) const;
    /// Whether a row is an item or a folder on the disk.
    Q_INVOKABLE [[nodiscard]] bool isFile(int place) const;
    Q_INVOKABLE void copyPath(int place) const;
    /// Never suggests an item or a folder again.
    Q_INVOKABLE void leaveAlone(int place);
    /// Never suggests again what the rule of a row finds.
    Q_INVOKABLE void leaveRuleAlone(int place);

Q_SIGNALS:
    void queryChanged();
    void audienceChanged();
    void visibleCountChanged();
    void figuresChanged();

private:
    [[nodiscard]] double bytesAt(Risk risk) const;
    void refresh();
    [[nodiscard]] bool expand(SuggestionLine& row) const;
    [[nodiscard]] const std::vector<ItemGroup>& groupsOf(const Suggestion& suggestion);
    void append(const Suggestion& suggestion, std::vector<SuggestionLine>& rows);
    void appendFolder(
        const Suggestion& suggestion,
        const ItemGroup& group,
        std::vector<SuggestionLine>& rows) const;

    AppModel& app_;
    SmartClean& source_;
    Rows<SuggestionLine> rows_;
    QString query_;
    Search search_;
    std::optional<Persona> audience_;
    int visibleCount_ = 0;
    std::set<std::string> expanded_;                        ///< The keys of rows.
    std::map<std::string, std::vector<ItemGroup>> groups_;  ///< By the suggestion's id.
};

}  // namespace Brimlo
