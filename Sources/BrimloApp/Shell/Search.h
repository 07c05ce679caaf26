#pragma once

#include "BrimloCore/Support/Text.h"

#include <QtCore/QString>

#include <string>
#include <string_view>

namespace Brimlo {

/// A search in a list: part of a name or a group, ignoring letter case and surrounding spaces.
class Search {
public:
    Search() = default;
    explicit Search(const QString& query)
        : wanted_{Text::lowercased(Text::trimmed(query.toStdString()))} {}

    /// An empty search matches everything.
    [[nodiscard]] bool finds(std::string_view name, std::string_view group) const {
        return wanted_.empty() || Text::lowercased(name).contains(wanted_) ||
               Text::lowercased(group).contains(wanted_);
    }

private:
    std::string wanted_;
};

}  // namespace Brimlo
