#pragma once

#include "BrimloCore/Platform/FileIdentity.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// The last word on whether a path may ever be disposed of.
///
/// Holds no state and reads the home folder anew at each call. Nothing widens it: a refusal has no
/// override, no confirmation and no setting. Any thread.
namespace Brimlo::Safety {

/// The one form in which paths are compared: absolute, without ".", "..", empty components and
/// trailing slash. Links are not resolved, a leading "~" is not expanded.
[[nodiscard]] std::string canonical(std::string_view path);

/// What was judged, and the judgement. Whoever acts on it acts on `resolved` and on the object of
/// `identity`, and looks nothing up again: what stands there by then may be something else.
struct Verdict {
    std::string canonical;
    /// `canonical` with the symbolic links of its parent resolved as far as they exist. The last
    /// component stays: disposal acts on a link, not on what it points to.
    std::string resolved;
    /// That of the entry at `resolved`, a link's own; nullopt when nothing is there, or when the
    /// system finds something else by the path as it was given (the parent of a link is not that
    /// of its target).
    std::optional<Platform::FileIdentity> identity;
    /// The reason not to touch the path, or nullopt when it may go: a lower-case phrase without the
    /// path; callers write "path: reason".
    std::optional<std::string> refusal;
};

/// Who chose a path: a person who typed or ticked it, or a rule by its pattern.
enum class Chosen { byPerson, byRule };

/// Judges `path` by its text, by where its links lead, by what lies there under other names, and by
/// what it holds. A path that does not exist is judged by its text.
///
/// A rule knows only the path that it names. So what it reaches through a link is refused, too,
/// where the link leads into a personal folder, the home, or a folder that holds a protected place.
[[nodiscard]] Verdict judge(std::string_view path, Chosen chosen = Chosen::byPerson);

/// The gate with one look at the home, the tables and the mounts, for those who ask about many
/// paths and touch none. One thread at a time.
class Gate {
public:
    Gate();
    Gate(Gate&&) noexcept;
    Gate& operator=(Gate&&) noexcept;
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;
    ~Gate();

    /// As the free function does.
    [[nodiscard]] Verdict judge(std::string_view path, Chosen chosen = Chosen::byPerson) const;

private:
    class Look;
    std::unique_ptr<Look> look_;
};

}  // namespace Brimlo::Safety
