#include "BrimloCore/RulePacks/RulePacks.h"

#include "BrimloCore/Support/RuleJson.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

namespace Brimlo::RulePacks {

namespace {

/// Moves the valid elements to `target`, and reports each invalid one by its position.
template <typename T>
void collect(
    std::optional<std::vector<Lossy<T>>>&& elements,
    const std::string& prefix,
    std::vector<T>& target,
    std::vector<std::string>& issues) {
    std::size_t position = 0;
    for (Lossy<T>& element : std::move(elements).value_or(std::vector<Lossy<T>>{})) {
        if (element.value) {
            target.push_back(*std::move(element.value));
        } else {
            issues.push_back(
                prefix + std::to_string(position) + " skipped: " + element.error.value_or("?"));
        }
        ++position;
    }
}

}  // namespace

Loaded load(std::span<const Source> sources) {
    std::vector<Source> sorted{sources.begin(), sources.end()};
    std::ranges::stable_sort(sorted, {}, &Source::fileName);
    Loaded loaded;
    for (const Source& source : sorted) {
        const std::string fileName{source.fileName};
        auto pack = RuleJson::decodePack(source.text);
        if (!pack) {
            loaded.issues.push_back(fileName + ": " + pack.error());
            continue;
        }
        collect(std::move(pack->rules), fileName + ": rule #", loaded.rules, loaded.issues);
        collect(
            std::move(pack->artifacts), fileName + ": artifact #", loaded.artifacts, loaded.issues);
    }
    return loaded;
}

}  // namespace Brimlo::RulePacks
