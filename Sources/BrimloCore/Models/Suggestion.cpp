#include "BrimloCore/Models/Suggestion.h"

#include "BrimloCore/Models/FileUrl.h"

namespace Brimlo {

std::string SuggestionItem::url() const {
    return FileUrl::fromPath(path);
}

std::int64_t Suggestion::totalSize() const {
    std::int64_t total = 0;
    for (const SuggestionItem& item : items) {
        total += item.size;
    }
    return total;
}

}  // namespace Brimlo
