#pragma once

#include "BrimloCore/Support/Glob.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/Text.h"

#include <QtCore/QString>

#include <string>
#include <string_view>

namespace Brimlo {

/// A search in a list: part of a text, ignoring letter case and surrounding spaces.
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

    /// The same for a path, or for a name in it; with "*" or "?" it must match as a whole.
    [[nodiscard]] bool findsPath(std::string_view path) const {
        const std::string text = wanted_.empty() ? std::string{} : Text::lowercased(path);
        return wanted_.find_first_of("*?") == std::string::npos
                   ? text.contains(wanted_)
                   : Glob::matches(text, wanted_) ||
                         Glob::matches(std::string{Path::name(text)}, wanted_);
    }

private:
    std::string wanted_;
};

}  // namespace Brimlo
