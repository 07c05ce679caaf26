#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Unicode text in UTF-8. Ill-formed bytes count as replacement characters.
namespace Brimlo::Text {

/// Whether the bytes are well-formed UTF-8.
[[nodiscard]] bool isValid(std::string_view text);

/// The canonical decomposition (Unicode Standard Annex 15, form D). Two texts are canonically
/// equivalent exactly when these are equal.
[[nodiscard]] std::string decomposed(std::string_view text);

/// Lower-cased by Unicode's language-independent rules.
[[nodiscard]] std::string lowercased(std::string_view text);

/// Folded for comparison: lower-cased, then decomposed.
[[nodiscard]] std::string folded(std::string_view text);

/// The user-perceived characters (Unicode Standard Annex 29), as views into `text`.
[[nodiscard]] std::vector<std::string_view> characters(std::string_view text);

/// The number of user-perceived characters.
[[nodiscard]] std::size_t characterCount(std::string_view text);

/// Without spaces and tabs at both ends; line ends stay.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// Without white space, line ends included, at both ends.
[[nodiscard]] std::string_view stripped(std::string_view text);

/// Well-formed: each ill-formed sequence becomes U+FFFD.
[[nodiscard]] std::string repaired(std::string_view text);

/// For display on one line: ill-formed bytes and control characters become U+FFFD.
[[nodiscard]] std::string printable(std::string_view text);

/// A key for each name. The byte order of the keys is the order of the names in the user's
/// language, ignoring case (Unicode Technical Standard 10).
[[nodiscard]] std::vector<std::string> collationKeys(const std::vector<std::string_view>& names);

}  // namespace Brimlo::Text
