#pragma once

#include <chrono>

#include <poll.h>

namespace desktop {

/// How long anything may take. Long, since it costs time only where something is broken.
inline constexpr std::chrono::seconds patience{15};

/// Asks `holds` at once, whenever `descriptor` can be read, and some fifty times a second for what
/// no event tells; `holds` does the reading. False when it never held within `patience`.
template <typename Condition>
bool waitUntil(int descriptor, Condition holds) {
    constexpr int milliseconds = 20;
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!holds()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        pollfd readable{descriptor, POLLIN, 0};
        poll(&readable, 1, milliseconds);
    }
    return true;
}

} // namespace desktop
