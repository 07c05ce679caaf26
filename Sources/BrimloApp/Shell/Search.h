#pragma once

#include "BrimloCore/Support/Text.h"

#include <QtCore/QString>

#include <string>
#include <string_view>

namespace Brimlo {

/// What a list is searched for: part of a name or a group, letter case and spaces around it aside.
class Search {
public:
    Search() = default;
    explicit Search(const QString& query)
        : wanted_{Text::lowercased(Text::trimmed(query.toStdString()))} {}

    /// An empty search finds everything.
    [[nodiscard]] bool finds(const std::string_view name, const std::string_view group) const {
        return wanted_.empty() || Text::lowercased(name).contains(wanted_) ||
               Text::lowercased(group).contains(wanted_);
    }

private:
    std::string wanted_;
};

}  // namespace Brimlo
