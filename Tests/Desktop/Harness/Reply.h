#pragma once

#include <cstdlib>
#include <memory>

namespace desktop {

struct Free {
    void operator()(void* memory) const {
        std::free(memory);
    } // NOLINT: xcb hands out malloc memory
};

/// A reply, event or error that xcb handed out.
template <typename T>
using Reply = std::unique_ptr<T, Free>;

} // namespace desktop
