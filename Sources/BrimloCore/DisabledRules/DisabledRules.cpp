#include "BrimloCore/DisabledRules/DisabledRules.h"

#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/Json.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"

#include <cerrno>
#include <cstddef>
#include <string_view>
#include <utility>

namespace Brimlo::DisabledRules {

namespace {

constexpr std::size_t kLongestFile = std::size_t{16} << 20U;

std::string filePath() {
    return StoragePaths::support() + "/disabled-rules.json";
}

/// No ids when the text is not a JSON array of strings.
std::set<std::string> decode(std::string_view text) {
    const auto document = Json::parse(text);
    const Json::Array* elements = document ? document->if_array() : nullptr;
    std::set<std::string> ids;
    if (elements != nullptr) {
        for (const Json::Value& element : *elements) {
            if (!element.is_string()) {
                return {};
            }
            ids.emplace(std::string_view{element.get_string()});
        }
    }
    return ids;
}

/// Fails only when the file exists and can't be read.
std::expected<std::set<std::string>, Error> read() {
    const auto text = readFile(filePath(), kLongestFile, Owner::trusted);
    if (!text && text.error().code != ENOENT && text.error().code != EFBIG) {
        return std::unexpected(text.error());
    }
    return decode(text.value_or(""));
}

std::expected<void, Error> write(const std::set<std::string>& ids) {
    const Json::Array array(ids.begin(), ids.end());
    return AtomicFile::write(filePath(), Json::compact(array));
}

std::unexpected<Error> failure(Error error) {
    error.description = "The change could not be saved: " + error.description;
    return std::unexpected(std::move(error));
}

}  // namespace

std::set<std::string> load() {
    return read().value_or(std::set<std::string>{});
}

bool isDisabled(const std::string& id) {
    return load().contains(id);
}

std::expected<std::set<std::string>, Error> set(const std::string& id, bool disabled) {
    if (!Text::isValid(id)) {
        return failure(
            Error::fromSystem(EILSEQ));  // One invalid id would make the file unreadable.
    }
    const FileLock held{filePath()};
    auto ids = read();
    if (!ids) {
        return failure(std::move(ids.error()));
    }
    if (disabled) {
        ids->insert(id);
    } else {
        ids->erase(id);
    }
    if (auto written = write(*ids); !written) {
        return failure(std::move(written.error()));
    }
    return ids;
}

}  // namespace Brimlo::DisabledRules
