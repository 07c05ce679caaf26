#pragma once

#include <set>
#include <string>
#include <string_view>

/// The persistent set of rule ids that the user has switched off.
///
/// Reads the file at each call. Any thread: one lock of the process guards each call as a whole;
/// between processes the last writer wins.
namespace Brimlo::DisabledRules {

/// All ids that are off; none when the file is missing or damaged.
[[nodiscard]] std::set<std::string> load();

[[nodiscard]] bool isDisabled(const std::string& id);

/// Switches a rule off or on. Replaces a damaged file. A failure to write is ignored.
void set(const std::string& id, bool disabled);

}  // namespace Brimlo::DisabledRules
