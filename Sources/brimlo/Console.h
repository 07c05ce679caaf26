#pragma once

#include "BrimloCore/Cleaner/CleanReport.h"
#include "BrimloCore/Cleaner/ItemGroups.h"
#include "BrimloCore/DiskScanner/ScanControl.h"
#include "BrimloCore/Models/CleanupRule.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

/// Output for a person at a terminal.
namespace Brimlo::Console {

/// Prints a line on standard output. Paths in it must come from `shortPath`, and everything else
/// read from files from a function below or `Text::printable`.
void line(std::string_view text = "");

/// Prints a text dimmed, indented by four columns and wrapped at the terminal's width.
void paragraph(std::string_view text);

/// The text in bold or dimmed, if standard output is a terminal and NO_COLOR is unset.
[[nodiscard]] std::string bold(std::string_view text);
[[nodiscard]] std::string dim(std::string_view text);

/// The rating's label in its colour.
[[nodiscard]] std::string badge(Risk risk);

/// The text padded with spaces to `width` columns, aligned right or left.
[[nodiscard]] std::string right(std::string_view text, std::size_t width);
[[nodiscard]] std::string left(std::string_view text, std::size_t width);

/// A size, padded to a fixed width.
[[nodiscard]] std::string size(std::int64_t bytes);

/// A time of the user's zone, for example "2026-03-01 09:30".
[[nodiscard]] std::string localTime(std::chrono::sys_seconds time);

/// A printable path with "~" for the home folder.
[[nodiscard]] std::string shortPath(std::string_view path);

/// The name of an item: its short path, or that of Docker's object (`DockerObject::words`).
[[nodiscard]] std::string itemName(
    std::string_view path, const std::optional<std::string>& title = std::nullopt);

/// A folder's short path and the number of its items.
[[nodiscard]] std::string folder(const ItemGroup& group);

/// "NAME: REASON".
[[nodiscard]] std::string problem(const ItemProblem& problem);

/// "1 item" or "12 items".
[[nodiscard]] std::string count(std::size_t number, std::string_view noun);

/// Whether the user can be asked: standard input and standard error are a terminal.
[[nodiscard]] bool canAsk();

/// Asks on standard error; only "y" or "yes" agrees.
[[nodiscard]] bool confirm(std::string_view question);

/// A status line on standard error, if that is a terminal. Erased with the object.
class Progress {
public:
    Progress() = default;
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    void show(std::string_view words);
    void clear();

private:
    bool isShown_ = false;
};

/// Shows the progress of a walk on a status line, updated by a thread of its own. Erased with the
/// object.
class WalkProgress {
public:
    explicit WalkProgress(const ScanControl& control);
    WalkProgress(const WalkProgress&) = delete;
    WalkProgress& operator=(const WalkProgress&) = delete;
    WalkProgress(WalkProgress&&) = delete;
    WalkProgress& operator=(WalkProgress&&) = delete;
    ~WalkProgress();

private:
    void show();

    const ScanControl& control_;
    std::mutex mutex_;
    std::condition_variable ended_;
    bool hasEnded_ = false;  // guarded by mutex_
    std::thread thread_;
};

}  // namespace Brimlo::Console
