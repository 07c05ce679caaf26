#include "BrimloCore/Cleaner/TrashContents.h"

#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <utility>

namespace Brimlo {

namespace {

std::unexpected<Error> failure(std::string sentence) {
    return std::unexpected(
        Error{.domain = kErrorDomain, .code = 1, .description = std::move(sentence)});
}

}  // namespace

std::expected<std::vector<TrashContents::Item>, Error> TrashContents::find(
    const std::vector<std::string>& words) const {
    std::vector<Item> found;
    for (const std::string& word : words) {
        const auto path = Path::typed(word);
        const auto isMeant = [&](const Item& item) {
            return Path::name(item.trashPath) == word ||
                   (path &&
                    (item.trashPath == *path ||
                     (item.originalPath && Path::standardized(*item.originalPath) == *path)));
        };
        const auto item = std::ranges::find_if(items, isMeant);
        if (item == items.end()) {
            return failure("Nothing in the Trash has the name or the old path \"" + word + "\".");
        }
        if (std::find_if(item + 1, items.end(), isMeant) != items.end()) {
            return failure(
                "More than one item in the Trash is meant by \"" + word +
                "\": name one by its path there, such as " + item->trashPath + ".");
        }
        if (std::ranges::find(found, *item) == found.end()) {
            found.push_back(*item);
        }
    }
    return found;
}

}  // namespace Brimlo
