#pragma once

#include <cstdint>
#include <string_view>
#include <utility>

#include <unistd.h>

namespace Brimlo::Platform {

/// An open file descriptor that is closed at the end of its scope.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number)
        : number_(number) {}
    Descriptor(Descriptor&& other) noexcept
        : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0) {
            close(number_);
        }
    }

    [[nodiscard]] int number() const { return number_; }
    explicit operator bool() const { return number_ >= 0; }

private:
    int number_ = -1;
};

/// Writes all bytes to an open file. False, with `errno` set, on failure; so are the next two.
[[nodiscard]] bool writeBytes(int descriptor, std::string_view bytes);

/// Syncs a file to disk, whichever descriptor wrote it.
[[nodiscard]] bool syncFile(int descriptor);

/// Both.
[[nodiscard]] bool writeAndSync(int descriptor, std::string_view bytes);

/// Syncs the names in an open folder to disk; errors are ignored.
void syncFolder(int folder);

/// Asks the system to read a part of an open file soon; errors are ignored.
void readAhead(int file, std::int64_t offset, std::int64_t count);

/// Gives the open file `taker` the times and mode of `giver`, as far as possible.
void copyTimesAndMode(int giver, int taker);

}  // namespace Brimlo::Platform
