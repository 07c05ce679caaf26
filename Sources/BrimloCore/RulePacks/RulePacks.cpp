#include "BrimloCore/RulePacks/RulePacks.h"

#include "BrimloCore/Platform/SystemPaths.h"
#include "BrimloCore/Support/RuleJson.h"

#include <algorithm>
#include <cstddef>
#include <expected>
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
    const std::string system{Platform::systemName()};
    std::vector<Source> sorted{sources.begin(), sources.end()};
    std::ranges::stable_sort(sorted, {}, &Source::fileName);
    struct Decoded {
        std::string fileName;
        std::expected<RulePackFile, std::string> pack;

        [[nodiscard]] bool isForAll() const { return !pack || !pack->system; }
    };
    std::vector<Decoded> packs;
    packs.reserve(sorted.size());
    for (const Source& source : sorted) {
        packs.push_back({std::string{source.fileName}, RuleJson::decodePack(source.text)});
    }
    std::ranges::stable_partition(packs, &Decoded::isForAll);
    Loaded loaded;
    for (auto& [fileName, pack] : packs) {
        if (!pack) {
            loaded.issues.push_back(fileName + ": " + pack.error());
            continue;
        }
        if (pack->system.value_or(system) != system) {
            continue;
        }
        collect(std::move(pack->rules), fileName + ": rule #", loaded.rules, loaded.issues);
        collect(
            std::move(pack->artifacts), fileName + ": artifact #", loaded.artifacts, loaded.issues);
    }
    return loaded;
}

}  // namespace Brimlo::RulePacks
