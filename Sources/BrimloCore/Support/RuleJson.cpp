#include "BrimloCore/Support/RuleJson.h"

#include "BrimloCore/Support/Text.h"

#include <utility>

namespace Brimlo::RuleJson {

namespace {

using Json::FieldReader;
using Json::Value;

/// The value quoted for an error text, shortened when it is long.
std::string inQuotes(std::string_view text) {
    constexpr std::size_t kLongest = 40;
    const bool isLong = text.size() > kLongest;
    return '"' + Text::printable(text.substr(0, kLongest)) + (isLong ? "…\"" : "\"");
}

/// A number from 0 to 2, or one of the three words in any letter case.
Risk readRisk(FieldReader& reader) {
    const Value* value = reader.required("risk");
    if (value == nullptr) {
        return Risk::review;
    }
    const std::optional<std::int64_t> number = Json::integer(*value);
    if (number && *number >= 0 && *number <= 2) {
        return static_cast<Risk>(*number);
    }
    const std::string word = Text::lowercased(reader.text("risk"));
    if (word == "safe") {
        return Risk::safe;
    }
    if (word == "rebuild" || word == "rebuilds") {
        return Risk::rebuild;
    }
    if (word != "review") {
        reader.fail("risk", "risk must be safe, rebuild or review");
    }
    return Risk::review;
}

std::vector<Persona> readPersonas(FieldReader& reader) {
    std::vector<Persona> personas;
    for (const std::string& word : reader.texts("personas")) {
        const std::optional<Persona> persona = personaFromRawValue(word);
        if (!persona) {
            reader.fail("personas", inQuotes(word) + " is not an audience");
            return {};
        }
        personas.push_back(*persona);
    }
    return personas;
}

Confidence readConfidence(FieldReader& reader) {
    const std::optional<std::string> word = reader.optionalText("confidence");
    if (!word) {
        return Confidence::documented;
    }
    const std::optional<Confidence> confidence = confidenceFromRawValue(*word);
    if (!confidence) {
        reader.fail("confidence", inQuotes(*word) + " is not a level of evidence");
    }
    return confidence.value_or(Confidence::unverified);
}

std::vector<Experiment> readExperiments(FieldReader& reader) {
    std::vector<Experiment> experiments;
    const Value* value = reader.optional("provenOn");
    if (value == nullptr) {
        return experiments;
    }
    const Json::Array* array = value->if_array();
    if (array == nullptr) {
        reader.fail("provenOn", "is not a list");
        return experiments;
    }
    for (const Value& element : *array) {
        FieldReader each{element};
        experiments.push_back({
            .system = each.text("system"),
            .program = each.text("program"),
            .date = each.text("date"),
        });
        if (each.error()) {
            reader.fail("provenOn", *each.error());
        }
    }
    return experiments;
}

CleanupRule read(FieldReader& reader, const CleanupRule*) {
    return {
        .id = reader.text("id"),
        .name = reader.text("name"),
        .group = reader.text("group"),
        .personas = readPersonas(reader),
        .risk = readRisk(reader),
        .paths = reader.texts("paths"),
        .regenerates = reader.text("regenerates"),
        .officialCommand = reader.optionalText("officialCommand"),
        .quitApps = reader.textsOrNone("quitApps"),
        .contentsOnly = reader.flagOr("contentsOnly", false),
        .excludes = reader.textsOrNone("excludes"),
        .minAgeDays = reader.optionalNumber("minAgeDays"),
        .isCatchAll = reader.flagOr("catchAll", false),
        .domain = reader.optionalText("domain"),
        .confidence = readConfidence(reader),
        .sources = reader.textsOrNone("sources"),
        .conditions =
            {.beside = reader.textsOrNone("beside"),
                         .owners = reader.textsOrNone("owners"),
                         .ownerFiles = reader.textsOrNone("ownerFiles")},
        .provenOn = readExperiments(reader),
    };
}

ArtifactPattern read(FieldReader& reader, const ArtifactPattern*) {
    return {
        .id = reader.text("id"),
        .name = reader.text("name"),
        .group = reader.text("group"),
        .personas = readPersonas(reader),
        .risk = readRisk(reader),
        .regenerates = reader.text("regenerates"),
        .officialCommand = reader.optionalText("officialCommand"),
        .names = reader.textsOrNone("names"),
        .suffixes = reader.textsOrNone("suffixes"),
        .markers = reader.textsOrNone("markers"),
        .excludes = reader.textsOrNone("excludes"),
        .proofs = reader.textsOrNone("proofs"),
        .disproofs = reader.textsOrNone("disproofs"),
        .provenOn = readExperiments(reader),
    };
}

/// The list under `key`, each element for itself; absent when the key is.
template <typename T>
std::optional<std::vector<Lossy<T>>> readElements(FieldReader& pack, std::string_view key) {
    const Value* value = pack.optional(key);
    if (value == nullptr) {
        return std::nullopt;
    }
    const Json::Array* array = value->if_array();
    if (array == nullptr) {
        pack.fail(key, "is not a list");
        return std::nullopt;
    }
    std::vector<Lossy<T>> elements;
    elements.reserve(array->size());
    for (const Value& element : *array) {
        FieldReader reader{element};
        T decoded = read(reader, static_cast<const T*>(nullptr));
        if (reader.error()) {
            elements.push_back({.error = reader.error()});
        } else {
            elements.push_back({.value = std::move(decoded)});
        }
    }
    return elements;
}

template <typename T>
void addIfPresent(Json::Object& object, std::string_view key, const std::optional<T>& value) {
    if (value) {
        object.emplace(key, *value);
    }
}

void addIfAny(Json::Object& object, std::string_view key, const std::vector<std::string>& texts) {
    if (!texts.empty()) {
        object.emplace(key, encode(texts));
    }
}

void addIfAny(Json::Object& object, const std::vector<Experiment>& provenOn) {
    Json::Array array;
    for (const Experiment& each : provenOn) {
        array.push_back(Json::Object{
            {"system",  each.system },
            {"program", each.program},
            {"date",    each.date   },
        });
    }
    if (!array.empty()) {
        object.emplace("provenOn", std::move(array));
    }
}

template <typename Words>
Json::Array rawValues(const Words& words) {
    Json::Array array;
    for (const auto word : words) {
        array.emplace_back(rawValue(word));
    }
    return array;
}

}  // namespace

std::expected<RulePackFile, std::string> decodePack(std::string_view text) {
    const auto document = Json::parse(text);
    if (!document) {
        return std::unexpected(document.error());
    }
    FieldReader reader{*document};
    RulePackFile pack{
        .pack = reader.text("pack"),
        .version = reader.optionalNumber("version"),
        .system = reader.optionalText("system"),
        .rules = readElements<CleanupRule>(reader, "rules"),
        .artifacts = readElements<ArtifactPattern>(reader, "artifacts"),
    };
    if (reader.error()) {
        return std::unexpected("not a rule pack: " + *reader.error());
    }
    return pack;
}

Json::Array encode(const std::vector<std::string>& texts) {
    return Json::Array(texts.begin(), texts.end());
}

Json::Object encode(const CleanupRule& rule) {
    Json::Object object;
    object.emplace("id", rule.id);
    object.emplace("name", rule.name);
    object.emplace("group", rule.group);
    object.emplace("personas", rawValues(rule.personas));
    object.emplace("risk", rawValue(rule.risk));
    object.emplace("paths", encode(rule.paths));
    object.emplace("regenerates", rule.regenerates);
    addIfPresent(object, "officialCommand", rule.officialCommand);
    object.emplace("quitApps", encode(rule.quitApps));
    object.emplace("contentsOnly", rule.contentsOnly);
    object.emplace("excludes", encode(rule.excludes));
    addIfPresent(object, "minAgeDays", rule.minAgeDays);
    object.emplace("catchAll", rule.isCatchAll);
    addIfPresent(object, "domain", rule.domain);
    object.emplace("confidence", rawValue(rule.confidence));
    object.emplace("sources", encode(rule.sources));
    addIfAny(object, "beside", rule.conditions.beside);
    addIfAny(object, "owners", rule.conditions.owners);
    addIfAny(object, "ownerFiles", rule.conditions.ownerFiles);
    addIfAny(object, rule.provenOn);
    return object;
}

Json::Object encode(const ArtifactPattern& pattern) {
    Json::Object object;
    object.emplace("id", pattern.id);
    object.emplace("name", pattern.name);
    object.emplace("group", pattern.group);
    object.emplace("personas", rawValues(pattern.personas));
    object.emplace("risk", rawValue(pattern.risk));
    object.emplace("regenerates", pattern.regenerates);
    addIfPresent(object, "officialCommand", pattern.officialCommand);
    object.emplace("names", encode(pattern.names));
    object.emplace("suffixes", encode(pattern.suffixes));
    object.emplace("markers", encode(pattern.markers));
    object.emplace("excludes", encode(pattern.excludes));
    addIfAny(object, "proofs", pattern.proofs);
    addIfAny(object, "disproofs", pattern.disproofs);
    addIfAny(object, pattern.provenOn);
    return object;
}

}  // namespace Brimlo::RuleJson
