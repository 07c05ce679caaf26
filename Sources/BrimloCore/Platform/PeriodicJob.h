#pragma once

#include "BrimloCore/Models/Error.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo::Platform {

/// The definition of a periodic job for a user: its files, their contents and the commands that
/// load it. Writes nothing and runs nothing.
class PeriodicJob {
public:
    struct Settings {
        std::vector<std::string> arguments;  ///< The absolute path of the program first.
        std::int64_t intervalSeconds = 0;    ///< Also the delay before the first run.
        std::string log;  ///< The file that output is appended to; its folder must exist.
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

    /// The paths of the job's files. The first is its definition: it names the program, and the job
    /// exists when it does.
    [[nodiscard]] std::vector<std::string> paths() const;

    /// The files to write, the definition last. Fails when a path holds a control character.
    [[nodiscard]] std::expected<std::vector<File>, Error> files(const Settings& settings) const;

    /// The commands to run before the files change, and after.
    [[nodiscard]] std::vector<Command> commands(Moment moment) const;

    /// The command by which the job shows a notification on the desktop. Text without markup.
    [[nodiscard]] static Command notification(const std::string& text);

    /// The program named in a definition; nullopt when it can't be read.
    [[nodiscard]] static std::optional<std::string> program(std::string_view definition);

private:
    [[nodiscard]] static std::expected<void, Error> checkFit(const Settings& settings);

    std::string label_;
    std::string folder_;
};

}  // namespace Brimlo::Platform
