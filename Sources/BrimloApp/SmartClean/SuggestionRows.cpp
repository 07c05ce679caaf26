#include "BrimloApp/SmartClean/SuggestionRows.h"

#include "BrimloApp/Shell/Shown.h"
#include "BrimloApp/SmartClean/SmartClean.h"
#include "BrimloCore/Support/Path.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <ranges>
#include <string_view>
#include <utility>

namespace Brimlo {

namespace {

using Line = SuggestionLine;
using Kind = Line::Kind;
using Tick = Line::Tick;

constexpr std::size_t kMostItems = 60;
constexpr std::int64_t kIdleDays = 31;

// In the order of `kAllPersonas`.
constexpr std::array<std::string_view, kAllPersonas.size()> kPersonaSymbols{
    "person.2",
    "hammer",
    "brain",
    "film",
    "music.note",
    "camera",
    "cube",
    "gamecontroller",
    "ruler",
    "flask",
    "briefcase",
    "gamecontroller.fill"};

QString word(Kind kind) {
    constexpr std::array kWords{"suggestion", "details", "folder", "item", "more"};
    return QString::fromUtf8(kWords.at(static_cast<std::size_t>(kind)));
}

QString word(Tick tick) {
    constexpr std::array kWords{"none", "some", "all"};
    return QString::fromUtf8(kWords.at(static_cast<std::size_t>(tick)));
}

/// A role for a text of a row.
auto text(std::string Line::* field) {
    return [field](const Line& row) { return shown(row.*field); };
}

/// Not `shown`, because some authors write several lines.
QString regeneratesOf(const Line& row) {
    return QString::fromStdString(row.regenerates);
}

QStringList reasonsOf(const Line& row) {
    QStringList lines;
    for (const auto& [label, text] : row.reasons) {
        lines.append(QStringLiteral("%1: %2").arg(words(label), shown(text)));
    }
    return lines;
}

std::string joined(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& each : words) {
        line += (line.empty() ? "" : ", ") + each;
    }
    return line;
}

auto pathsOf(const Suggestion& suggestion, const ItemGroup& group) {
    return group.items | std::views::transform([&](std::size_t place) -> const std::string& {
               return suggestion.items[place].path;
           });
}

Tick tickOf(std::int64_t ticked, std::size_t count) {
    return ticked == 0 ? Tick::none : std::cmp_equal(ticked, count) ? Tick::all : Tick::some;
}

Line headOf(const Suggestion& suggestion, const SmartClean& source) {
    Line row{.kind = Kind::suggestion, .id = suggestion.id, .path = {}, .folder = {}};
    row.name = suggestion.name;
    row.group = suggestion.group;
    row.risk = suggestion.risk;
    row.runningApps = joined(suggestion.runningApps);
    row.size = suggestion.totalSize();
    row.itemCount = static_cast<std::int64_t>(suggestion.items.size());
    row.frees = source.frees(suggestion).words;
    row.tick = tickOf(source.ticked(suggestion), suggestion.items.size());
    return row;
}

Line folderOf(
    const Suggestion& suggestion, const ItemGroup& group, const SmartClean::Paths& selected) {
    Line row{.kind = Kind::folder, .id = suggestion.id, .path = group.folder, .folder = {}};
    row.size = group.size;
    row.itemCount = static_cast<std::int64_t>(group.items.size());
    const auto ticked = std::ranges::count_if(
        pathsOf(suggestion, group), [&](const auto& path) { return selected.contains(path); });
    row.tick = tickOf(ticked, group.items.size());
    return row;
}

Line moreOf(const Suggestion& suggestion, std::string folder, std::size_t count) {
    Line row{.kind = Kind::more, .id = suggestion.id, .path = {}, .folder = std::move(folder)};
    row.itemCount = static_cast<std::int64_t>(count);
    return row;
}

Line detailsOf(const Suggestion& suggestion, const SmartClean& source) {
    Line row{.kind = Kind::details, .id = suggestion.id, .path = {}, .folder = {}};
    row.risk = suggestion.risk;
    row.regenerates = suggestion.regenerates;
    row.officialCommand = suggestion.officialCommand.value_or("");
    row.reasons = reasons(suggestion);
    if (const auto& [words, why] = source.frees(suggestion); !words.empty()) {
        row.reasons.push_back({.label = "Space", .text = "alone it " + words + ": " + why});
    }
    row.isDocker = std::ranges::any_of(
        suggestion.items, [](const SuggestionItem& item) { return isPseudoPath(item.path); });
    return row;
}

Line itemOf(
    const Suggestion& suggestion, const SuggestionItem& item, const SmartClean::Paths& selected) {
    Line row{.kind = Kind::item, .id = suggestion.id, .path = item.path, .folder = {}};
    row.isDocker = isPseudoPath(item.path);
    row.size = item.size;
    row.frees = FreedSpace::alone(item).words();
    row.tick = selected.contains(item.path) ? Tick::all : Tick::none;
    row.subtitle = item.subtitle.value_or("");
    row.detail = item.detail.value_or("");
    const std::int64_t idle = item.idleDays.value_or(0);
    row.idleDays = idle >= kIdleDays ? idle : -1;
    return row;
}

std::vector<Rows<Line>::Role> roles() {
    return {
        {"kind",            [](const Line& row) { return word(row.kind); }                 },
        {"name",            text(&Line::name)                                              },
        {"risk",            [](const Line& row) { return words(rawValue(row.risk)); }      },
        {"runningApps",     text(&Line::runningApps)                                       },
        {"size",            [](const Line& row) { return static_cast<double>(row.size); }  },
        {"frees",           text(&Line::frees)                                             },
        {"itemCount",       [](const Line& row) { return static_cast<int>(row.itemCount); }},
        {"tick",            [](const Line& row) { return word(row.tick); }                 },
        {"expanded",        [](const Line& row) { return row.expanded; }                   },
        {"regenerates",     regeneratesOf                                                  },
        {"officialCommand", text(&Line::officialCommand)                                   },
        {"reasons",         reasonsOf                                                      },
        {"path",            text(&Line::path)                                              },
        {"isInFolder",      [](const Line& row) { return !row.folder.empty(); }            },
        {"subtitle",        text(&Line::subtitle)                                          },
        {"detail",          text(&Line::detail)                                            },
        {"idleDays",        [](const Line& row) { return static_cast<int>(row.idleDays); } },
        {"isDocker",        [](const Line& row) { return row.isDocker; }                   },
    };
}

}  // namespace

