#pragma once

#include "BrimloCore/Models/Error.h"

#include <expected>
#include <set>
#include <string>

/// The persistent set of rule ids that the user has switched off. Any thread; reads the file at
/// each call.
namespace Brimlo::DisabledRules {

/// All ids that are off; none when the file is missing, damaged or can't be read.
[[nodiscard]] std::set<std::string> load();

[[nodiscard]] bool isDisabled(const std::string& id);

/// Switches a rule off or on, while all others that change the file wait. Returns what the file
/// says now.
///
/// Replaces a damaged file. Fails, with a sentence without its period, and leaves the file as it is
/// where it can't be read or written, and for an id that is no text.
[[nodiscard]] std::expected<std::set<std::string>, Error> set(const std::string& id, bool disabled);

}  // namespace Brimlo::DisabledRules
