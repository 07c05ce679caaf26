#include "BrimloCore/Platform/Linux/KeyFile.h"

#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <algorithm>
#include <cstddef>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Platform::KeyFile {

std::string contentOf(const std::string& path) {
    constexpr std::size_t kLongest = std::size_t{256} << 10U;
    const Descriptor file{open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)};
    struct stat status{};
    if (!file || fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return {};
    }
    std::string text(kLongest + 1, '\0');
    const ssize_t length = read(file.number(), text.data(), text.size());
    text.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return text.size() > kLongest ? std::string{} : text;
}

std::string_view withoutSpaces(std::string_view text) {
    constexpr std::string_view kSpaces = " \t\r";
    text.remove_prefix(std::min(text.find_first_not_of(kSpaces), text.size()));
    return text.substr(0, text.find_last_not_of(kSpaces) + 1);
}

void readEntries(
    std::string_view text,
    const std::function<void(std::string_view, std::string_view, std::string_view)>& entry) {
    std::string_view group;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = withoutSpaces(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.starts_with('[')) {
            group = line.substr(1, line.find(']') - 1);
        } else if (const std::size_t sign = line.find('='); sign != std::string_view::npos) {
            entry(group, withoutSpaces(line.substr(0, sign)), withoutSpaces(line.substr(sign + 1)));
        }
    }
}

}  // namespace Brimlo::Platform::KeyFile
