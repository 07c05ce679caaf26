#include "BrimloCore/UserRules/RuleFile.h"

#include "BrimloCore/Support/AtomicFile.h"
#include "BrimloCore/Support/RuleJson.h"

#include <cstddef>
#include <utility>

namespace Brimlo::UserRules {

namespace {

constexpr std::size_t kLongestFile = std::size_t{16} << 20U;

}  // namespace

std::expected<std::vector<Lossy<CleanupRule>>, std::string> readRules(const std::string& path) {
    const auto text = readFile(path, kLongestFile);
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

}  // namespace Brimlo::UserRules
