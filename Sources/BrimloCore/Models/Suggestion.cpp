#include "BrimloCore/Models/Suggestion.h"

#include <algorithm>

namespace Brimlo {

std::vector<Reason> reasons(const Suggestion& suggestion) {
    std::vector<Reason> reasons{
        {"Rule", suggestion.id + (suggestion.isUsersOwn ? ", one of your own" : "")}
    };
    for (const std::string& place : suggestion.places) {
        reasons.push_back({"Looks at", place});
    }
    for (const std::string& address : suggestion.sources) {
        reasons.push_back({"Source", address});
    }
    if (!suggestion.evidence.empty()) {
        reasons.push_back({"Evidence", suggestion.evidence});
    }
    const bool isDockers = std::ranges::any_of(suggestion.items, [](const SuggestionItem& item) {
        return item.path.starts_with("docker:");
    });
    reasons.push_back(
        {"Safety gate",
         isDockers ? "It judges files only. Docker says that nothing uses these."
                   : "It refuses none of these items, and is asked again before each is moved."});
    if (suggestion.officialCommand) {
        reasons.push_back({"Its own command", *suggestion.officialCommand});
    }
    return reasons;
}

}  // namespace Brimlo
