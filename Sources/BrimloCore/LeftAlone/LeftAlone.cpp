#include "BrimloCore/LeftAlone/LeftAlone.h"

#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/Json.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <string_view>
#include <utility>

namespace Brimlo {

namespace {

constexpr std::size_t kLongestFile = std::size_t{16} << 20U;

/// The code of the error for a list that can't be understood.
constexpr int kDamagedCode = 14;

std::string filePath() {
    return StoragePaths::support() + "/left-alone.json";
}

/// What is wrong with the list, in words; empty if nothing.
std::string_view fault(const LeftAlone& list) {
    const auto isText = [](const std::string& text) { return Text::isValid(text); };
    if (!std::ranges::all_of(list.paths, isText) || !std::ranges::all_of(list.rules, isText)) {
        return "a name is not valid text";
    }
    const bool allAbsolute = std::ranges::all_of(list.paths, [](const std::string& path) {
        return path.starts_with('/') || path.starts_with("docker:");
    });
    return allAbsolute ? "" : "a path is not absolute";
}

std::expected<LeftAlone, std::string> decode(std::string_view text) {
    const auto document = Json::parse(text);
    if (!document) {
        return std::unexpected(document.error());
    }
    Json::FieldReader reader{*document};
    const std::vector<std::string> paths = reader.textsOrNone("paths");
    const std::vector<std::string> rules = reader.textsOrNone("rules");
    if (reader.error()) {
        return std::unexpected(*reader.error());
    }
    LeftAlone list{
        .paths{paths.begin(), paths.end()},
        .rules{rules.begin(), rules.end()}
    };
    if (const std::string_view wrong = fault(list); !wrong.empty()) {
        return std::unexpected(std::string{wrong});
    }
    return list;
}

std::unexpected<Error> failure(std::string_view what, Error error) {
    error.description = std::string{what} + ": " + error.description;
    return std::unexpected(std::move(error));
}

std::unexpected<Error> unreadable(Error error) {
    error.description += " (mend or remove " + filePath() + ")";
    return failure("The list of what is left alone could not be read", std::move(error));
}

std::expected<void, Error> write(const LeftAlone& list) {
    if (const std::string_view wrong = fault(list); !wrong.empty()) {
        return std::unexpected(Error{kErrorDomain, kDamagedCode, std::string{wrong}});
    }
    const Json::Object object{
        {"paths", Json::Array(list.paths.begin(), list.paths.end())},
        {"rules", Json::Array(list.rules.begin(), list.rules.end())},
    };
    return AtomicFile::write(filePath(), Json::pretty(object));
}

}  // namespace

std::expected<LeftAlone, Error> LeftAlone::load() {
    const auto text = readFile(filePath(), kLongestFile, Owner::trusted);
    if (!text && text.error().code == ENOENT) {
        return LeftAlone{};
    }
    if (!text) {
        return unreadable(text.error());
    }
    auto list = decode(*text);
    return list ? std::expected<LeftAlone, Error>{*std::move(list)}
                : unreadable({kErrorDomain, kDamagedCode, list.error()});
}

std::expected<LeftAlone, Error> LeftAlone::change(const std::function<void(LeftAlone&)>& body) {
    const FileLock held{filePath()};
    auto list = load();
    if (!list) {
        return list;  // Saving would overwrite what can't be read.
    }
    body(*list);
    if (auto written = write(*list); !written) {
        return failure("The change could not be saved", std::move(written.error()));
    }
    return list;
}

}  // namespace Brimlo