std::string SuggestionLine::key() const {
    // Neither an id nor a path contains a zero byte.
    std::string key = id;
    key += '\0';
    key += static_cast<char>('0' + static_cast<int>(kind));
    key += kind == Kind::more ? folder : path;
    return key;
}

SuggestionRows::SuggestionRows(AppModel& app, SmartClean& source)
    : app_{app}
    , source_{source}
    , rows_{*this, roles()} {
    connect(&source, &SmartClean::suggestionsChanged, this, [this] {
        groups_.clear();
        refresh();
    });
    connect(&source, &SmartClean::suggestionsChanged, this, &SuggestionRows::figuresChanged);
    connect(&source, &SmartClean::selectedChanged, this, &SuggestionRows::refresh);
}

void SuggestionRows::setQuery(const QString& query) {
    if (query_ == query) {
        return;
    }
    query_ = query;
    search_ = Search{query};
    refresh();
    Q_EMIT queryChanged();
}

QVariantList SuggestionRows::audiences() {
    const auto entry = [](std::string_view id, const QString& text, std::string_view symbol) {
        return QVariantMap{
            {"id",     words(id)    },
            {"text",   text         },
            {"symbol", words(symbol)},
        };
    };
    QVariantList all{entry("", tr("All audiences"), "")};
    for (std::size_t i = 0; i < kAllPersonas.size(); ++i) {
        const Persona persona = kAllPersonas[i];
        all.append(entry(rawValue(persona), words(label(persona)), kPersonaSymbols[i]));
    }
    return all;
}

QString SuggestionRows::audience() const {
    return audience_ ? words(rawValue(*audience_)) : QString{};
}

void SuggestionRows::setAudience(const QString& word) {
    const auto audience = personaFromRawValue(word.toStdString());
    if (audience_ == audience) {
        return;
    }
    audience_ = audience;
    refresh();
    Q_EMIT audienceChanged();
}

int SuggestionRows::foundCount() const {
    return static_cast<int>(source_.suggestions().size());
}

double SuggestionRows::bytesAt(Risk risk) const {
    FreedSpace freed;
    for (const Suggestion& suggestion : source_.suggestions()) {
        if (suggestion.risk == risk) {
            for (const SuggestionItem& item : suggestion.items) {
                freed.add(item);
            }
        }
    }
    return number(freed.atLeast());
}

void SuggestionRows::toggle(int place) {
    const Line* chosen = rows_.at(place);
    if (chosen == nullptr) {
        return;
    }
    // Copied, because the model's reaction replaces the rows.
    const Line known = *chosen;
    const auto& all = source_.suggestions();
    const auto found = std::ranges::find(all, known.id, &Suggestion::id);
    if (found == all.end()) {
        return;
    }
    if (known.kind == Kind::item) {
        source_.toggle(*found, {known.path});
    } else if (known.kind == Kind::suggestion) {
        source_.toggle(*found);
    } else if (known.kind == Kind::folder) {
        const std::vector<ItemGroup>& groups = groupsOf(*found);
        const auto group = std::ranges::find(groups, known.path, &ItemGroup::folder);
        if (group != groups.end()) {
            const auto paths = pathsOf(*found, *group);
            source_.toggle(*found, {paths.begin(), paths.end()});
        }
    }
}

