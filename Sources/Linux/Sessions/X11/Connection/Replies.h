// What xcb hands out: replies, and the arrays in them.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <span>
#include <vector>

namespace tessary {

struct FreeDeleter {
    void operator()(void* memory) const {
        std::free(memory);
    } // NOLINT: xcb hands out malloc memory
};

/// A reply, event or error that xcb handed out.
template <typename T>
using XReply = std::unique_ptr<T, FreeDeleter>;

/// An array within a reply.
template <typename T>
std::span<T> spanOf(T* first, int length) {
    return {first, static_cast<std::size_t>(length)};
}

/// Sends a request for each of `subjects`, which `send` makes, and answers their cookies: all are
/// sent before the first reply is waited for.
template <typename Subjects, typename Send>
auto sentForAll(const Subjects& subjects, Send send) {
    std::vector<decltype(send(*subjects.begin()))> cookies;
    cookies.reserve(subjects.size());
    for (const auto& subject : subjects)
        cookies.push_back(send(subject));
    return cookies;
}

} // namespace tessary
