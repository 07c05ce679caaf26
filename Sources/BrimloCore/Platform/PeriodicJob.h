#pragma once

#include "BrimloCore/Models/Error.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo::Platform {

/// How the system is told of a job that it runs for a user at intervals: in which files, in which
/// words, and by which commands. Nothing is written and nothing run here.
class PeriodicJob {
public:
    struct Settings {
        std::vector<std::string> arguments;  ///< The absolute path of the program first.
        std::int64_t intervalSeconds = 0;    ///< The first run comes so long after the start, too.
        std::string log;  ///< The file to which all output is appended; its folder must be there.
    };

    struct File {
        std::string path;
        std::string text;
    };

    /// A program and its arguments.
    using Command = std::vector<std::string>;

    enum class Moment { beforeChange, afterWriting, afterRemoving };

    /// The job of that name of the user with that home folder.
    PeriodicJob(std::string label, std::string home);

    /// The paths of all that belongs to the job. The first is its definition: it names the program,
    /// and there is a job when it exists.
    [[nodiscard]] std::vector<std::string> paths() const;

    /// What to write, the definition last. Fails when a path holds a control character.
    [[nodiscard]] std::expected<std::vector<File>, Error> files(const Settings& settings) const;

    /// What to run before the files change, and after.
    [[nodiscard]] std::vector<Command> commands(Moment moment) const;

    /// The program in the text of a definition; nullopt when it can't be told.
    [[nodiscard]] static std::optional<std::string> program(std::string_view definition);

private:
    [[nodiscard]] static std::expected<void, Error> checkFit(const Settings& settings);

    std::string label_;
    std::string folder_;
};

}  // namespace Brimlo::Platform
