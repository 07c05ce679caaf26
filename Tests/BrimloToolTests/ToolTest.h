#pragma once

#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/Support/Json.h"
#include "Support/TempHome.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

namespace Brimlo::Testing {

/// How a run of the tool ended.
struct Outcome {
    int exitCode = 0;  ///< 128 and the signal's number when a signal ended it, as in a shell.
    std::string out;
    std::string err;

    bool operator==(const Outcome&) const = default;
};

/// Runs the built tool, with a fresh home folder that is also the current one.
class ToolTest : public TempHome {
protected:
    /// A tool at work. Its output goes into files, so that it never waits for a reader.
    class Running {
    public:
        /// Waits for the end.
        [[nodiscard]] Outcome wait();

        /// Whether it has set Ctrl-C up, so that it no longer just dies of it.
        [[nodiscard]] bool isReady() const;
        /// Whether it now only notes Ctrl-C.
        [[nodiscard]] bool notesInterrupts() const;
        void interrupt() const;
        [[nodiscard]] std::string errSoFar() const;

    private:
        friend class ToolTest;

        /// Whether a signal is in one of the sets that the system tells of a process.
        [[nodiscard]] bool hasSignal(const std::string& set, unsigned signal) const;
        pid_t pid_ = 0;
        Platform::Descriptor out_;
        Platform::Descriptor err_;
    };

    /// Standard streams other than the empty input and the files.
    struct Streams {
        int in = -1;
        int out = -1;
        int err = -1;
    };

    [[nodiscard]] static Running start(
        const std::vector<std::string>& arguments, const Streams& streams);
    [[nodiscard]] static Outcome run(const std::vector<std::string>& arguments);

    /// Runs with `--json` and expects this exit code and one document on standard output.
    [[nodiscard]] static Json::Value answer(
        std::vector<std::string> arguments, int exitCode = 0, const std::string& err = "");

    /// A file of the support folder, from home.
    [[nodiscard]] static std::string support(std::string_view name);

    /// The text of a rule for one path.
    [[nodiscard]] static std::string rule(const std::string& id, const std::string& path);

    /// The text of a rule pack with these elements.
    [[nodiscard]] static std::string pack(const std::string& elements);

    /// The names in the Trash, sorted.
    [[nodiscard]] std::vector<std::string> trashed() const;
};

/// The keys of a document: "{a,b[{c}]}", of lists the first element's.
[[nodiscard]] std::string shape(const Json::Value& value);

/// Whether a condition came true within ten seconds.
[[nodiscard]] bool comesTrue(const std::function<bool()>& condition);

}  // namespace Brimlo::Testing
