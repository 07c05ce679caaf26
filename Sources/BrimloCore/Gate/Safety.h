#pragma once

#include "BrimloCore/Platform/DirectoryEntry.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// The last word on whether a path may ever be disposed of.
///
/// Stateless; reads the home folder anew at each call. Nothing overrides it: no confirmation and no
/// setting lifts a refusal. Any thread.
namespace Brimlo::Safety {

/// The form in which paths are compared: absolute, without ".", "..", empty components and trailing
/// slash. Symlinks are not resolved, a leading "~" is not expanded.
[[nodiscard]] std::string canonical(std::string_view path);

/// What was judged, and the verdict. Callers act on `resolved` and on the object of `entry`, and
/// look nothing up again: something else may be there by then.
struct Verdict {
    std::string canonical;
    /// `canonical` with the symlinks of its parent resolved as far as they exist. The last
    /// component is not: disposal acts on a symlink, not on its target.
    std::string resolved;
    /// The status of the entry at `resolved`, a symlink's own; nullopt when nothing is there, or
    /// when the system finds something else by the path as given (the parent of a symlink is not
    /// that of its target).
    std::optional<Platform::EntryStatus> entry;
    /// The reason not to touch the path, or nullopt when it may be disposed of: a lower-case phrase
    /// without the path; callers write "path: reason".
    std::optional<std::string> refusal;
};

/// Who chose a path: a person who typed or ticked it, or a rule's pattern.
enum class Chosen { byPerson, byRule };

/// Judges `path` by its text, its resolved location, its other names and its contents. A path that
/// does not exist is judged by its text.
///
/// A rule knows only the path that it names. So what it reaches through a symlink is also refused
/// where that leads into a personal folder, the home folder, or a folder that holds a protected
/// place.
[[nodiscard]] Verdict judge(std::string_view path, Chosen chosen = Chosen::byPerson);

/// The gate with one reading of the home, the tables and the mounts, for callers that ask about
/// many paths. One thread at a time.
class Gate {
public:
    Gate();
    Gate(Gate&&) noexcept;
    Gate& operator=(Gate&&) noexcept;
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;
    ~Gate();

    /// As the free function does, but looks at each folder above a path only once: for callers
    /// that touch none of the paths.
    [[nodiscard]] Verdict judge(std::string_view path, Chosen chosen = Chosen::byPerson) const;

    /// Also looks anew at the folders, which may have been replaced: for the last verdict before a
    /// path is touched.
    [[nodiscard]] Verdict judgeAnew(std::string_view path, Chosen chosen = Chosen::byPerson) const;

private:
    class Look;
    std::unique_ptr<Look> look_;
};

}  // namespace Brimlo::Safety
