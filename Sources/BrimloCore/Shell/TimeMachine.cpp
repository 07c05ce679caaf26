#include "BrimloCore/Shell/TimeMachine.h"

#include "BrimloCore/Shell/Shell.h"
#include "BrimloCore/Support/Path.h"

#include <cstddef>
#include <memory>
#include <string_view>

#include <sys/stat.h>
#include <unicode/datefmt.h>
#include <unicode/smpdtfmt.h>

namespace Brimlo::TimeMachine {

namespace {

constexpr double kTimeoutSeconds = 20;
constexpr double kMillisecondsPerSecond = 1000;

void removeAll(std::string& text, std::string_view part) {
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at)) {
        text.erase(at, part.size());
    }
}

std::optional<std::chrono::sys_seconds> parsed(const std::string& text) {
    UErrorCode status = U_ZERO_ERROR;
    icu::SimpleDateFormat format{"yyyy-MM-dd-HHmmss", icu::Locale{"en_US_POSIX"}, status};
    if (U_FAILURE(status)) {
        return std::nullopt;
    }
    format.setLenient(0);
    const auto written = icu::UnicodeString::fromUTF8(text);
    icu::ParsePosition position{0};
    const UDate date = format.parse(written, position);
    if (position.getErrorIndex() >= 0 || position.getIndex() != written.length()) {
        return std::nullopt;
    }
    return std::chrono::sys_seconds{
        std::chrono::seconds{static_cast<std::int64_t>(date / kMillisecondsPerSecond)}};
}

std::optional<std::string> inUsersWords(std::chrono::sys_seconds time) {
    const std::unique_ptr<icu::DateFormat> format{
        icu::DateFormat::createDateTimeInstance(icu::DateFormat::kMedium, icu::DateFormat::kShort)};
    if (format == nullptr) {
        return std::nullopt;
    }
    icu::UnicodeString words;
    format->format(
        static_cast<double>(time.time_since_epoch().count()) * kMillisecondsPerSecond, words);
    std::string text;
    return words.toUTF8String(text);
}

}  // namespace

std::optional<std::chrono::sys_seconds> latestBackup(const std::string& tmutil) {
    const auto answer = Shell::run(tmutil, {"latestbackup"}, std::nullopt, kTimeoutSeconds);
    if (!answer || answer->status != 0) {
        return std::nullopt;
    }
    // Such as "/Volumes/Backup/2024-05-01-101500.backup".
    constexpr std::string_view kAround = " \t\r\n/";
    constexpr std::size_t kLength = 17;
    const std::size_t last = answer->out.find_last_not_of(kAround);
    std::string name{Path::name(std::string_view{answer->out}.substr(0, last + 1))};
    name.erase(0, name.find_first_not_of(kAround));
    removeAll(name, ".backup");
    removeAll(name, ".previous");
    return parsed(name.substr(0, kLength));
}

std::optional<std::string> sentence(
    const std::string& tmutil, const std::string& path, std::chrono::sys_seconds backup) {
    struct stat status {};
    if (!Path::isUsable(path) || lstat(path.c_str(), &status) != 0 ||
        status.st_mtime >= backup.time_since_epoch().count()) {
        return std::nullopt;
    }
    const auto answer = Shell::run(tmutil, {"isexcluded", path}, std::nullopt, kTimeoutSeconds);
    if (!answer || !answer->out.contains("[Included]")) {
        return std::nullopt;
    }
    return inUsersWords(backup).transform(
        [](const std::string& words) { return "Time Machine backup from " + words; });
}

}  // namespace Brimlo::TimeMachine
