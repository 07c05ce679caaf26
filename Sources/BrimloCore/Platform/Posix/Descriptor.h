#pragma once

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

}  // namespace Brimlo::Platform
