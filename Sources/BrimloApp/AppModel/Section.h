#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace Brimlo {

/// The screens of the window, in the order of the sidebar and of the Go menu.
enum class Section { overview, clean, analyzer, largeFiles, rules, duplicates, history, settings };

inline constexpr std::array kAllSections{
    Section::overview,
    Section::clean,
    Section::analyzer,
    Section::largeFiles,
    Section::rules,
    Section::duplicates,
    Section::history,
    Section::settings,
};

/// The word by which the screens call a section, for example "largeFiles".
[[nodiscard]] std::string_view id(Section section);

/// The section's title.
[[nodiscard]] std::string_view rawValue(Section section);

/// The identifier of the section's icon.
[[nodiscard]] std::string_view symbol(Section section);

/// The section with exactly this id, or nullopt.
[[nodiscard]] std::optional<Section> sectionFromID(std::string_view text);

}  // namespace Brimlo
