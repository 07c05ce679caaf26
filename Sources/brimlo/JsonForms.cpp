#include "brimlo/JsonForms.h"

#include "BrimloCore/Support/Dates.h"
#include "BrimloCore/Support/RuleJson.h"
#include "BrimloCore/Support/Text.h"

#include <string>

namespace Brimlo::JsonForms {

namespace {

Json::Array paths(const auto& texts) {
    Json::Array array;
    for (const std::string& text : texts) {
        array.push_back(path(text));
    }
    return array;
}

/// Each as "path: reason".
Json::Array lines(const std::vector<ItemProblem>& problems) {
    Json::Array array;
    for (const ItemProblem& problem : problems) {
        array.push_back(path(problem.text()));
    }
    return array;
}

/// The JSON words of audiences or ratings.
Json::Array words(const auto& values) {
    Json::Array array;
    for (const auto value : values) {
        array.emplace_back(rawValue(value));
    }
    return array;
}

template <typename T>
void addIfPresent(Json::Object& object, std::string_view key, const std::optional<T>& value) {
    if (value) {
        object.emplace(key, *value);
    }
}

Json::Object total(const Growth::Total& total) {
    return {
        {"size",      total.size     },
        {"fileCount", total.fileCount}
    };
}

}  // namespace

Json::Value path(std::string_view path) {
    return Text::isValid(path) ? Json::Value(path) : Json::Value(Text::printable(path));
}

void addFreed(Json::Object& object, const FreedSpace& freed) {
    object.emplace("freedBytes", freed.atLeast());
    if (freed.atMost() > freed.atLeast()) {
        object.emplace("freedAtMostBytes", freed.atMost());
    }
}

Json::Array items(const std::vector<SuggestionItem>& items) {
    Json::Array array;
    for (const SuggestionItem& item : items) {
        Json::Object object{
            {"path", path(item.path)},
            {"size", item.size      }
        };
        addIfPresent(object, "idleDays", item.idleDays);
        if (item.detail) {
            object.emplace("detail", path(*item.detail));
        }
        addIfPresent(object, "subtitle", item.subtitle);
        addFreed(object, FreedSpace::alone(item));
        array.push_back(std::move(object));
    }
    return array;
}

Json::Object suggestion(const Suggestion& suggestion) {
    Json::Object object{
        {"id",          suggestion.id             },
        {"name",        suggestion.name           },
        {"group",       suggestion.group          },
        {"personas",    words(suggestion.personas)},
        {"risk",        rawValue(suggestion.risk) },
        {"regenerates", suggestion.regenerates    },
    };
    addIfPresent(object, "officialCommand", suggestion.officialCommand);
    object.emplace("runningApps", RuleJson::encode(suggestion.runningApps));
    object.emplace("items", items(suggestion.items));
    object.emplace("preselectedPaths", paths(suggestion.preselectedPaths));
    object.emplace("totalSize", suggestion.totalSize());
    addFreed(object, FreedSpace::of(suggestion.items));
    return object;
}

Json::Array reasons(const Suggestion& suggestion) {
    Json::Array array;
    for (const auto& [label, text] : Brimlo::reasons(suggestion)) {
        array.push_back(Json::Object{
            {"label", label},
            {"text",  text }
        });
    }
    return array;
}

Json::Array items(const std::vector<CleanItem>& items) {
    Json::Array array;
    for (const CleanItem& item : items) {
        Json::Object object{
            {"path", path(item.path)},
            {"size", item.size      }
        };
        addIfPresent(object, "ruleID", item.ruleID);
        if (item.risk) {
            object.emplace("risk", rawValue(*item.risk));
        }
        if (item.copyOf) {
            object.emplace("copyOf", path(*item.copyOf));
        }
        array.push_back(std::move(object));
    }
    return array;
}

Json::Object plan(const CleanPlan& plan) {
    Json::Object object{
        {"items",      items(plan.items())  },
        {"dropped",    paths(plan.dropped())},
        {"totalBytes", plan.totalBytes()    },
    };
    addFreed(object, plan.figures().freed);
    return object;
}

Json::Object report(const CleanReport& report) {
    Json::Array ids;
    for (const Uuid& id : report.journalIDs) {
        ids.emplace_back(id.text());
    }
    return {
        {"movedToTrashBytes", report.movedToTrashBytes      },
        {"freedNowBytes",     report.freedNowBytes          },
        {"failures",          lines(report.failures)        },
        {"refused",           lines(report.refused)         },
        {"unrecorded",        lines(report.unrecorded)      },
        {"notes",             RuleJson::encode(report.notes)},
        {"goneForGood",       items(report.goneForGood)     },
        {"journalIDs",        std::move(ids)                },
        {"processed",         report.processed              },
        {"untouched",         paths(report.untouched)       },
    };
}

Json::Object report(const UndoReport& report) {
    return {
        {"restored",   paths(report.restored)  },
        {"failures",   lines(report.failures)  },
        {"unrecorded", lines(report.unrecorded)},
    };
}

Json::Object report(const TrashReport& report) {
    Json::Object object{
        {"bytes",    report.bytes          },
        {"removed",  report.removed        },
        {"failures", lines(report.failures)},
    };
    addIfPresent(object, "freedBytes", report.freedBytes);
    return object;
}

Json::Object trash(const TrashContents& contents) {
    Json::Array items;
    for (const TrashContents::Item& item : contents.items) {
        Json::Object object{
            {"trashPath", path(item.trashPath)}
        };
        if (item.originalPath) {
            object.emplace("originalPath", path(*item.originalPath));
        }
        if (item.date) {
            object.emplace("date", Dates::format(*item.date));
        }
        object.emplace("size", item.size);
        if (item.entryID) {
            object.emplace("entryID", item.entryID->text());
        }
        items.push_back(std::move(object));
    }
    Json::Object object{
        {"items",    std::move(items)        },
        {"bytes",    contents.bytes          },
        {"failures", lines(contents.failures)},
    };
    addFreed(object, FreedSpace::of(contents.items));
    return object;
}

Json::Value entry(const JournalEntry& entry) {
    std::string text;
    entry.encode(text);
    return Json::parse(text).value_or(Json::Value{});
}

Json::Object node(const FileNode& node) {
    return {
        {"name",        path(node.name())           },
        {"path",        path(node.path())           },
        {"size",        node.size                   },
        {"isDirectory", node.isDirectory            },
        {"isAggregate", node.isAggregate            },
        {"modified",    Dates::format(node.modified)},
        {"fileCount",   node.fileCount              },
    };
}

Json::Object growth(const Growth& growth) {
    Json::Array folders;
    for (const Growth::Folder& folder : growth.folders) {
        Json::Object object{
            {"kind",  Growth::rawValue(folder.kind)},
            {"path",  path(folder.path)            },
            {"least", folder.least                 },
            {"most",  folder.most                  },
        };
        if (folder.formerPath) {
            object.emplace("formerPath", path(*folder.formerPath));
        }
        addIfPresent(object, "before", folder.before.transform(total));
        addIfPresent(object, "now", folder.now.transform(total));
        folders.push_back(std::move(object));
    }
    return {
        {"since",   Dates::format(growth.since)},
        {"before",  total(growth.before)       },
        {"now",     total(growth.now)          },
        {"folders", std::move(folders)         },
    };
}

Json::Object duplicates(const DuplicateGroup& group, const CopyChoice::Reasons& reasons) {
    Json::Array staying;
    for (std::size_t i = 0; i < reasons.size(); ++i) {
        if (reasons[i]) {
            staying.push_back(Json::Object{
                {"path",   path(group.copies[i].path)},
                {"reason", rawValue(*reasons[i])     },
            });
        }
    }
    return {
        {"id",          group.id.text()     },
        {"size",        group.size          },
        {"paths",       paths(group.paths())},
        {"wastedBytes", group.wastedBytes() },
        {"staying",     std::move(staying)  },
    };
}

Json::Object equalFolders(const EqualFolders& set) {
    return {
        {"bytes", set.bytes         },
        {"files", set.files         },
        {"paths", paths(set.folders)},
        {"in",    paths(set.larger) },
    };
}

Json::Object leftOut(const DuplicateFinder::LeftOut& leftOut) {
    return {
        {"shortFiles", leftOut.shortFiles},
        {"shortBytes", leftOut.shortBytes},
        {"folders",    leftOut.folders   },
    };
}

Json::Array areas(const std::vector<UnreadableArea>& areas) {
    Json::Array array;
    for (const UnreadableArea& area : areas) {
        array.push_back({
            {"area",    path(area.area)   },
            {"count",   area.count        },
            {"example", path(area.example)},
            {"reason",  area.reason       },
        });
    }
    return array;
}

Json::Array systemParts(const std::vector<SystemPart>& parts) {
    Json::Array array;
    for (const SystemPart& part : parts) {
        array.push_back({
            {"name", part.store.name},
            {"about", part.store.about},
            {"paths", paths(part.store.paths)},
            {"commands", Json::Array(part.store.commands.begin(), part.store.commands.end())},
            {"size", part.size},
            {"isComplete", part.isComplete},
        });
    }
    return array;
}

Json::Object account(const VolumeAccount& account) {
    Json::Array lines;
    for (const AccountLine& line : account.lines) {
        lines.push_back({
            {"kind",  VolumeAccount::rawValue(line.kind)},
            {"name",  path(line.name)                   },
            {"size",  line.bytes                        },
            {"files", line.files                        },
        });
    }
    const std::vector<std::string> remarks = account.remarks();
    return {
        {"tops", paths(account.tops)},
        {"isWhole", account.isWhole},
        {"total", account.use.total},
        {"free", account.use.free},
        {"available", account.use.available},
        {"taken", account.taken()},
        {"files", account.use.files},
        {"freeFiles", account.use.freeFiles},
        {"lines", std::move(lines)},
        {"unreadable", areas(account.unread)},
        {"snapshots", paths(account.snapshots)},
        {"mountPoints", paths(account.mountPoints)},
        {"unaskedProcesses", account.unaskedProcesses},
        {"remarks", Json::Array(remarks.begin(), remarks.end())},
    };
}

Json::Object docker(const DockerSnapshot& snapshot) {
    Json::Array summary;
    for (const DockerSummaryRow& row : snapshot.summary) {
        summary.push_back({
            {"type",             row.type            },
            {"total",            row.total           },
            {"active",           row.active          },
            {"sizeBytes",        row.sizeBytes       },
            {"reclaimableBytes", row.reclaimableBytes},
        });
    }
    Json::Array objects;
    for (const DockerObject& object : snapshot.objects) {
        objects.push_back({
            {"kind",       rawValue(object.kind)    },
            {"dockerID",   object.dockerID          },
            {"title",      object.title             },
            {"detail",     object.detail            },
            {"size",       object.size              },
            {"category",   rawValue(object.category)},
            {"pseudoPath", object.pseudoPath()      },
        });
    }
    Json::Array disks;
    for (const DockerVMDisk& disk : snapshot.vmDisks) {
        disks.push_back({
            {"path",      path(disk.path)},
            {"allocated", disk.allocated },
            {"logical",   disk.logical   },
            {"runtime",   disk.runtime   },
        });
    }
    Json::Object object{
        {"available", snapshot.available}
    };
    addIfPresent(object, "context", snapshot.context);
    addIfPresent(object, "error", snapshot.error);
    object.emplace("summary", std::move(summary));
    object.emplace("objects", std::move(objects));
    object.emplace("vmDisks", std::move(disks));
    object.emplace("reclaimableTotal", snapshot.reclaimableTotal());
    return object;
}

Json::Object coverage(const CoverageEntry& entry) {
    return {
        {"tool",           entry.tool                    },
        {"domain",         entry.domain                  },
        {"ruleCount",      entry.ruleCount               },
        {"artifactCount",  entry.artifactCount           },
        {"bestConfidence", rawValue(entry.bestConfidence)},
        {"isSupported",    entry.isSupported()           },
        {"personas",       words(entry.personas)         },
        {"risks",          words(entry.risks)            },
    };
}

Json::Object validation(const RuleValidation& validation) {
    return {
        {"errors",   RuleJson::encode(validation.errors)  },
        {"warnings", RuleJson::encode(validation.warnings)},
    };
}

}  // namespace Brimlo::JsonForms
