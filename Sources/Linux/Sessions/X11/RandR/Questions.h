// Asking the X server many questions at once.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace tessary {

/// Sends a request for each of `subjects`, which `send` makes, and answers their cookies: all are
/// sent before the first reply is waited for.
template <typename Subject, typename Send>
auto sentForAll(const std::vector<Subject>& subjects, Send send) {
    std::vector<decltype(send(subjects.front()))> cookies;
    cookies.reserve(subjects.size());
    for (const Subject& subject : subjects)
        cookies.push_back(send(subject));
    return cookies;
}

/// An array within a reply.
template <typename T>
std::span<T> spanOf(T* first, int length) {
    return {first, static_cast<std::size_t>(length)};
}

} // namespace tessary
