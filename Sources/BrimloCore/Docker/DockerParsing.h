#pragma once

#include "BrimloCore/Docker/DockerSnapshot.h"
#include "BrimloCore/Models/Error.h"

#include <cstdint>
#include <expected>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// The values in what Docker's tool prints. Any thread.
namespace Brimlo::DockerParsing {

/// The rows that `docker system df` prints as one JSON object a line; other lines are skipped.
[[nodiscard]] std::vector<DockerSummaryRow> parseSummary(std::string_view text);

/// The unused objects in the JSON document of `docker system df -v`: images, then containers, then
/// volumes, each in its order, then the build cache as one object.
///
/// `folderExists` tells whether the project folder of a stopped container still exists. Fails when
/// the text is not a JSON object; malformed elements are skipped.
[[nodiscard]] std::expected<std::vector<DockerObject>, Error> parseObjects(
    std::string_view json, const std::function<bool(const std::string&)>& folderExists);

/// The bytes of a size as Docker prints it, such as "1.5GB (50%)"; 0 for any other text.
[[nodiscard]] std::int64_t parseSize(std::string_view text);

}  // namespace Brimlo::DockerParsing
