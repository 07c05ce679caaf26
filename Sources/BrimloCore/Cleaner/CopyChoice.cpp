#include "BrimloCore/Cleaner/CopyChoice.h"

#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <functional>
#include <iterator>
#include <set>
#include <unordered_map>
#include <utility>

namespace Brimlo {

namespace {

using Copy = DuplicateGroup::Copy;

struct Words {
    std::string_view rawValue;
    std::string_view words;
};

/// In the order of the reasons.
constexpr std::array<Words, 7> kWords{
    {
     {"firstByName", "first by name"},
     {"newest", "the newest"},
     {"oldest", "the oldest"},
     {"shortestPath", "the shortest path"},
     {"tidiestFolder", "in the tidiest folder"},
     {"keptFolder", "in a kept folder"},
     {"byHand", "chosen by hand"},
     }
};

/// How many words of a path tell of a place where things only pass through, or of a copy.
std::size_t signsOfCopies(std::string_view path) {
    static const std::set<std::string, std::less<>> kSigns{
        "backup",
        "backups",
        "copies",
        "copy",
        "desktop",
        "download",
        "downloads",
        "duplicate",
        "duplicates",
        "imported",
        "old",
        "phone",
        "recovered",
        "temp",
        "tmp",
        "unsorted",
        "untitled",
        "usb"};
    const auto isNumber = [](std::string_view word) {
        return !word.empty() &&
               std::ranges::all_of(word, [](char c) { return c >= '0' && c <= '9'; });
    };
    const std::string text = Text::lowercased(path);
    std::size_t signs = 0;
    for (std::size_t begin = 0; begin < text.size();) {
        std::size_t end = text.find_first_of("/ _-.()", begin);
        end = end == std::string::npos ? text.size() : end;
        const std::string_view word = std::string_view{text}.substr(begin, end - begin);
        // A second download or paste is called "name (1)".
        const bool isCounted = isNumber(word) && begin > 0 && text[begin - 1] == '(' &&
                               end < text.size() && text[end] == ')';
        signs += kSigns.contains(word) || isCounted ? 1 : 0;
        begin = end + 1;
    }
    return signs;
}

bool isFolder(const std::string& path) {
    const auto status = Platform::entryStatus(path.c_str());
    return status && status->kind == Platform::EntryStatus::Kind::directory;
}

}  // namespace

std::string_view rawValue(KeepReason reason) {
    return kWords.at(static_cast<std::size_t>(reason)).rawValue;
}

std::string_view words(KeepReason reason) {
    return kWords.at(static_cast<std::size_t>(reason)).words;
}

/// Tells which copies lie below a kept folder. Resolved anew for each choice, because a folder can
/// have become a symlink into a kept one since the search.
class CopyChoice::KeptPlaces {
public:
    explicit KeptPlaces(const std::vector<std::string>& folders)
        : folders_{folders} {}

    [[nodiscard]] bool hold(const std::string& path) {
        if (folders_.empty()) {
            return false;
        }
        const auto [known, isNew] = known_.try_emplace(std::string{Path::parent(path)}, false);
        if (isNew) {
            const std::string place = Path::resolved(known->first);
            known->second = std::ranges::any_of(folders_, [&](const std::string& folder) {
                return Path::below(folder, place).has_value();
            });
        }
        return known->second;
    }

private:
    const std::vector<std::string>& folders_;
    std::unordered_map<std::string, bool> known_;  ///< By the folder of a copy.
};

CopyChoice::CopyChoice(KeepReason rule)
    : rule_{rule} {
    setRule(rule);
}

void CopyChoice::setRule(KeepReason rule) {
    assert(rule < KeepReason::keptFolder);  // The callers offer only the rules.
    rule_ = rule;
}

std::expected<void, Error> CopyChoice::keepUnder(std::string_view path) {
    const auto meant = Path::typed(path);
    if (!meant) {
        return std::unexpected(meant.error());
    }
    std::string folder = Path::resolved(*meant);
    if (!isFolder(folder)) {
        return std::unexpected(
            Error{.domain = kErrorDomain, .description = std::string{path} + " is not a folder"});
    }
    if (std::ranges::find(folders_, folder) == folders_.end()) {
        folders_.push_back(std::move(folder));
    }
    return {};
}

std::vector<CopyChoice::Reasons> CopyChoice::reasons(
    const std::vector<DuplicateGroup>& groups) const {
    std::vector<Reasons> all;
    all.reserve(groups.size());
    KeptPlaces places{folders_};
    std::ranges::transform(groups, std::back_inserter(all), [&](const DuplicateGroup& group) {
        return reasonsIn(group, places);
    });
    return all;
}

CopyChoice::Reasons CopyChoice::reasonsIn(const DuplicateGroup& group, KeptPlaces& places) const {
    const auto& copies = group.copies;
    const auto chosen = byHand_.find(group.id);
    Reasons reasons(copies.size());
    for (std::size_t i = 0; i < copies.size(); ++i) {
        if (chosen != byHand_.end() && chosen->second == copies[i].path) {
            reasons[i] = KeepReason::byHand;
        } else if (places.hold(copies[i].path)) {
            reasons[i] = KeepReason::keptFolder;
        }
    }
    if (!copies.empty() && extraCount(reasons) == copies.size()) {
        reasons[preferred(copies)] = rule_;
    }
    return reasons;
}

/// The place of the copy that the rule chooses; of several alike, the first by name.
std::size_t CopyChoice::preferred(const std::vector<Copy>& copies) const {
    const auto length = [](const Copy& copy) { return Text::characterCount(copy.path); };
    const auto untidiness = [&](const Copy& copy) {
        return std::pair{signsOfCopies(copy.path), length(copy)};
    };
    const auto found =
        rule_ == KeepReason::newest          ? std::ranges::max_element(copies, {}, &Copy::written)
        : rule_ == KeepReason::oldest        ? std::ranges::min_element(copies, {}, &Copy::written)
        : rule_ == KeepReason::shortestPath  ? std::ranges::min_element(copies, {}, length)
        : rule_ == KeepReason::tidiestFolder ? std::ranges::min_element(copies, {}, untidiness)
                                             : copies.begin();
    return static_cast<std::size_t>(found - copies.begin());
}

std::size_t extraCount(const CopyChoice::Reasons& reasons) {
    return static_cast<std::size_t>(std::ranges::count(reasons, std::optional<KeepReason>{}));
}

}  // namespace Brimlo
