#include "BrimloCore/UserRules/RuleFile.h"

#include "BrimloCore/Support/RuleJson.h"
#include "BrimloCore/Support/Text.h"

#include <cstddef>
#include <utility>

namespace Brimlo::UserRules {

namespace {

constexpr std::size_t kLongestFile = std::size_t{16} << 20U;

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
    // The name of a file may be no text. Written all the same, it would make the rule unreadable.
    if (!Text::isValid(text)) {
        return std::unexpected(Error{
            .domain = kErrorDomain,
            .code = kInvalidRuleCode,
            .description = "The rule holds a text that is not valid UTF-8.",
        });
    }
    return text;
}

}  // namespace Brimlo::UserRules
