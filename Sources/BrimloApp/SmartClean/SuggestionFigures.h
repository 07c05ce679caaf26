#pragma once

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace Brimlo {

struct Suggestion;

/// What a suggestion run found, for the screens.
class SuggestionFigures {
    Q_GADGET
    QML_VALUE_TYPE(suggestionFigures)

    Q_PROPERTY(int count MEMBER count)
    Q_PROPERTY(double safeBytes MEMBER safeBytes)
    Q_PROPERTY(double rebuildBytes MEMBER rebuildBytes)

public:
    [[nodiscard]] static SuggestionFigures of(const std::vector<Suggestion>& suggestions);

    bool operator==(const SuggestionFigures&) const = default;

    int count = 0;
    double safeBytes = 0;     ///< The total size of those at risk `safe`.
    double rebuildBytes = 0;  ///< That of those at risk `rebuild`.
};

}  // namespace Brimlo
