#include "BrimloCore/DisabledRules/DisabledRules.h"
#include "BrimloCore/Docker/DockerClient.h"
#include "BrimloCore/Docker/DockerParsing.h"
#include "BrimloCore/Journal/Journal.h"
#include "BrimloCore/Journal/JournalLog.h"
#include "BrimloCore/LeftAlone/LeftAlone.h"
#include "BrimloCore/Platform/Linux/DesktopEntry.h"
#include "BrimloCore/Platform/Linux/TrashInfo.h"
#include "BrimloCore/Platform/PeriodicJob.h"
#include "BrimloCore/ScanRecords/Growth.h"
#include "BrimloCore/Support/AppConfig.h"
#include "BrimloCore/Support/Dates.h"
#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/Json.h"
#include "BrimloCore/Support/RuleJson.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"
#include "BrimloCore/UserRules/RuleFile.h"
#include "BrimloCore/UserRules/UserRules.h"
#include "Fuzz/Targets.h"

#include <algorithm>
#include <array>
#include <fstream>

#include <unistd.h>

// What a decoder accepted must survive being written and read again; what it reads from a file is
// given to it as one.

namespace Brimlo::Fuzz {

namespace {

/// Puts the bytes where the program looks for them.
std::string file(const std::string& path, const std::string& bytes) {
    std::ofstream{path, std::ios::binary} << bytes;
    return path;
}

std::string folder(std::string_view name) {
    std::string path = StoragePaths::home().append("/").append(name);
    static_cast<void>(Folders::create(path, Folders::Access::ownerOnly));
    return path;
}

void rulePack(const std::string& bytes) {
    const auto pack = RuleJson::decodePack(bytes);
    for (const auto& element : pack ? pack->rules.value_or(std::vector<Lossy<CleanupRule>>{})
                                    : std::vector<Lossy<CleanupRule>>{}) {
        demand(element.value.has_value() != element.error.has_value(), "a rule or a reason");
        if (!element.value) {
            continue;
        }
        const auto text = UserRules::packText("again", {*element.value});
        demand(text.has_value(), "what was read can be written");
        const auto again = RuleJson::decodePack(*text);
        demand(again && again->rules->front().value == element.value, "and read again");
    }
}

void userRule(const std::string& bytes) {
    static const std::string kFolder = folder("rules");
    file(kFolder + "/a.json", bytes);
    const auto loaded = UserRules::load(kFolder);
    for (const CleanupRule& rule : loaded.rules) {
        demand(UserRules::validate(rule).isValid(), "only valid rules are loaded");
    }
}

void importedRules(const std::string& bytes) {
    static const std::string kFolder = folder("imported");
    static const std::string kFile = folder("import") + "/pack.json";
    const bool mayOverride = bytes.size() % 2 == 1;
    const auto result = UserRules::importPack(file(kFile, bytes), mayOverride, kFolder);
    const auto names = Folders::names(kFolder).value_or(std::vector<std::string>{});
    for (const std::string& name : names) {
        demand(name.ends_with(".json"), "nothing but rules is written");
        unlink((kFolder + "/" + name).c_str());
    }
    demand(!result || names.size() <= result->imported.size(), "no rule but those told");
}

void demandReadable(const JournalEntry& entry) {
    std::string text;
    entry.encode(text);
    const auto value = Json::parse(text);
    demand(value && JournalEntry::decode(*value) == entry, "an entry can be read again");
}

void journalEntry(const std::string& bytes) {
    const auto value = Json::parse(bytes);
    const auto entry = value ? JournalEntry::decode(*value) : std::unexpected{std::string{}};
    if (entry) {
        demandReadable(*entry);
    }
}

void journal(const std::string& bytes) {
    static const std::string kPath = folder("journal") + "/journal.json";
    Journal journal{file(kPath, bytes)};
    const auto before = journal.entries().value();
    std::ranges::for_each(before, demandReadable);
    demand(
        journal.append(JournalEntry::make({.originalPath = "/x"})).has_value(),
        "it can be written");
    demand(
        journal.entries().value().size() == before.size() + 1,
        "an entry is added to what was read");
}

void journalLog(const std::string& bytes) {
    static const std::string kPath = folder("journal-log") + "/log";
    const JournalLog log{file(kPath, bytes)};
    const auto before = log.read();
    demand(before.has_value(), "a damaged line is skipped");
    const auto entry = JournalEntry::make({.originalPath = "/x"});
    demand(
        log.append(JournalLog::Kind::added, {entry}, JournalLog::Durability::written).has_value(),
        "a line can be appended to any");
    const auto after = log.read();
    demand(after && after->size() == before->size() + 1, "and takes none of them away");
    demand(after->back().entry == entry, "and can be read again");
}

void configuration(const std::string& bytes) {
    static const std::string kFolder = folder("config");
    const AppConfig config = AppConfig::load(file(kFolder + "/config.json", bytes));
    const auto again =
        AppConfig::change([&](AppConfig& other) { other = config; }, kFolder + "/again.json");
    demand(again == config, "what was read can be written");
    demand(AppConfig::load(kFolder + "/again.json") == config, "and read again");
}

void disabledRules(const std::string& bytes) {
    file(StoragePaths::support() + "/disabled-rules.json", bytes);
    const auto before = DisabledRules::load();
    auto after = DisabledRules::set("x", true);
    demand(after && after->contains("x"), "a rule can be switched off whatever the file holds");
    demand(after == DisabledRules::load(), "and the file says so");
    after->erase("x");
    demand(after == before || before.contains("x"), "and the others stay as they are");
}

void leftAlone(const std::string& bytes) {
    const std::string path = file(StoragePaths::support() + "/left-alone.json", bytes);
    const auto before = LeftAlone::load();
    const auto after = LeftAlone::change([](LeftAlone& list) { list.rules.insert("x"); });
    demand(before.has_value() == after.has_value(), "what can't be read is not changed");
    demand(before || readFile(path, bytes.size()) == bytes, "nor overwritten");
    demand(!after || LeftAlone::load() == after, "what was written can be read again");
}

void dockerObjects(const std::string& bytes) {
    const auto objects =
        DockerParsing::parseObjects(bytes, [](const std::string& path) { return path.size() > 3; });
    if (objects) {
        DockerSnapshot snapshot;
        snapshot.objects = *objects;
        static_cast<void>(DockerClient::suggestions(snapshot));
        static_cast<void>(snapshot.reclaimableTotal());
    }
}

void dockerSizes(const std::string& bytes) {
    static_cast<void>(DockerParsing::parseSize(bytes));
    static_cast<void>(DockerParsing::parseSummary(bytes));
    static_cast<void>(
        DockerParsing::parseSummary(R"({"Type":"Images","Size":")" + bytes + R"("})"));
}

void job(const std::string& bytes) {
    using Platform::PeriodicJob;
    static_cast<void>(PeriodicJob::program(bytes));
    const std::string path = "/" + bytes;
    const auto files =
        PeriodicJob{
            "a.b", "/home"
    }
            .files({.arguments = {path, "autoclean"}, .intervalSeconds = 1, .log = "/log"});
    if (files) {
        demand(PeriodicJob::program(files->back().text) == path, "the program's path is kept");
    }
}

void trashNote(const std::string& bytes) {
    using Platform::TrashInfo;
    static_cast<void>(TrashInfo::parse(bytes));
    const auto again = TrashInfo::parse(TrashInfo{.path = bytes, .entryID = "id"}.text(0));
    demand(again && again->path == bytes && again->entryID == "id", "any path is kept");
    if (!bytes.empty()) {
        const std::string name = Platform::nameInTrash(bytes.substr(0, 255), 12);
        demand(!name.empty() && name.size() <= 245, "the note's name fits");
    }
}

void desktopEntry(const std::string& bytes) {
    const auto entry = Platform::DesktopEntry::parse(bytes);
    demand(
        !entry || entry->program.starts_with('/') || !entry->package.empty(),
        "a program has an absolute path");
}

void jsonList(const std::string& bytes) {
    Json::Array seen;
    const bool isList =
        Json::forEachElement(bytes, [&](const Json::Value& value) { seen.push_back(value); });
    const auto whole = Json::parse(bytes);
    demand(isList == (whole && whole->is_array()), "both readers know a list");
    demand(!isList || seen == whole->as_array(), "and read the same in it");
}

void date(const std::string& bytes) {
    if (const auto found = Dates::parse(bytes)) {
        demand(Dates::parse(Dates::format(*found)) == found, "a date can be read again");
    }
}

/// The bytes as they are, and between a head and a hash that are right.
void scanRecord(const std::string& bytes) {
    static const ScanRecord kOther{.root = "/", .folders = {{.size = 1}}};
    std::string whole = "Brimlo scan 1\n" + bytes;
    const std::uint64_t hash = ScanRecord::hash(whole);
    for (unsigned shift = 0; shift < 64; shift += 8) {
        whole.push_back(static_cast<char>(static_cast<unsigned char>(hash >> shift)));
    }
    for (const std::string& each : {bytes, whole}) {
        const auto record = ScanRecord::decode(each);
        if (!record) {
            continue;
        }
        demand(ScanRecord::decode(record->encode()) == record, "a record can be read again");
        demand(Growth::between(*record, *record).folders.empty(), "nothing grew at once");
        static_cast<void>(Growth::between(*record, kOther));
        static_cast<void>(Growth::between(kOther, *record));
    }
}

}  // namespace

std::span<const Target> decoders() {
    static constexpr std::array kTargets{
        Target{"rule-pack",      rulePack     },
        Target{"user-rule",      userRule     },
        Target{"imported-rules", importedRules},
        Target{"journal-entry",  journalEntry },
        Target{"journal",        journal      },
        Target{"journal-log",    journalLog   },
        Target{"configuration",  configuration},
        Target{"disabled-rules", disabledRules},
        Target{"left-alone",     leftAlone    },
        Target{"scan-record",    scanRecord   },
        Target{"docker-objects", dockerObjects},
        Target{"docker-sizes",   dockerSizes  },
        Target{"job",            job          },
        Target{"trash-note",     trashNote    },
        Target{"desktop-entry",  desktopEntry },
        Target{"json-list",      jsonList     },
        Target{"date",           date         },
    };
    return kTargets;
}

}  // namespace Brimlo::Fuzz
