#pragma once

#include <cstdlib>
#include <memory>

namespace tessary {

struct FreeDeleter {
    void operator()(void* memory) const {
        std::free(memory);
    } // NOLINT: xcb hands out malloc memory
};

/// A reply, event or error that xcb handed out.
template <typename T>
using XReply = std::unique_ptr<T, FreeDeleter>;

} // namespace tessary
