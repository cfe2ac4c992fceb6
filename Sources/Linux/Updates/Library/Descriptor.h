#pragma once

#include <unistd.h>

#include <utility>

namespace tessary::updates {

/// Owns a file descriptor; a negative number stands for none.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0)
            ::close(number_);
    }
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    explicit operator bool() const { return number_ >= 0; }
    int number() const { return number_; }

    /// Leaves it to the caller.
    int release() { return std::exchange(number_, -1); }

private:
    int number_;
};

} // namespace tessary::updates
