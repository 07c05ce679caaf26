#include "BrimloCore/DisabledRules/DisabledRules.h"

#include "BrimloCore/Support/AtomicFile.h"
#include "BrimloCore/Support/Json.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"

#include <cstddef>
#include <mutex>

namespace Brimlo::DisabledRules {

namespace {

constexpr std::size_t kLongestFile = std::size_t{16} << 20U;

std::mutex& processLock() {
    static std::mutex lock;
    return lock;
}

std::string filePath() {
    return StoragePaths::support() + "/disabled-rules.json";
}

std::set<std::string> read() {
    const auto text = readFile(filePath(), kLongestFile, Owner::trusted);
    const auto document = text ? Json::parse(*text) : std::unexpected(std::string{});
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

}  // namespace

std::set<std::string> load() {
    const std::lock_guard guard{processLock()};
    return read();
}

bool isDisabled(const std::string& id) {
    return load().contains(id);
}

void set(const std::string& id, bool disabled) {
    if (!Text::isValid(id)) {
        return;  // No rule is called so, and the file would be unreadable with it.
    }
    const std::lock_guard guard{processLock()};
    std::set<std::string> ids = read();
    if (disabled) {
        ids.insert(id);
    } else {
        ids.erase(id);
    }
    const Json::Array array(ids.begin(), ids.end());
    static_cast<void>(AtomicFile::write(filePath(), Json::compact(array)));
}

}  // namespace Brimlo::DisabledRules
