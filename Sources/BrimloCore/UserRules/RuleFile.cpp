#include "BrimloCore/UserRules/RuleFile.h"

#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/Support/RuleJson.h"
#include "BrimloCore/Support/Text.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <cerrno>
#include <cstddef>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::UserRules {

namespace {

constexpr std::size_t kLongestFile = std::size_t{16} << 20U;
constexpr int kUnreadablePackCode = 11;
constexpr int kNoPlainFileCode = 13;

/// The rule under an id of the user's own, without the rank that its file claims.
CleanupRule demoted(CleanupRule rule) {
    rule.id = std::string{kIDPrefix} + slug(rule.id);
    rule.isCatchAll = false;
    rule.domain = "Custom rules";
    rule.confidence = Confidence::community;
    rule.provenOn.clear();
    return rule;
}

}  // namespace

std::expected<std::vector<Lossy<CleanupRule>>, std::string> readRules(
    const std::string& path, Owner owner) {
    const auto text = readFile(path, kLongestFile, owner);
    if (!text) {
        return std::unexpected("could not be read: " + text.error().description);
    }
    auto pack = RuleJson::decodePack(*text);
    if (!pack) {
        return std::unexpected(pack.error());
    }
    return std::move(pack->rules).value_or(std::vector<Lossy<CleanupRule>>{});
}

std::expected<std::vector<FileVerdict>, std::string> validateFile(const std::string& path) {
    const auto elements = readRules(path);
    if (!elements) {
        return std::unexpected(elements.error());
    }
    std::vector<FileVerdict> verdicts;
    for (const Lossy<CleanupRule>& element : *elements) {
        if (element.value) {
            verdicts.push_back({element.value->id, validate(*element.value)});
        } else {
            verdicts.push_back({
                "rule #" + std::to_string(verdicts.size()),
                {.errors = {element.error.value_or("invalid rule")}, .warnings = {}},
            });
        }
    }
    return verdicts;
}

std::expected<std::string, Error> packText(
    std::string_view pack, const std::vector<CleanupRule>& rules) {
    Json::Array encoded;
    for (const CleanupRule& rule : rules) {
        encoded.push_back(RuleJson::encode(rule));
    }
    std::string text = Json::pretty(Json::Object{
        {"pack",    pack              },
        {"version", 1                 },
        {"rules",   std::move(encoded)},
    });
    // A path may be invalid UTF-8. Written to the file anyway, it would make the rule unreadable.
    if (!Text::isValid(text)) {
        return std::unexpected(Error{
            .domain = kErrorDomain,
            .code = kInvalidRuleCode,
            .description = "The rule holds a text that is not valid UTF-8.",
        });
    }
    return text;
}

std::expected<std::string, Error> exportJSON(const std::vector<CleanupRule>& rules) {
    return packText("custom-export", rules);
}

std::expected<void, Error> exportTo(
    const std::string& path, const std::vector<CleanupRule>& rules, Existing existing) {
    const auto text = exportJSON(rules);
    if (!text) {
        return std::unexpected(text.error());
    }
    auto prepared = AtomicFile::prepare(path, *text);
    if (!prepared) {
        return std::unexpected(prepared.error());
    }
    struct stat status{};
    const bool isThere = lstat(path.c_str(), &status) == 0;
    if (isThere && existing == Existing::replace) {
        return S_ISREG(status.st_mode)
                   ? prepared->publish()
                   : std::unexpected(Error{
                         kErrorDomain, kNoPlainFileCode, "the existing entry is not a plain file"});
    }
    // O_EXCL claims the name with an empty file first, so that a file which another process creates
    // at the same moment is not overwritten.
    const Platform::Descriptor claim{
        open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600)};
    if (!claim) {
        return std::unexpected(Error::fromSystem(errno));
    }
    auto published = prepared->publish();
    if (!published) {
        unlink(path.c_str());
    }
    return published;
}

std::expected<Imported, Error> importPack(
    const std::string& from, bool allowOverride, const std::string& directory) {
    auto elements = readRules(from);
    if (!elements) {
        return std::unexpected(Error{
            .domain = kErrorDomain,
            .code = kUnreadablePackCode,
            .description = std::move(elements.error()),
        });
    }
    Imported result;
    std::vector<CleanupRule> rules;
    for (std::size_t position = 0; position < elements->size(); ++position) {
        Lossy<CleanupRule>& element = (*elements)[position];
        if (!element.value) {
            result.rejected.push_back(
                "rule #" + std::to_string(position) + ": " + element.error.value_or("invalid"));
            continue;
        }
        const bool isKept = allowOverride || isCustom(element.value->id);
        CleanupRule rule = isKept ? *std::move(element.value) : demoted(*std::move(element.value));
        if (const RuleValidation verdict = validate(rule); !verdict.isValid()) {
            result.rejected.push_back(rule.id + ": " + verdict.joinedErrors("; "));
            continue;
        }
        result.imported.push_back(rule.id);
        rules.push_back(std::move(rule));
    }
    if (rules.empty()) {
        return result;
    }
    auto saved = saveAll(rules, directory);
    return saved ? std::expected<Imported, Error>{std::move(result)}
                 : std::unexpected(std::move(saved.error()));
}

}  // namespace Brimlo::UserRules
