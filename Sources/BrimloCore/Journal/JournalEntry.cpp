#include "BrimloCore/Journal/JournalEntry.h"

#include "BrimloCore/Support/Dates.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

#include <boost/json/serialize.hpp>

namespace Brimlo {

namespace {

using Json::FieldReader;

std::optional<Uuid> readUuid(FieldReader& reader, std::string_view key) {
    const std::optional<std::string> text = reader.optionalText(key);
    if (!text) {
        return std::nullopt;
    }
    const std::optional<Uuid> id = Uuid::parse(*text);
    if (!id) {
        reader.fail(key, "is not an identifier");
    }
    return id;
}

std::chrono::sys_seconds readDate(FieldReader& reader) {
    const auto date = Dates::parse(reader.text("date"));
    if (!date) {
        reader.fail("date", "is not a date");
    }
    return date.value_or(std::chrono::sys_seconds{});
}

void encodeKey(std::string& out, std::string_view key) {
    out += out.ends_with('{') ? "\"" : ",\"";
    out += key;
    out += "\":";
}

void encodeText(std::string& out, std::string_view key, std::string_view text) {
    encodeKey(out, key);
    // One invalid byte would make the whole journal unreadable.
    out += Text::isValid(text) ? boost::json::serialize(text)
                               : boost::json::serialize(Text::printable(text));
}

void encodeIfPresent(
    std::string& out, std::string_view key, const std::optional<std::string>& text) {
    if (text) {
        encodeText(out, key, *text);
    }
}

void encodeFlag(std::string& out, std::string_view key, bool flag) {
    encodeKey(out, key);
    out += flag ? "true" : "false";
}

}  // namespace

JournalEntry JournalEntry::make(Disposal disposal) {
    return {
        .id = Uuid::random(),
        .date = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()),
        .originalPath = std::move(disposal.originalPath),
        .trashPath = std::move(disposal.trashPath),
        .size = disposal.size,
        .ruleID = std::move(disposal.ruleID),
        .trashID = std::move(disposal.trashID),
        .batchID = disposal.batchID,
    };
}

JournalEntry::State JournalEntry::state() const {
    if (undone) {
        return State::restored;
    }
    if (purgedFromTrash) {
        return State::gone;
    }
    return trashPath ? State::inTrash : State::removed;
}

std::expected<JournalEntry, std::string> JournalEntry::decode(const Json::Value& value) {
    FieldReader reader{value};
    static_cast<void>(reader.required("id"));
    const Uuid id = readUuid(reader, "id").value_or(Uuid{});
    // A damaged file can contain millions of elements that are not entries; don't read their
    // fields.
    if (reader.error()) {
        return std::unexpected(*reader.error());
    }
    JournalEntry entry{
        .id = id,
        .date = readDate(reader),
        .originalPath = reader.text("originalPath"),
        .trashPath = reader.optionalText("trashPath"),
        .size = reader.number("size"),
        .ruleID = reader.optionalText("ruleID"),
        .undone = reader.flag("undone"),
        .purgedFromTrash = reader.flag("purgedFromTrash"),
        .trashID = reader.optionalText("trashID"),
        .batchID = readUuid(reader, "batchID").value_or(id),
    };
    if (reader.error()) {
        return std::unexpected(*reader.error());
    }
    return entry;
}

void JournalEntry::encode(std::string& out) const {
    out += '{';
    encodeText(out, "id", id.text());
    encodeText(out, "date", Dates::format(date));
    encodeText(out, "originalPath", originalPath);
    encodeIfPresent(out, "trashPath", trashPath);
    encodeKey(out, "size");
    out += std::to_string(size);
    encodeIfPresent(out, "ruleID", ruleID);
    encodeFlag(out, "undone", undone);
    encodeFlag(out, "purgedFromTrash", purgedFromTrash);
    encodeIfPresent(out, "trashID", trashID);
    encodeText(out, "batchID", batchID.text());
    out += '}';
}

std::chrono::sys_seconds HistoryBatch::date() const {
    const auto latest = std::ranges::max_element(items, {}, &JournalEntry::date);
    return latest == items.end() ? std::chrono::sys_seconds::min() : latest->date;
}

std::size_t HistoryBatch::restorableCount() const {
    return static_cast<std::size_t>(std::ranges::count_if(items, &JournalEntry::isRestorable));
}

std::string HistoryBatch::title() const {
    return items.size() == 1 ? std::string{Path::name(items.front().originalPath)}
                             : std::to_string(items.size()) + " items";
}

std::vector<HistoryBatch> HistoryBatch::group(const std::vector<JournalEntry>& entries) {
    std::vector<HistoryBatch> batches;
    std::map<Uuid, std::size_t> places;
    for (const JournalEntry& entry : entries) {
        const auto [place, isNew] = places.try_emplace(entry.batchID, batches.size());
        if (isNew) {
            batches.push_back({.id = entry.batchID, .items = {}});
        }
        batches[place->second].items.push_back(entry);
    }
    return batches;
}

}  // namespace Brimlo
