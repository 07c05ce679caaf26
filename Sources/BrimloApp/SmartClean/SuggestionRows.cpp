#include "BrimloApp/SmartClean/SuggestionRows.h"

#include "BrimloApp/Shell/Shown.h"
#include "BrimloApp/SmartClean/SmartClean.h"
#include "BrimloCore/Cleaner/CleanPlan.h"

#include <algorithm>
#include <array>
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
    constexpr std::array kWords{"suggestion", "details", "item", "more"};
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

std::string joined(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& each : words) {
        line += (line.empty() ? "" : ", ") + each;
    }
    return line;
}

Tick tickOf(const Suggestion& suggestion, const std::set<std::string>& selected) {
    const auto ticked = std::ranges::count_if(
        suggestion.items, [&](const SuggestionItem& item) { return selected.contains(item.path); });
    if (ticked == 0) {
        return Tick::none;
    }
    return std::cmp_equal(ticked, suggestion.items.size()) ? Tick::all : Tick::some;
}

Line headOf(const Suggestion& suggestion, const std::set<std::string>& selected) {
    Line row{.kind = Kind::suggestion, .id = suggestion.id};
    row.name = suggestion.name;
    row.group = suggestion.group;
    row.risk = suggestion.risk;
    row.runningApps = joined(suggestion.runningApps);
    row.size = suggestion.totalSize();
    row.itemCount = static_cast<std::int64_t>(suggestion.items.size());
    row.tick = tickOf(suggestion, selected);
    return row;
}

Line detailsOf(const Suggestion& suggestion) {
    Line row{.kind = Kind::details, .id = suggestion.id};
    row.risk = suggestion.risk;
    row.regenerates = suggestion.regenerates;
    row.officialCommand = suggestion.officialCommand.value_or("");
    row.isDocker = std::ranges::any_of(
        suggestion.items, [](const SuggestionItem& item) { return isPseudoPath(item.path); });
    return row;
}

Line itemOf(
    const Suggestion& suggestion,
    const SuggestionItem& item,
    const std::set<std::string>& selected) {
    Line row{.kind = Kind::item, .id = suggestion.id, .path = item.path};
    row.isDocker = isPseudoPath(item.path);
    row.size = item.size;
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
        {"itemCount",       [](const Line& row) { return static_cast<int>(row.itemCount); }},
        {"tick",            [](const Line& row) { return word(row.tick); }                 },
        {"expanded",        [](const Line& row) { return row.expanded; }                   },
        {"regenerates",     regeneratesOf                                                  },
        {"officialCommand", text(&Line::officialCommand)                                   },
        {"path",            text(&Line::path)                                              },
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
    key += path;
    return key;
}

SuggestionRows::SuggestionRows(AppModel& app, SmartClean& source)
    : app_{app}
    , source_{source}
    , rows_{*this, roles()} {
    connect(&source, &SmartClean::suggestionsChanged, this, &SuggestionRows::refresh);
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
    double bytes = 0;
    for (const Suggestion& suggestion : source_.suggestions()) {
        bytes += suggestion.risk == risk ? number(suggestion.totalSize()) : 0;
    }
    return bytes;
}

void SuggestionRows::toggle(int place) {
    const Line* chosen = rows_.at(place);
    if (chosen == nullptr) {
        return;
    }
    // Copied, because the model's reaction replaces the rows.
    const Line known = *chosen;
    if (known.kind == Kind::item) {
        source_.toggle(known.path);
    } else if (known.kind == Kind::suggestion) {
        const auto& all = source_.suggestions();
        const auto found = std::ranges::find(all, known.id, &Suggestion::id);
        if (found != all.end()) {
            source_.toggle(*found);
        }
    }
}

void SuggestionRows::toggleExpanded(int place) {
    const Line* chosen = rows_.at(place);
    if (chosen == nullptr || chosen->kind != Kind::suggestion) {
        return;
    }
    if (expanded_.erase(chosen->id) == 0) {
        expanded_.insert(chosen->id);
    }
    refresh();
}

int SuggestionRows::head(int place) const {
    while (rows_.at(place) != nullptr && rows_.at(place)->kind != Kind::suggestion) {
        --place;
    }
    return place;
}

void SuggestionRows::reveal(int place) const {
    const Line* chosen = rows_.at(place);
    if (chosen != nullptr && chosen->kind == Kind::item && !isPseudoPath(chosen->path)) {
        app_.reveal({chosen->path});
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

void SuggestionRows::append(const Suggestion& suggestion, std::vector<Line>& rows) const {
    const std::set<std::string>& selected = source_.selected();
    rows.push_back(headOf(suggestion, selected));
    if (!expanded_.contains(suggestion.id)) {
        return;
    }
    rows.back().expanded = true;
    rows.push_back(detailsOf(suggestion));
    const std::size_t listed = std::min(suggestion.items.size(), kMostItems);
    for (std::size_t i = 0; i < listed; ++i) {
        rows.push_back(itemOf(suggestion, suggestion.items[i], selected));
    }
    if (listed < suggestion.items.size()) {
        Line more{.kind = Kind::more, .id = suggestion.id};
        more.itemCount = static_cast<std::int64_t>(suggestion.items.size() - listed);
        rows.push_back(std::move(more));
    }
}

}  // namespace Brimlo
