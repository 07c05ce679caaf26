#pragma once

#include "BrimloCore/Docker/DockerSnapshot.h"
#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Models/Suggestion.h"

#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Docker, seen and cleaned through its command line tool alone. Holds no state; any thread.
namespace Brimlo::DockerClient {

/// Paths where the tool may be, the first that can be run counts.
using Places = std::vector<std::string>;

/// Where the tool is found on this system. The search path is not consulted.
[[nodiscard]] Places usualPlaces();

/// The tool, or nullopt when Docker is not installed.
[[nodiscard]] std::optional<std::string> binary(const Places& places = usualPlaces());

/// How the tool ended, and what it printed; ill-formed text is replaced by U+FFFD.
struct Result {
    int status = 0;  ///< Or the number of the signal that ended it.
    std::string out;
    std::string err;

    bool operator==(const Result&) const = default;
};

/// Runs the tool to its end. Made to end because its time was up or it printed too much, it has
/// failed, and `err` says so. Nullopt when there is no tool or it could not be started. Blocks.
[[nodiscard]] std::optional<Result> run(
    const std::vector<std::string>& arguments,
    double timeoutSeconds,
    const Places& places = usualPlaces());

/// What Docker holds now. Never fails: what went wrong is told in the snapshot.
///
/// Blocks: a fraction of a second where there is no daemon, and 103 seconds at worst.
[[nodiscard]] DockerSnapshot snapshot(const Places& places = usualPlaces());

/// The rows that `docker system df` prints as one JSON object a line; other lines are passed over.
[[nodiscard]] std::vector<DockerSummaryRow> parseSummary(std::string_view text);

/// The objects in the JSON document of `docker system df -v` that nothing uses: images, then
/// containers, then volumes, each in its order, then the build cache as one object.
///
/// `folderExists` is asked whether the project folder of a stopped container is still there. Fails
/// when the text is no JSON object; an element that makes no sense is passed over.
[[nodiscard]] std::expected<std::vector<DockerObject>, Error> parseObjects(
    std::string_view json, const std::function<bool(const std::string&)>& folderExists);

/// The bytes of a size as Docker prints it, such as "1.5GB (50%)"; 0 for any other text.
[[nodiscard]] std::int64_t parseSize(std::string_view text);

/// The virtual disks of the Docker engines that keep one in the user's home folder.
[[nodiscard]] std::vector<DockerVMDisk> vmDisks();

/// One suggestion for each category that holds something, in their order.
[[nodiscard]] std::vector<Suggestion> suggestions(const DockerSnapshot& snapshot);

/// Removes an object for good, unless Docker finds that something uses it. The reason why it
/// stayed, or nullopt when it is gone. Blocks, up to four minutes.
[[nodiscard]] std::optional<std::string> remove(
    std::string_view pseudoPath, const Places& places = usualPlaces());

}  // namespace Brimlo::DockerClient
