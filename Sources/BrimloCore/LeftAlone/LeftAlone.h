#pragma once

#include "BrimloCore/Models/Error.h"

#include <expected>
#include <functional>
#include <set>
#include <string>

namespace Brimlo {

/// What the user never wants to be offered, one JSON object in "left-alone.json". It only narrows
/// what is suggested. Any thread; reads the file at each call.
struct LeftAlone {
    std::set<std::string> paths;  ///< Absolute, or "docker:" pseudo paths.
    std::set<std::string> rules;  ///< Ids of rules, project patterns and Docker's suggestions.

    bool operator==(const LeftAlone&) const = default;

    /// The list; empty when there is no file.
    ///
    /// Fails, with a sentence without its period that names the file, when there is a file that
    /// can't be read, belongs to somebody else or can't be understood. Nothing is suggested then,
    /// and nothing is cleaned unattended.
    [[nodiscard]] static std::expected<LeftAlone, Error> load();

    /// Reads the list, lets `body` change it and writes it in one step, under the file's lock.
    /// Returns the file's content afterwards.
    ///
    /// Fails, with a sentence without its period, and leaves the file as it is, when `load` fails,
    /// when it can't be written, and when the list then holds what is not valid text or a path that
    /// is not absolute.
    [[nodiscard]] static std::expected<LeftAlone, Error> change(
        const std::function<void(LeftAlone&)>& body);
};

}  // namespace Brimlo
