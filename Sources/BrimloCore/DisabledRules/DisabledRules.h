#pragma once

#include "BrimloCore/Models/Error.h"

#include <expected>
#include <set>
#include <string>

/// The persisted set of rule ids that the user switched off. Any thread; reads the file at each
/// call.
namespace Brimlo::DisabledRules {

/// All ids that are off; none when the file is missing, damaged or can't be read.
[[nodiscard]] std::set<std::string> load();

[[nodiscard]] bool isDisabled(const std::string& id);

/// Switches a rule off or on, under the file's lock. Returns the file's content afterwards.
///
/// Replaces a damaged file. Fails, with a sentence without its period, and leaves the file as it
/// is, when it can't be read or written and when the id is not valid text.
[[nodiscard]] std::expected<std::set<std::string>, Error> set(const std::string& id, bool disabled);

}  // namespace Brimlo::DisabledRules
