#include "BrimloCore/Models/Suggestion.h"

#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Models/FileUrl.h"

namespace Brimlo {

std::string SuggestionItem::url() const {
    return FileUrl::fromPath(path);
}

std::int64_t Suggestion::totalSize() const {
    return Bytes::total(items, &SuggestionItem::size);
}

}  // namespace Brimlo
