#include "BrimloCore/UserRules/UserRules.h"

#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"
#include "BrimloCore/Support/Uuid.h"
#include "BrimloCore/UserRules/RuleFile.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <utility>

#include <unistd.h>

namespace Brimlo::UserRules {

namespace {

constexpr std::string_view kSuffix = ".json";

std::string rulePath(std::string_view id, const std::string& directory) {
    return directory + "/" + std::string{id} + std::string{kSuffix};
}

bool isPlainLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
}

void loadFile(const std::string& directory, const std::string& file, Loaded& loaded) {
    auto elements = readRules(directory + "/" + file, Owner::trusted);
    if (!elements) {
        loaded.issues.push_back(file + ": " + elements.error());
        return;
    }
    std::size_t position = 0;
    for (Lossy<CleanupRule>& element : *elements) {
        if (!element.value) {
            loaded.issues.push_back(
                file + " rule #" + std::to_string(position) + ": " +
                element.error.value_or("invalid"));
        } else if (const RuleValidation verdict = validate(*element.value); !verdict.isValid()) {
            loaded.issues.push_back(
                file + " " + element.value->id + ": " + verdict.joinedErrors("; "));
        } else {
            loaded.rules.push_back(*std::move(element.value));
        }
        ++position;
    }
}

}  // namespace

bool isCustom(std::string_view id) {
    return id.starts_with(kIDPrefix);
}

std::string defaultDirectory() {
    std::string folder = StoragePaths::support() + "/Rules";
    static_cast<void>(Folders::create(folder, Folders::Access::ownerOnly));
    return folder;
}

Loaded load(const std::string& directory) {
    std::vector<std::string> files = Folders::names(directory).value_or(std::vector<std::string>{});
    // ".json" alone is a hidden file without an extension.
    std::erase_if(
        files, [](const std::string& file) { return !file.ends_with(kSuffix) || file == kSuffix; });
    std::ranges::sort(files);
    Loaded loaded;
    for (const std::string& file : files) {
        loadFile(directory, file, loaded);
    }
    return loaded;
}

std::expected<void, Error> save(const CleanupRule& rule, const std::string& directory) {
    return saveAll({rule}, directory);
}

std::expected<void, Error> saveAll(
    const std::vector<CleanupRule>& rules, const std::string& directory) {
    std::vector<AtomicFile::NewFile> files;
    for (const CleanupRule& rule : rules) {
        if (const RuleValidation verdict = validate(rule); !verdict.isValid()) {
            return std::unexpected(Error{
                .domain = kErrorDomain,
                .code = kInvalidRuleCode,
                .description = verdict.joinedErrors("\n"),
            });
        }
        auto text = packText("custom", {rule});
        if (!text) {
            return std::unexpected(std::move(text.error()));
        }
        files.push_back({rulePath(rule.id, directory), *std::move(text)});
    }
    if (auto made = Folders::create(directory, Folders::Access::ownerOnly); !made) {
        return made;
    }
    const FileLock held{directory};
    if (held.isHeld()) {
        AtomicFile::removeLeftovers(directory, kSuffix);
    }
    return AtomicFile::writeAll(files);
}

std::expected<void, Error> remove(std::string_view id, const std::string& directory) {
    if (id.contains('/') || id.contains("..") || !Path::isUsable(id)) {
        return {};
    }
    if (unlink(rulePath(id, directory).c_str()) != 0) {
        return std::unexpected(Error::fromSystem(errno));
    }
    return {};
}

CleanupRule make(Draft draft) {
    std::ranges::transform(draft.paths, draft.paths.begin(), tildeForm);
    const bool hasGroup = draft.group && !draft.group->empty();
    return {
        .id = draft.id ? *draft.id : newID(draft.name),
        .name = draft.name,
        .group = hasGroup ? *draft.group : draft.name,
        .personas = std::move(draft.personas),
        .risk = draft.risk,
        .paths = std::move(draft.paths),
        .regenerates = std::move(draft.regenerates),
        .officialCommand = std::move(draft.officialCommand),
        .quitApps = std::move(draft.quitApps),
        .contentsOnly = draft.contentsOnly,
        .excludes = std::move(draft.excludes),
        .minAgeDays = draft.minAgeDays,
        .domain = "Custom rules",
        .confidence = Confidence::community,
        .conditions = std::move(draft.conditions),
    };
}

std::string tildeForm(std::string_view path) {
    const std::string home = StoragePaths::home();
    if (path == home || path.starts_with(home + "/")) {
        return "~" + std::string{path.substr(home.size())};
    }
    return std::string{path};
}

std::string slug(std::string_view text) {
    constexpr std::size_t kMostCharacters = 40;
    const std::string lower = Text::folded(text);
    std::string result;
    bool isGap = false;
    // An accent is part of its letter's character, and is dropped.
    for (const std::string_view character : Text::characters(lower)) {
        if (!isPlainLetter(character.front())) {
            isGap = !result.empty();
            continue;
        }
        if (std::exchange(isGap, false)) {
            result += '-';
        }
        result += character.front();
    }
    result.resize(std::min(result.size(), kMostCharacters));
    return result.empty() ? "rule" : result;
}

std::string newID(std::string_view name) {
    const std::string directory = defaultDirectory();
    const std::string beginning = std::string{kIDPrefix} + slug(name) + "-";
    for (std::size_t digits = 4;; ++digits) {
        std::string id = beginning + Text::lowercased(Uuid::random().text().substr(0, digits));
        if (!Platform::FileIdentity::of(rulePath(id, directory))) {
            return id;
        }
    }
}

}  // namespace Brimlo::UserRules
