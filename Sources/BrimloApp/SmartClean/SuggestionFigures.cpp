#include "BrimloApp/SmartClean/SuggestionFigures.h"

#include "BrimloCore/Models/Suggestion.h"

namespace Brimlo {

SuggestionFigures SuggestionFigures::of(const std::vector<Suggestion>& suggestions) {
    SuggestionFigures figures;
    figures.count = static_cast<int>(suggestions.size());
    for (const Suggestion& suggestion : suggestions) {
        const auto bytes = static_cast<double>(suggestion.totalSize());
        figures.safeBytes += suggestion.risk == Risk::safe ? bytes : 0;
        figures.rebuildBytes += suggestion.risk == Risk::rebuild ? bytes : 0;
    }
    return figures;
}

}  // namespace Brimlo