void SuggestionRows::toggleExpanded(int place) {
    const Line* chosen = rows_.at(place);
    if (chosen == nullptr || chosen->kind == Kind::item || chosen->kind == Kind::more) {
        return;
    }
    const std::string key = chosen->key();
    if (expanded_.erase(key) == 0) {
        expanded_.insert(key);
    }
    refresh();
}

int SuggestionRows::head(int place) const {
    const Line* chosen = rows_.at(place);
    const Kind wanted =
        chosen != nullptr && !chosen->folder.empty() ? Kind::folder : Kind::suggestion;
    while (rows_.at(place) != nullptr && rows_.at(place)->kind != wanted) {
        --place;
    }
    return place;
}

void SuggestionRows::reveal(int place) const {
    if (isFile(place)) {
        app_.reveal({rows_.at(place)->path});
    }
}

bool SuggestionRows::isItem(int place) const {
    const Line* chosen = rows_.at(place);
    return chosen != nullptr && (chosen->kind == Kind::item || chosen->kind == Kind::folder);
}

bool SuggestionRows::isFile(int place) const {
    return isItem(place) && !isPseudoPath(rows_.at(place)->path);
}

void SuggestionRows::copyPath(int place) const {
    if (isFile(place)) {
        QGuiApplication::clipboard()->setText(fromPath(rows_.at(place)->path));
    }
}

void SuggestionRows::leaveAlone(int place) {
    if (!isItem(place)) {
        return;
    }
    // Copied, because the model's reaction replaces the rows.
    const Line row = *rows_.at(place);
    source_.leavePathAlone(
        row.path, isFile(place) ? fromPath(std::string{Path::name(row.path)}) : shown(row.detail));
}

void SuggestionRows::leaveRuleAlone(int place) {
    const Line* chosen = rows_.at(place);
    if (chosen == nullptr) {
        return;
    }
    const auto& all = source_.suggestions();
    const auto found = std::ranges::find(all, chosen->id, &Suggestion::id);
    if (found != all.end()) {
        const std::string id = found->id;
        source_.leaveRuleAlone(id, shown(found->name));
    }
}

void SuggestionRows::refresh() {
    std::vector<Line> rows;
    int visible = 0;
    for (const Suggestion& suggestion : source_.suggestions()) {
        if (audience_ && std::ranges::count(suggestion.personas, *audience_) == 0) {
            continue;
        }
        ++visible;
        if (search_.finds(suggestion.name, suggestion.group)) {
            append(suggestion, rows);
        }
    }
    rows_.set(std::move(rows));
    if (visibleCount_ != visible) {
        visibleCount_ = visible;
        Q_EMIT visibleCountChanged();
    }
}

/// Whether the row is expanded; notes it in the row.
bool SuggestionRows::expand(Line& row) const {
    row.expanded = expanded_.contains(row.key());
    return row.expanded;
}

/// Kept until the suggestions change: grouping thousands of items takes longer than a frame.
const std::vector<ItemGroup>& SuggestionRows::groupsOf(const Suggestion& suggestion) {
    const auto [place, isNew] = groups_.try_emplace(suggestion.id);
    if (isNew) {
        place->second = grouped(suggestion.items);
    }
    return place->second;
}

void SuggestionRows::append(const Suggestion& suggestion, std::vector<Line>& rows) {
    const SmartClean::Paths& selected = source_.selected();
    rows.push_back(headOf(suggestion, source_));
    if (!expand(rows.back())) {
        return;
    }
    rows.push_back(detailsOf(suggestion, source_));
    static_cast<void>(expand(rows.back()));
    std::size_t lines = 0;
    std::size_t listed = 0;
    for (const ItemGroup& group : groupsOf(suggestion)) {
        if (lines++ == kMostItems) {
            rows.push_back(moreOf(suggestion, "", suggestion.items.size() - listed));
            return;
        }
        listed += group.items.size();
        if (group.isFolder()) {
            appendFolder(suggestion, group, rows);
        } else {
            rows.push_back(itemOf(suggestion, suggestion.items[group.items.front()], selected));
        }
    }
}

void SuggestionRows::appendFolder(
    const Suggestion& suggestion, const ItemGroup& group, std::vector<Line>& rows) const {
    rows.push_back(folderOf(suggestion, group, source_.selected()));
    if (!expand(rows.back())) {
        return;
    }
    for (std::size_t i = 0; i < std::min(group.items.size(), kMostItems); ++i) {
        rows.push_back(itemOf(suggestion, suggestion.items[group.items[i]], source_.selected()));
        rows.back().folder = group.folder;
    }
    if (group.items.size() > kMostItems) {
        rows.push_back(moreOf(suggestion, group.folder, group.items.size() - kMostItems));
    }
}

}  // namespace Brimlo
