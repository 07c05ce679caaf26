#pragma once

#include "BrimloCore/Docker/DockerParsing.h"
#include "BrimloCore/Docker/DockerSnapshot.h"
#include "BrimloCore/Models/Suggestion.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Docker, accessed only through its command line tool. Stateless; any thread.
namespace Brimlo::DockerClient {

/// Candidate paths of the tool; the first executable one is used.
using Places = std::vector<std::string>;

/// The candidate paths on this system. The search path is not consulted.
[[nodiscard]] Places usualPlaces();

/// The tool, or nullopt when Docker is not installed.
[[nodiscard]] std::optional<std::string> binary(const Places& places = usualPlaces());

/// The tool's exit status and output; ill-formed text is replaced by U+FFFD.
struct Result {
    int status = 0;  ///< Or the number of the signal that ended it.
    std::string out;
    std::string err;

    bool operator==(const Result&) const = default;
};

/// Runs the tool to its end. A tool that was killed, because its time was up or it printed too
/// much, has failed, and `err` says so. Nullopt when there is no tool or it could not be started.
/// Blocks.
[[nodiscard]] std::optional<Result> run(
    const std::vector<std::string>& arguments,
    double timeoutSeconds,
    const Places& places = usualPlaces());

/// Docker's objects now. Never fails: errors are part of the snapshot.
///
/// Blocks: a fraction of a second where there is no daemon, and 103 seconds at worst.
[[nodiscard]] DockerSnapshot snapshot(const Places& places = usualPlaces());

using DockerParsing::parseObjects;
using DockerParsing::parseSize;
using DockerParsing::parseSummary;

/// The virtual disks of the Docker engines that keep one in the user's home folder.
[[nodiscard]] std::vector<DockerVMDisk> vmDisks();

/// One suggestion for each category that holds something, in their order.
[[nodiscard]] std::vector<Suggestion> suggestions(const DockerSnapshot& snapshot);

/// Removes an object for good, unless Docker reports it in use. Returns the reason why it stayed,
/// or nullopt when it is gone. Blocks, up to four minutes.
[[nodiscard]] std::optional<std::string> remove(
    std::string_view pseudoPath, const Places& places = usualPlaces());

}  // namespace Brimlo::DockerClient
